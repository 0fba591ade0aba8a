#include "link/library_loader.h"

#include <array>

#include "link/projector_link.h"
#include "link/projector_search.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace warpline {
namespace {

template <typename Function>
bool Bind(void* address, Function*& pointer) {
  pointer = reinterpret_cast<Function*>(address);
  return pointer != nullptr;
}

template <typename Functions>
std::shared_ptr<const LoadedLibrary<Functions>> LoadLibraryFrom(const std::filesystem::path& folder,
                                                                const char* name) {
  auto loaded = std::make_shared<LoadedLibrary<Functions>>();
  if (!loaded->library.Load(folder / PathOf(SharedLibrary::FileName(name)))) return nullptr;
  const auto symbol = [&library = loaded->library](const char* entry) {
    return library.Symbol(entry);
  };
  return BindEntryPoints(symbol, loaded->functions) ? loaded : nullptr;
}

// Loads at the first call that succeeds and keeps the library from then on.
template <typename Functions, typename Load>
std::function<const Functions*()> FromProgramFolder(Load load) {
  return [load, loaded = std::shared_ptr<const LoadedLibrary<Functions>>()]() mutable {
    if (!loaded) loaded = load(ProgramFolder());
    return loaded ? &loaded->functions : nullptr;
  };
}

}  // namespace

#define WARPLINE_BIND_REQUIRED(name, parameters) \
  complete = Bind(symbol(#name), functions.name) && complete;
#define WARPLINE_BIND_DECLARED(name) functions.name = symbol(#name);

bool BindEntryPoints(const SymbolLookup& symbol, BeamlinkFunctions& functions) {
  bool complete = true;
  WARPLINE_BEAMLINK_REQUIRED(WARPLINE_BIND_REQUIRED)
  WARPLINE_BEAMLINK_DECLARED(WARPLINE_BIND_DECLARED)
  functions.stands_in = symbol(kStandInMark) != nullptr;
  return complete;
}

bool BindEntryPoints(const SymbolLookup& symbol, BeamseekFunctions& functions) {
  bool complete = true;
  WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_BIND_REQUIRED)
  WARPLINE_BEAMSEEK_DECLARED(WARPLINE_BIND_DECLARED)
  return complete;
}

#undef WARPLINE_BIND_REQUIRED
#undef WARPLINE_BIND_DECLARED

#define WARPLINE_NAME_REQUIRED(name, parameters) #name,
#define WARPLINE_NAME_DECLARED(name) #name,

std::span<const LibraryNames> MakersLibraries() {
  static constexpr std::string_view kLinkRequired[] = {
      WARPLINE_BEAMLINK_REQUIRED(WARPLINE_NAME_REQUIRED)};
  static constexpr std::string_view kLinkDeclared[] = {
      WARPLINE_BEAMLINK_DECLARED(WARPLINE_NAME_DECLARED)};
  static constexpr std::string_view kSeekRequired[] = {
      WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_NAME_REQUIRED)};
  static constexpr std::string_view kSeekDeclared[] = {
      WARPLINE_BEAMSEEK_DECLARED(WARPLINE_NAME_DECLARED)};
  static constexpr std::array<LibraryNames, 2> kLibraries{{
      {kBeamlinkName, kLinkRequired, kLinkDeclared},
      {kBeamseekName, kSeekRequired, kSeekDeclared},
  }};
  return kLibraries;
}

#undef WARPLINE_NAME_REQUIRED
#undef WARPLINE_NAME_DECLARED

std::shared_ptr<const LoadedLibrary<BeamlinkFunctions>> LoadBeamlink(
    const std::filesystem::path& folder) {
  return LoadLibraryFrom<BeamlinkFunctions>(folder, kBeamlinkName);
}

std::shared_ptr<const LoadedLibrary<BeamseekFunctions>> LoadBeamseek(
    const std::filesystem::path& folder) {
  return LoadLibraryFrom<BeamseekFunctions>(folder, kBeamseekName);
}

BeamlinkProvider BeamlinkFromProgramFolder() {
  return FromProgramFolder<BeamlinkFunctions>(LoadBeamlink);
}

BeamseekProvider BeamseekFromProgramFolder() {
  return FromProgramFolder<BeamseekFunctions>(LoadBeamseek);
}

}  // namespace warpline
