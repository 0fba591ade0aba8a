#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <random>

#include "platform/files.h"

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

// Writes and flushes the bytes, with the mode of the file that they will replace.
std::error_code Fill(int descriptor, std::string_view bytes,
                     const std::filesystem::path& old_file) {
  if (const std::error_code error = WriteAll(descriptor, bytes)) return error;
  struct stat old_status {};
  if (::stat(old_file.c_str(), &old_status) == 0) {
    if (::fchmod(descriptor, old_status.st_mode & 07777) != 0) return LastError();
  }
  return ::fsync(descriptor) == 0 ? std::error_code() : LastError();
}

// The file's own name is no part of it: a name of the greatest length leaves no room.
std::filesystem::path TemporaryName(const std::filesystem::path& path) {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device random;
  std::string name = ".warpline.";
  for (int i = 0; i < 8; ++i) name += kLetters[random() % kLetters.size()];
  return path.parent_path() / name;
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

// Gives a nameless file a temporary name in the folder of the path.
std::error_code Link(int descriptor, const std::filesystem::path& path,
                     std::filesystem::path& temporary) {
  const std::string source = "/proc/self/fd/" + std::to_string(descriptor);
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = TemporaryName(path);
    if (::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, temporary.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      return {};
    }
    if (errno != EEXIST) break;
  }
  return LastError();
}

// For file systems without nameless files.
std::error_code ReplaceByNamedTemporary(const std::filesystem::path& path, std::string_view bytes) {
  const std::filesystem::path temporary = TemporaryName(path);
  {
    const Descriptor file(
        ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    if (file.get() < 0) return LastError();
    if (const std::error_code error = Fill(file.get(), bytes, path)) {
      ::unlink(temporary.c_str());
      return error;
    }
  }
  return MoveOver(temporary, path);
}

// The file has no name until it is complete, so a program that is killed leaves nothing behind.
std::error_code ReplaceByNamelessFile(const std::filesystem::path& path,
                                      const std::filesystem::path& folder, std::string_view bytes,
                                      bool& unsupported) {
  const Descriptor file(::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kNewFileMode));
  unsupported = file.get() < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL);
  if (file.get() < 0) return LastError();
  if (const std::error_code error = Fill(file.get(), bytes, path)) return error;
  std::filesystem::path temporary;
  if (const std::error_code error = Link(file.get(), path, temporary)) {
    unsupported = error == std::errc::no_such_file_or_directory;  // no /proc
    return error;
  }
  return MoveOver(temporary, path);
}

}  // namespace

std::uint32_t FileAttributes(const std::filesystem::path& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return 0;
  std::uint32_t attributes = 0;
  if (S_ISLNK(status.st_mode)) attributes |= kAlias;
  if (S_ISDIR(status.st_mode)) attributes |= kDirectory;
  if (!S_ISLNK(status.st_mode) && (status.st_mode & S_IWUSR) == 0) attributes |= kReadOnly;
  if (path.filename().string().starts_with(".")) attributes |= kHidden;
  return attributes;
}

std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes) {
  const std::filesystem::path folder =
      path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
  bool unsupported = false;
  std::error_code error = ReplaceByNamelessFile(path, folder, bytes, unsupported);
  if (unsupported) error = ReplaceByNamedTemporary(path, bytes);
  if (!error) FlushFolder(folder);
  return error;
}

std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error) {
  const std::filesystem::path folder = std::filesystem::absolute(path, error).parent_path();
  if (error) return 0;
  const std::filesystem::space_info space = std::filesystem::space(folder, error);
  return error ? 0 : space.available;
}

std::string SystemErrorText(std::error_code error) {
  return error.message();
}

}  // namespace warpline
