#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>

#include "platform/open_file.h"

namespace warpline {
namespace {

// What xdg-open ends with when it finds no program for a file, or that program does not start.
constexpr int kNoProgram = 3;
constexpr int kProgramFailed = 4;

bool NothingOpened(pid_t child) {
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return false;
  return WEXITSTATUS(status) == kNoProgram || WEXITSTATUS(status) == kProgramFailed;
}

}  // namespace

bool OpenInTextEditor(const std::filesystem::path& file, const std::function<void()>& failed) {
  std::string program = "xdg-open";
  std::string name = file.string();
  const std::array<char*, 3> words{program.data(), name.data(), nullptr};
  pid_t child = 0;
  if (::posix_spawnp(&child, program.c_str(), nullptr, nullptr, words.data(), ::environ) != 0) {
    return false;
  }
  std::thread([child, failed] {
    if (NothingOpened(child)) failed();
  }).detach();
  return true;
}

// The desktop knows what shows a page.
bool OpenInBrowser(const std::filesystem::path& page, const std::function<void()>& failed) {
  return OpenInTextEditor(page, failed);
}

}  // namespace warpline
