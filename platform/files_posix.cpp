#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <random>

#include "platform/files.h"
#include "platform/files_posix.h"

namespace warpline {
namespace {

constexpr mode_t kNewFileMode = 0666;
constexpr int kNameAttempts = 100;

std::error_code LastError() {
  return {errno, std::generic_category()};
}

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int value) : value_(value) {}
  ~Descriptor() {
    if (value_ >= 0) ::close(value_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return value_; }

 private:
  int value_;
};

std::error_code WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return LastError();
    if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

// Writes and flushes the bytes, with the mode of the file that they will replace. There are file
// systems without modes; that is no reason to lose what is to be saved.
std::error_code Fill(int descriptor, std::string_view bytes,
                     const std::filesystem::path& old_file) {
  if (const std::error_code error = WriteAll(descriptor, bytes)) return error;
  struct stat old_status {};
  if (::stat(old_file.c_str(), &old_status) == 0) {
    static_cast<void>(::fchmod(descriptor, old_status.st_mode & 07777));
  }
  return ::fsync(descriptor) == 0 ? std::error_code() : LastError();
}

// Temporaries are ".warpline." and this many letters. The one who fills a temporary holds a lock on
// it, which the system drops with the process.
constexpr std::string_view kTemporaryStart = ".warpline.";
constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t kTemporaryLetters = 8;

// The file's own name is no part of it: a name of the greatest length leaves no room.
std::filesystem::path TemporaryName(const std::filesystem::path& folder) {
  std::random_device random;
  std::string name(kTemporaryStart);
  for (std::size_t i = 0; i < kTemporaryLetters; ++i) name += kLetters[random() % kLetters.size()];
  return folder / name;
}

bool IsTemporaryName(std::string_view name) {
  return name.size() == kTemporaryStart.size() + kTemporaryLetters &&
         name.starts_with(kTemporaryStart) &&
         name.find_first_not_of(kLetters, kTemporaryStart.size()) == std::string_view::npos;
}

void RemoveUnlessOwned(const std::filesystem::path& temporary) {
  const Descriptor file(::open(temporary.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (::flock(file.get(), LOCK_EX | LOCK_NB) == 0) ::unlink(temporary.c_str());
}

// What saves that were killed have left in the folder.
void ClearStrayTemporaries(const std::filesystem::path& folder) {
  std::error_code ignored;
  for (std::filesystem::directory_iterator entry(folder, ignored), end; !ignored && entry != end;
       entry.increment(ignored)) {
    if (IsTemporaryName(entry->path().filename().native())) RemoveUnlessOwned(entry->path());
  }
}

// Moves a filled temporary over the file; the temporary is gone either way.
std::error_code MoveOver(const std::filesystem::path& temporary,
                         const std::filesystem::path& path) {
  if (::rename(temporary.c_str(), path.c_str()) == 0) return {};
  const std::error_code error = LastError();
  ::unlink(temporary.c_str());
  return error;
}

void FlushFolder(const std::filesystem::path& folder) {
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory.get() >= 0) ::fsync(directory.get());
}

// Gives a nameless file a temporary name in the folder.
std::error_code Link(int descriptor, const std::filesystem::path& folder,
                     std::filesystem::path& temporary) {
  const std::string source = "/proc/self/fd/" + std::to_string(descriptor);
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = TemporaryName(folder);
    if (::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, temporary.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      return {};
    }
    if (errno != EEXIST) break;
  }
  return LastError();
}

// Makes a temporary and takes its lock; -1 when that cannot be done. Between the two somebody may
// have taken it for a stray one: then there is another try.
int OpenTemporary(const std::filesystem::path& folder, std::filesystem::path& temporary) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = TemporaryName(folder);
    const int file =
        ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
    if (file < 0) return -1;
    struct stat status {};
    static_cast<void>(
        ::flock(file, LOCK_EX));  // a file system without locks clears no strays either
    if (::fstat(file, &status) == 0 && status.st_nlink > 0) return file;
    ::close(file);
  }
  errno = EAGAIN;
  return -1;
}

// The file has no name until it is complete, so a program that is killed while it writes leaves
// nothing behind.
std::error_code ReplaceByNamelessFile(const std::filesystem::path& path,
                                      const std::filesystem::path& folder, std::string_view bytes,
                                      bool& unsupported) {
  const Descriptor file(::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewFileMode));
  unsupported = file.get() < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL);
  if (file.get() < 0) return LastError();
  static_cast<void>(::flock(file.get(), LOCK_EX));
  if (const std::error_code error = Fill(file.get(), bytes, path)) return error;
  std::filesystem::path temporary;
  if (const std::error_code error = Link(file.get(), folder, temporary)) {
    unsupported = error == std::errc::no_such_file_or_directory;  // no /proc
    return error;
  }
  return MoveOver(temporary, path);
}

