#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

// A folder of a test's own, empty at first, that goes away with everything in it.

namespace warpline {

class TempFolder {
 public:
  TempFolder() {
    std::random_device random;
    do {
      folder_ = std::filesystem::temp_directory_path() /
                ("warpline-test-" + std::to_string(random()) + std::to_string(random()));
    } while (!std::filesystem::create_directory(folder_));
  }

  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(folder_, ignored);
  }

  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return folder_; }
  std::filesystem::path operator/(std::string_view name) const { return folder_ / name; }

  // Puts a file with exactly these bytes into the folder.
  std::filesystem::path Write(std::string_view name, std::string_view bytes) const {
    const std::filesystem::path path = folder_ / name;
    std::ofstream stream(path, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
  }

  // The bytes of a file, empty when there is none.
  static std::string Read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  }

  // The names of all entries, sorted.
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path folder_;
};

}  // namespace warpline
