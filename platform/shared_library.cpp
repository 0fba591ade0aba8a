#include "platform/shared_library.h"

#include <utility>

namespace warpline {

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

}  // namespace warpline
