#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "core/system.h"
#include "link/beamlink.h"

// From the control library's file to its entry points.

namespace warpline {

// Tells the address of an exported function, null when there is none.
using SymbolLookup = std::function<void*(const char* name)>;

// Fills in every entry point of the list. False when a required one is missing.
bool BindBeamlink(const SymbolLookup& symbol, BeamlinkFunctions& functions);

// The library and its entry points; they stay callable as long as this lives.
struct LoadedBeamlink {
  SharedLibrary library;
  BeamlinkFunctions functions;
};

// Loads the library from a folder by its full path. Null when it cannot be loaded or lacks a
// required entry point.
std::shared_ptr<const LoadedBeamlink> LoadBeamlink(const std::filesystem::path& folder);

}  // namespace warpline
