#include "platform/shared_library.h"

#include <utility>

namespace warpline {

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)), failure_(std::move(other.failure_)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
  std::swap(handle_, other.handle_);
  failure_.swap(other.failure_);
  return *this;
}

}  // namespace warpline
