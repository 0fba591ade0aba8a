#include <windows.h>

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

// The file's own name is no part of it: a name of the greatest length leaves no room.
std::filesystem::path TemporaryName(const std::filesystem::path& path) {
  static constexpr std::wstring_view kLetters = L"abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device random;
  std::wstring name = L"~warpline.";
  for (int i = 0; i < 8; ++i) name += kLetters[random() % kLetters.size()];
  return path.parent_path() / name;
}

// Creates a temporary beside the path and fills it; nothing stays behind on failure.
std::error_code WriteTemporary(const std::filesystem::path& path, std::string_view bytes,
                               std::filesystem::path& temporary) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temporary = TemporaryName(path);
    const Handle file(::CreateFileW(temporary.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid() && ::GetLastError() == ERROR_FILE_EXISTS) continue;
    if (!file.valid()) return LastError();
    // Until it is complete the file goes away with its handle, even when the program is killed.
    FILE_DISPOSITION_INFO disposition{TRUE};
    ::SetFileInformationByHandle(file.get(), FileDispositionInfo, &disposition,
                                 sizeof(disposition));
    if (const std::error_code error = Fill(file.get(), bytes)) return error;
    disposition.DeleteFile = FALSE;
    ::SetFileInformationByHandle(file.get(), FileDispositionInfo, &disposition,
                                 sizeof(disposition));
    return {};
  }
  return std::make_error_code(std::errc::file_exists);
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

std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::path temporary;
  if (const std::error_code error = WriteTemporary(path, bytes, temporary)) return error;
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
