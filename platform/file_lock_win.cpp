#include <windows.h>

#include "platform/file_lock.h"

namespace warpline {

FileLock::~FileLock() {
  if (handle_ != -1) ::CloseHandle(reinterpret_cast<HANDLE>(handle_));
}

// Nobody else may open the file while this handle is open.
FileLock::Result FileLock::Take(const std::filesystem::path& path) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return ::GetLastError() == ERROR_SHARING_VIOLATION ? Result::kOwned : Result::kFailed;
  }
  handle_ = reinterpret_cast<std::intptr_t>(file);
  return Result::kTaken;
}

}  // namespace warpline
