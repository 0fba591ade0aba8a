#include "link/beamseek_loader.h"

#include "link/projector_search.h"

namespace warpline {
namespace {

template <typename Function>
bool Bind(void* address, Function*& pointer) {
  pointer = reinterpret_cast<Function*>(address);
  return pointer != nullptr;
}

}  // namespace

bool BindBeamseek(const SymbolLookup& symbol, BeamseekFunctions& functions) {
  bool complete = true;
#define WARPLINE_BIND_REQUIRED(name, parameters) \
  complete = Bind(symbol(#name), functions.name) && complete;
  WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_BIND_REQUIRED)
#undef WARPLINE_BIND_REQUIRED
#define WARPLINE_BIND_DECLARED(name) functions.name = symbol(#name);
  WARPLINE_BEAMSEEK_DECLARED(WARPLINE_BIND_DECLARED)
#undef WARPLINE_BIND_DECLARED
  return complete;
}

std::shared_ptr<const LoadedBeamseek> LoadBeamseek(const std::filesystem::path& folder) {
  auto loaded = std::make_shared<LoadedBeamseek>();
  if (!loaded->library.Load(folder / PathOf(SharedLibrary::FileName(kBeamseekName))))
    return nullptr;
  const auto symbol = [&library = loaded->library](const char* name) {
    return library.Symbol(name);
  };
  return BindBeamseek(symbol, loaded->functions) ? loaded : nullptr;
}

BeamseekProvider BeamseekFromProgramFolder() {
  return [loaded = std::shared_ptr<const LoadedBeamseek>()]() mutable {
    if (!loaded) loaded = LoadBeamseek(ProgramFolder());
    return loaded ? &loaded->functions : nullptr;
  };
}

}  // namespace warpline
