#pragma once

#include <filesystem>
#include <memory>

#include "core/system.h"
#include "link/beamlink_loader.h"
#include "link/beamseek.h"

// From the search library's file to its entry points.

namespace warpline {

// Fills in every entry point of the list. False when a required one is missing.
bool BindBeamseek(const SymbolLookup& symbol, BeamseekFunctions& functions);

// The library and its entry points; they stay callable as long as this lives.
struct LoadedBeamseek {
  SharedLibrary library;
  BeamseekFunctions functions;
};

// Loads the library from a folder by its full path. Null when it cannot be loaded or lacks a
// required entry point.
std::shared_ptr<const LoadedBeamseek> LoadBeamseek(const std::filesystem::path& folder);

}  // namespace warpline
