#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// What the operating system must tell or do. One implementation a system (system_win,
// system_posix), the rest shared.

namespace warpline {

// The user's default language is Japanese.
bool SystemLanguageIsJapanese();

// The user's roaming application-data folder.
std::filesystem::path ApplicationDataFolder();

// The folder of the running executable.
std::filesystem::path ProgramFolder();

// File attributes, as bits.
enum FileAttribute : std::uint32_t {
  kReadOnly = 1,
  kHidden = 2,
  kSystemFile = 4,
  kVolumeLabel = 8,
  kDirectory = 16,
  kArchive = 32,
  kAlias = 64,
};

// The attributes of what the path itself names (a link is not followed), 0 when nothing is there.
std::uint32_t FileAttributes(const std::filesystem::path& path);

// The file's bytes, at most 64 MiB. On failure the error, and the text is unspecified.
std::error_code ReadWholeFile(const std::filesystem::path& path, std::string& bytes);

// Makes the file hold exactly these bytes: they are written beside it, flushed to disk and moved
// into its place, so that whatever goes wrong the file is either the old one or the new one and no
// other file stays behind.
std::error_code ReplaceFileContents(const std::filesystem::path& path, std::string_view bytes);

// Bytes that this user may still write in the folder that holds the path; 0 with the failure in
// error.
std::uintmax_t FreeSpace(const std::filesystem::path& path, std::error_code& error);

// The system's description of an error, UTF-8.
std::string SystemErrorText(std::error_code error);

// The value of an environment variable; nothing when it is not set.
std::optional<std::string> EnvironmentVariable(const char* name);

// An IPv4 address as it is written, the first number first.
using IPv4Address = std::array<std::uint8_t, 4>;

// The addresses of the network adapters that are in operation, loopback left out. Empty when there
// are none or the system does not tell.
std::vector<IPv4Address> LocalIPv4Addresses();

// The command line's words (UTF-8, the program's name left out).
std::vector<std::string> CommandLineWords(int argc, char** argv);

// Paths and UTF-8 texts.
std::string Utf8Of(const std::filesystem::path& path);
std::filesystem::path PathOf(std::string_view utf8);

// A shared library loaded by its full path.
class SharedLibrary {
 public:
  SharedLibrary() = default;
  ~SharedLibrary();
  SharedLibrary(SharedLibrary&& other) noexcept;
  SharedLibrary& operator=(SharedLibrary&& other) noexcept;

  // The file name that this system gives a library of that name: "Beamlink" becomes "Beamlink.dll"
  // or "Beamlink.so".
  static std::string FileName(std::string_view name);

  // False when the file cannot be loaded.
  bool Load(const std::filesystem::path& full_path);

  // The address of an exported function, null when there is none.
  void* Symbol(const char* name) const;

 private:
  void* handle_ = nullptr;
};

}  // namespace warpline