// Keeps SIGPIPE from ending the program while it writes to a reader that goes away.
class NoPipeSignal {
 public:
  NoPipeSignal() {
    sigemptyset(&pipe_);
    sigaddset(&pipe_, SIGPIPE);
    ::pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
  }
  ~NoPipeSignal() {
    const timespec at_once{};
    ::sigtimedwait(&pipe_, nullptr, &at_once);
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
  NoPipeSignal(const NoPipeSignal&) = delete;
  NoPipeSignal& operator=(const NoPipeSignal&) = delete;

 private:
  sigset_t pipe_{};
  sigset_t before_{};
};

// A device, or a pipe that somebody reads: one that nobody reads would hold the program for good.
std::error_code WriteInto(const std::filesystem::path& path, std::string_view bytes) {
  const Descriptor file(::open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  if (file.get() < 0) return LastError();
  if (::fcntl(file.get(), F_SETFL, 0) != 0) return LastError();
  const NoPipeSignal quiet;
  return WriteAll(file.get(), bytes);
}

bool IsDeviceOrPipe(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

// How long a pipe that nobody has opened for writing is waited for.
constexpr int kPipePatienceMs = 1000;

// Whether more can be read; nothing when all was read, or nobody is there to write.
std::error_code WaitForBytes(int file, bool somebody_writes, bool& ended) {
  pollfd wanted{file, POLLIN, 0};
  const int ready = ::poll(&wanted, 1, somebody_writes ? -1 : kPipePatienceMs);
  if (ready < 0 && errno != EINTR) return LastError();
  if (ready == 0) return std::make_error_code(std::errc::no_message_available);
  ended = ready > 0 && (wanted.revents & POLLIN) == 0;
  return {};
}

std::error_code ReadAll(int file, std::string& bytes) {
  std::array<char, 65536> buffer;
  for (bool ended = false; !ended;) {
    const ssize_t count = ::read(file, buffer.data(), buffer.size());
    if (count > 0) {
      if (bytes.size() + static_cast<std::size_t>(count) > kMostFileBytes) {
        return std::make_error_code(std::errc::file_too_large);
      }
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
      continue;
    }
    const bool somebody_writes = count < 0 && errno == EAGAIN;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && !somebody_writes) return LastError();
    struct stat status {};
    const bool pipe = ::fstat(file, &status) == 0 && S_ISFIFO(status.st_mode);
    if (!somebody_writes && (!pipe || !bytes.empty())) return {};
    if (const std::error_code error = WaitForBytes(file, somebody_writes, ended)) return error;
  }
  return {};
}

}  // namespace

std::error_code ReplaceByNamedTemporary(const std::filesystem::path& path,
                                        const std::filesystem::path& folder,
                                        std::string_view bytes) {
  std::filesystem::path temporary;
  const Descriptor file(OpenTemporary(folder, temporary));
  if (file.get() < 0) return LastError();
  if (const std::error_code error = Fill(file.get(), bytes, path)) {
    ::unlink(temporary.c_str());
    return error;
  }
  return MoveOver(temporary, path);
}

std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes) {
  bytes.clear();
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  struct stat status {};
  if (file.get() < 0 || ::fstat(file.get(), &status) != 0) return LastError();
  if (S_ISDIR(status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (status.st_size > static_cast<off_t>(kMostFileBytes)) {
    return std::make_error_code(std::errc::file_too_large);
  }
  return ReadAll(file.get(), bytes);
}

std::uint32_t FileAttributes(const std::filesystem::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return 0;
  std::uint32_t attributes = 0;
  if (S_ISLNK(status.st_mode)) attributes |= kAlias;
  if (S_ISDIR(status.st_mode)) attributes |= kDirectory;
  if (!S_ISLNK(status.st_mode) && (status.st_mode & S_IWUSR) == 0) attributes |= kReadOnly;
  return attributes;
}

std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes) {
  if (IsDeviceOrPipe(path)) return WriteInto(path, bytes);
  const std::filesystem::path folder =
      path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
  ClearStrayTemporaries(folder);
  bool unsupported = false;
  std::error_code error = ReplaceByNamelessFile(path, folder, bytes, unsupported);
  if (unsupported) error = ReplaceByNamedTemporary(path, folder, bytes);
  if (!error) FlushFolder(folder);
  return error;
}

std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error) {
  const std::filesystem::path folder = std::filesystem::absolute(path, error).parent_path();
  if (error) return 0;
  const std::filesystem::space_info space = std::filesystem::space(folder, error);
  return error ? 0 : space.available;
}

bool CanMakeFilesIn(const std::filesystem::path& folder) {
  return ::access((folder / ".").c_str(), W_OK | X_OK) == 0;
}

std::string SystemErrorText(std::error_code error) {
  return error.message();
}

}  // namespace warpline
