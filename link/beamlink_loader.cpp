#include "link/beamlink_loader.h"

#include "link/projector_link.h"

namespace warpline {
namespace {

template <typename Function>
bool Bind(void* address, Function*& pointer) {
  pointer = reinterpret_cast<Function*>(address);
  return pointer != nullptr;
}

}  // namespace

bool BindBeamlink(const SymbolLookup& symbol, BeamlinkFunctions& functions) {
  bool complete = true;
#define WARPLINE_BIND_REQUIRED(name, parameters) \
  complete = Bind(symbol(#name), functions.name) && complete;
  WARPLINE_BEAMLINK_REQUIRED(WARPLINE_BIND_REQUIRED)
#undef WARPLINE_BIND_REQUIRED
#define WARPLINE_BIND_DECLARED(name) functions.name = symbol(#name);
  WARPLINE_BEAMLINK_DECLARED(WARPLINE_BIND_DECLARED)
#undef WARPLINE_BIND_DECLARED
  return complete;
}

std::shared_ptr<const LoadedBeamlink> LoadBeamlink(const std::filesystem::path& folder) {
  auto loaded = std::make_shared<LoadedBeamlink>();
  if (!loaded->library.Load(folder / PathOf(SharedLibrary::FileName(kBeamlinkName))))
    return nullptr;
  const auto symbol = [&library = loaded->library](const char* name) {
    return library.Symbol(name);
  };
  return BindBeamlink(symbol, loaded->functions) ? loaded : nullptr;
}

BeamlinkProvider BeamlinkFromProgramFolder() {
  return [loaded = std::shared_ptr<const LoadedBeamlink>()]() mutable {
    if (!loaded) loaded = LoadBeamlink(ProgramFolder());
    return loaded ? &loaded->functions : nullptr;
  };
}

}  // namespace warpline
