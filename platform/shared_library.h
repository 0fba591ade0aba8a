#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace warpline {

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

  // False when the file cannot be loaded, and for every path that is not a full one: the system
  // would look for such a file in places of its own.
  bool Load(const std::filesystem::path& full_path);

  // Why the last Load failed, in the system's words.
  const std::string& Failure() const { return failure_; }

  // The address of an exported function, null when there is none.
  void* Symbol(const char* name) const;

 private:
  void* handle_ = nullptr;
  std::string failure_;
};

}  // namespace warpline
