#pragma once

#include <cstdint>
#include <filesystem>

namespace warpline {

// A file that belongs to one living process at a time. The system itself lets go of it when the
// process ends, however that ends, so a file that was left behind belongs to nobody.
class FileLock {
 public:
  enum class Result {
    kTaken,   // it is this object's now
    kOwned,   // a living process has it
    kFailed,  // the file cannot be made or opened, or its file system knows no locks
  };

  FileLock() = default;
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  // Makes the file when it is missing. To be called until it is taken.
  Result Take(const std::filesystem::path& path);

 private:
  std::intptr_t handle_ = -1;
};

}  // namespace warpline
