#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string_view>

#include "link/beamlink.h"
#include "link/beamseek.h"
#include "platform/shared_library.h"

// From the files of the maker's two libraries to their entry points.

namespace warpline {

// Tells the address of an exported function, null when there is none.
using SymbolLookup = std::function<void*(const char* name)>;

// Fill in every entry point of a library's list. False when a required one is missing.
bool BindEntryPoints(const SymbolLookup& symbol, BeamlinkFunctions& functions);
bool BindEntryPoints(const SymbolLookup& symbol, BeamseekFunctions& functions);

// What this side knows of a library's names.
struct LibraryNames {
  std::string_view library;
  std::span<const std::string_view> required;
  std::span<const std::string_view> declared;  // never called
};

// The control library first.
std::span<const LibraryNames> MakersLibraries();

// A library and its entry points; they stay callable as long as this lives.
template <typename Functions>
struct LoadedLibrary {
  SharedLibrary library;
  Functions functions;
};

// Load a library from a folder by its full path. Null when it cannot be loaded or lacks a required
// entry point.
std::shared_ptr<const LoadedLibrary<BeamlinkFunctions>> LoadBeamlink(
    const std::filesystem::path& folder);
std::shared_ptr<const LoadedLibrary<BeamseekFunctions>> LoadBeamseek(
    const std::filesystem::path& folder);

}  // namespace warpline
