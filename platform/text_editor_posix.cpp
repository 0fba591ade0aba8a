#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>

#include "platform/text_editor.h"

namespace warpline {

bool OpenInTextEditor(const std::filesystem::path& file) {
  std::string program = "xdg-open";
  std::string name = file.string();
  const std::array<char*, 3> words{program.data(), name.data(), nullptr};
  pid_t child = 0;
  if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, words.data(), ::environ) != 0) {
    return false;
  }
  // Somebody has to take note of its end.
  std::thread([child] { ::waitpid(child, nullptr, 0); }).detach();
  return true;
}

}  // namespace warpline
