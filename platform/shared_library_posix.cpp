#include <dlfcn.h>

#include "platform/shared_library.h"

namespace warpline {

std::string SharedLibrary::FileName(std::string_view name) {
  return std::string(name) + ".so";
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) ::dlclose(handle_);
}

bool SharedLibrary::Load(const std::filesystem::path& full_path) {
  if (!full_path.is_absolute()) return false;
  void* handle = ::dlopen(full_path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) {
    const char* const reason = ::dlerror();
    failure_ = reason == nullptr ? "" : reason;
    return false;
  }
  if (handle_ != nullptr) ::dlclose(handle_);
  handle_ = handle;
  return true;
}

void* SharedLibrary::Symbol(const char* name) const {
  return handle_ == nullptr ? nullptr : ::dlsym(handle_, name);
}

}  // namespace warpline
