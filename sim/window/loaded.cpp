#include "platform/environment.h"
#include "platform/shared_library.h"
#include "sim/window/window.h"

namespace warpline::sim {

bool RunWindow(const WindowRequest& request) {
  // Kept for good: the toolkit leaves things behind that refer to its code.
  static SharedLibrary library;
  const std::string name = SharedLibrary::FileName(kWindowLibrary);
  if (!library.Load(ProgramFolder() / name)) return false;
  void* const symbol = library.Symbol(kWindowFunction);
  return symbol != nullptr && reinterpret_cast<WindowFunction*>(symbol)(&request);
}

}  // namespace warpline::sim
