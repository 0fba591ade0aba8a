#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/file_lock.h"

namespace warpline {

// The file stays when the lock goes: taking it away would pull it from under somebody who has just
// opened it.
FileLock::~FileLock() {
  if (handle_ >= 0) ::close(static_cast<int>(handle_));
}

FileLock::Result FileLock::Take(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                          S_IRUSR | S_IWUSR);
  if (file < 0) return Result::kFailed;
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
    handle_ = file;
    return Result::kTaken;
  }
  const bool owned = errno == EWOULDBLOCK;
  ::close(file);
  return owned ? Result::kOwned : Result::kFailed;
}

}  // namespace warpline
