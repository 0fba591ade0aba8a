#include <windows.h>

#include <system_error>

#include "platform/files.h"
#include "platform/shared_library.h"

namespace warpline {

std::string SharedLibrary::FileName(std::string_view name) {
  return std::string(name) + ".dll";
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) ::FreeLibrary(static_cast<HMODULE>(handle_));
}

bool SharedLibrary::Load(const std::filesystem::path& full_path) {
  if (!full_path.is_absolute()) return false;
  // What the library needs itself may come from its own folder and the system's, never from the
  // current folder.
  const HMODULE module = ::LoadLibraryExW(
      full_path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr) {
    const std::error_code error(static_cast<int>(::GetLastError()), std::system_category());
    failure_ = SystemErrorText(error);
    return false;
  }
  if (handle_ != nullptr) ::FreeLibrary(static_cast<HMODULE>(handle_));
  handle_ = module;
  return true;
}

void* SharedLibrary::Symbol(const char* name) const {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace warpline
