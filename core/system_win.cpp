#include <windows.h>
#include <winsock2.h>
// The network's and the shell's headers build on the ones above.
#include <iphlpapi.h>
#include <shellapi.h>
#include <shlobj.h>

#include <array>
#include <cstring>
#include <memory>
#include <random>

#include "core/system.h"

namespace warpline {
namespace {

constexpr LANGID kJapanese = 0x0411;
constexpr int kNameAttempts = 100;

std::error_code LastError() {
  return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::wstring WideOf(std::string_view utf8) {
  return PathOf(utf8).wstring();
}

std::string Utf8OfWide(std::wstring_view wide) {
  const int wide_size = static_cast<int>(wide.size());
  const int size =
      ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), wide_size, text.data(), size, nullptr, nullptr);
  return text;
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

bool SystemLanguageIsJapanese() {
  return ::GetUserDefaultLangID() == kJapanese;
}

std::filesystem::path ApplicationDataFolder() {
  PWSTR folder = nullptr;
  const HRESULT result = ::SHGetKnownFolderPath(FOLDERID_RoamingAppData, 0, nullptr, &folder);
  const std::unique_ptr<wchar_t, decltype(&::CoTaskMemFree)> owner(folder, &::CoTaskMemFree);
  return SUCCEEDED(result) ? std::filesystem::path(folder) : std::filesystem::path();
}

std::filesystem::path ProgramFolder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size = ::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (size < name.size()) {
      name.resize(size);
      return std::filesystem::path(name).parent_path();
    }
    name.resize(name.size() * 2);
  }
}

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

std::optional<std::string> EnvironmentVariable(const char* name) {
  const std::wstring wide_name = WideOf(name);
  const DWORD size = ::GetEnvironmentVariableW(wide_name.c_str(), nullptr, 0);
  if (size == 0) return std::nullopt;
  std::wstring value(size, L'\0');
  value.resize(::GetEnvironmentVariableW(wide_name.c_str(), value.data(), size));
  return Utf8OfWide(value);
}

std::vector<IPv4Address> LocalIPv4Addresses() {
  ULONG size = 0;
  ::GetAdaptersAddresses(AF_INET, 0, nullptr, nullptr, &size);
  // Aligned as the list needs it; an adapter that comes up in between makes the call fail.
  std::vector<IP_ADAPTER_ADDRESSES> list(size / sizeof(IP_ADAPTER_ADDRESSES) + 1);
  size = static_cast<ULONG>(list.size() * sizeof(IP_ADAPTER_ADDRESSES));
  if (::GetAdaptersAddresses(AF_INET, 0, nullptr, list.data(), &size) != ERROR_SUCCESS) return {};
  std::vector<IPv4Address> addresses;
  for (const IP_ADAPTER_ADDRESSES* adapter = list.data(); adapter; adapter = adapter->Next) {
    if (adapter->OperStatus != IfOperStatusUp) continue;
    if (adapter->IfType == IF_TYPE_SOFTWARE_LOOPBACK) continue;
    for (const auto* entry = adapter->FirstUnicastAddress; entry; entry = entry->Next) {
      sockaddr_in address{};
      std::memcpy(&address, entry->Address.lpSockaddr, sizeof address);
      std::memcpy(addresses.emplace_back().data(), &address.sin_addr, sizeof(IPv4Address));
    }
  }
  return addresses;
}

std::vector<std::string> CommandLineWords(int, char**) {
  int count = 0;
  LPWSTR* words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  std::vector<std::string> result;
  for (int i = 1; i < count; ++i) result.push_back(Utf8OfWide(words[i]));
  ::LocalFree(words);
  return result;
}

std::string SharedLibrary::FileName(std::string_view name) {
  return std::string(name) + ".dll";
}

SharedLibrary::~SharedLibrary() {
  if (handle_ != nullptr) ::FreeLibrary(static_cast<HMODULE>(handle_));
}

bool SharedLibrary::Load(const std::filesystem::path& full_path) {
  // What the library needs itself may come from its own folder and the system's, never from the
  // current folder.
  const HMODULE module = ::LoadLibraryExW(
      full_path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (module == nullptr) return false;
  if (handle_ != nullptr) ::FreeLibrary(static_cast<HMODULE>(handle_));
  handle_ = module;
  return true;
}

void* SharedLibrary::Symbol(const char* name) const {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace warpline
