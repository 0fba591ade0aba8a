#include <windows.h>

#include <cerrno>
#include <fstream>
#include <random>

#include "platform/files.h"
#include "platform/wide_text_win.h"

namespace warpline {
namespace {

constexpr int kNameAttempts = 100;

std::error_code LastError() {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

class Handle {
 public:
  explicit Handle(HANDLE value) : value_(value) {}
  ~Handle() {
    if (value_ != INVALID_HANDLE_VALUE) ::CloseHandle(value_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  HANDLE get() const { return value_; }
  bool valid() const { return value_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE value_;
};

std::error_code Fill(HANDLE file, std::string_view bytes) {
  DWORD written = 0;
  if (!::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
    return LastError();
  }
  if (written != bytes.size()) return std::make_error_code(std::errc::no_space_on_device);
  return ::FlushFileBuffers(file) ? std::error_code() : LastError();
}

// Temporaries are "~warpline." and this many letters. Nobody else can open one for writing while
// the process that fills it has it open.
constexpr std::wstring_view kTemporaryStart = L"~warpline.";
constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz0123456789";
constexpr std::size_t kTemporaryLetters = 8;

// The file's own name is no part of it: a name of the greatest length leaves no room.
std::filesystem::path TemporaryName(const std::filesystem::path& folder) {
  std::random_device random;
  std::wstring name(kTemporaryStart);
  for (std::size_t i = 0; i < kTemporaryLetters; ++i) name += kLetters[random() % kLetters.size()];
  return folder / name;
}

bool IsTemporaryName(std::wstring_view name) {
  return name.size() == kTemporaryStart.size() + kTemporaryLetters &&
         name.starts_with(kTemporaryStart) &&
         name.find_first_not_of(kLetters, kTemporaryStart.size()) == std::wstring_view::npos;
}

// What saves that were killed have left in the folder. Opening fails for one that is still written.
void ClearStrayTemporaries(const std::filesystem::path& folder) {
  WIN32_FIND_DATAW entry{};
  const std::wstring pattern = (folder / (std::wstring(kTemporaryStart) + L"*")).wstring();
  const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    if (!IsTemporaryName(entry.cFileName)) continue;
    const Handle stray(::CreateFileW((folder / entry.cFileName).c_str(), GENERIC_WRITE | DELETE, 0,
                                     nullptr, OPEN_EXISTING, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  } while (::FindNextFileW(search, &entry));
  ::FindClose(search);
}

// Makes a temporary in the folder; other programs may take it away but not open it.
HANDLE OpenTemporary(const std::filesystem::path& folder, std::filesystem::path& temporary) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = TemporaryName(folder);
    const HANDLE file = ::CreateFileW(temporary.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE,
                                      nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_FILE_EXISTS) return file;
  }
  return INVALID_HANDLE_VALUE;
}

// Until it is complete the file goes away with its handle, even when the program is killed.
std::error_code FillTemporary(HANDLE file, std::string_view bytes) {
  FILE_DISPOSITION_INFO disposition{TRUE};
  ::SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof(disposition));
  if (const std::error_code error = Fill(file, bytes)) return error;
  disposition.DeleteFile = FALSE;
  ::SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof(disposition));
  return {};
}

}  // namespace

std::uint32_t FileAttributes(const std::filesystem::path& path) {
  const DWORD found = ::GetFileAttributesW(path.c_str());
  if (found == INVALID_FILE_ATTRIBUTES) return 0;
  constexpr std::uint32_t kSame = kReadOnly | kHidden | kSystemFile | kDirectory | kArchive;
  const std::uint32_t alias =
      (found & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? std::uint32_t{kAlias} : 0u;
  return (found & kSame) | alias;
}

std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    return std::make_error_code(std::errc::is_a_directory);
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (file) {
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size > static_cast<std::streamoff>(kMostFileBytes))
      return std::make_error_code(std::errc::file_too_large);
    bytes.assign(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    file.seekg(0);
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
  }
  if (file.is_open() && !file.bad()) return {};
  return {errno != 0 ? errno : EIO, std::generic_category()};
}

std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes) {
  const std::filesystem::path folder = path.parent_path();
  ClearStrayTemporaries(folder);
  std::filesystem::path temporary;
  const Handle file(OpenTemporary(folder, temporary));
  if (!file.valid()) return LastError();
  if (const std::error_code error = FillTemporary(file.get(), bytes)) return error;
  // The handle stays open: nobody takes the file for a stray one meanwhile.
  if (::MoveFileExW(temporary.c_str(), path.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    return {};
  }
  const std::error_code error = LastError();
  ::DeleteFileW(temporary.c_str());
  return error;
}

// The standard library would ask about the parent of the folder, which may lie on another volume.
std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error) {
  const std::filesystem::path folder = std::filesystem::absolute(path, error).parent_path();
  if (error) return 0;
  ULARGE_INTEGER available{};
  if (::GetDiskFreeSpaceExW(folder.c_str(), &available, nullptr, nullptr)) {
    return available.QuadPart;
  }
  error = LastError();
  return 0;
}

bool CanMakeFilesIn(const std::filesystem::path& folder) {
  std::filesystem::path temporary;
  const Handle file(OpenTemporary(folder, temporary));
  if (!file.valid()) return false;
  FILE_DISPOSITION_INFO disposition{TRUE};
  ::SetFileInformationByHandle(file.get(), FileDispositionInfo, &disposition, sizeof(disposition));
  return true;
}

std::string SystemErrorText(std::error_code error) {
  if (error.category() != std::system_category()) return error.message();
  LPWSTR text = nullptr;
  const DWORD size = ::FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(error.value()), 0, reinterpret_cast<LPWSTR>(&text), 0, nullptr);
  if (size == 0) return error.message();
  std::wstring_view description(text, size);
  while (!description.empty() && description.back() <= L' ') description.remove_suffix(1);
  std::string result = Utf8OfWide(description);
  ::LocalFree(text);
  return result;
}

}  // namespace warpline
