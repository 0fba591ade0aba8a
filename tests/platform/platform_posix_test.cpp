#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "platform/environment.h"
#include "platform/files.h"
#include "tests/support/environment.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

mode_t ModeOf(const fs::path& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777;
}

TEST(ReplaceFilePosix, KeepsTheModeOfTheOldFile) {
  const TempFolder folder;
  const fs::path path = folder.Write("old.wlt", "old");
  for (const mode_t mode : {0640u, 0600u, 0664u}) {
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    ASSERT_EQ(ReplaceFileContents(path, "new"), std::error_code());
    EXPECT_EQ(ModeOf(path), mode);
  }
}

// Lets files grow to so many bytes only, as a full disk would.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &old_limit_), 0);
    const rlimit limit{bytes, old_limit_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &old_limit_);
    std::signal(SIGXFSZ, old_handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit old_limit_{};
  void (*old_handler_)(int);
};

TEST(ReplaceFilePosix, WritingThatFailsHalfwayLeavesTheOldFile) {
  const TempFolder folder;
  const fs::path path = folder.Write("old.wlt", "old");
  std::error_code existing;
  std::error_code fresh;
  {
    const FileSizeLimit limit(1000);
    existing = ReplaceFileContents(path, std::string(2000, 'n'));
    fresh = ReplaceFileContents(folder / "fresh.wlt", std::string(2000, 'n'));
  }
  EXPECT_TRUE(existing);
  EXPECT_TRUE(fresh);
  EXPECT_EQ(TempFolder::Read(path), "old");
  EXPECT_EQ(folder.Names(), (Names{"old.wlt"}));
}

TEST(FileAttributesPosix, FollowTheModeTheNameAndTheLink) {
  const TempFolder folder;
  const fs::path locked = folder.Write("locked.wlt", "x");
  ASSERT_EQ(::chmod(locked.c_str(), 0444), 0);
  EXPECT_EQ(FileAttributes(locked), kReadOnly + 0u);
  ASSERT_EQ(::chmod(locked.c_str(), 0466), 0);
  EXPECT_EQ(FileAttributes(locked), kReadOnly + 0u) << "the owner's permission counts";
  EXPECT_EQ(FileAttributes(folder.Write(".hidden.wlt", "x")), kHidden + 0u);
  fs::create_symlink(locked, folder / "link.wlt");
  EXPECT_EQ(FileAttributes(folder / "link.wlt"), kAlias + 0u) << "not the target's";
  fs::create_symlink(folder / "missing", folder / "dangling.wlt");
  EXPECT_EQ(FileAttributes(folder / "dangling.wlt"), kAlias + 0u);
}

TEST(SystemPosix, LanguageComesFromTheFirstVariableSet) {
  const struct {
    const char* name;
    std::optional<std::string> lc_all, lc_messages, lang;
    bool japanese;
  } rows[] = {
      {"nothing set", {}, {}, {}, false},
      {"LANG", {}, {}, "ja_JP.UTF-8", true},
      {"LC_MESSAGES before LANG", {}, "en_US.UTF-8", "ja_JP.UTF-8", false},
      {"LC_ALL before all", "ja", "en_US", "C", true},
      {"empty is not set", "", "", "ja_JP", true},
      {"another language", "C.UTF-8", {}, {}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const EnvironmentValue all("LC_ALL", row.lc_all), messages("LC_MESSAGES", row.lc_messages);
    const EnvironmentValue lang("LANG", row.lang);
    EXPECT_EQ(SystemLanguageIsJapanese(), row.japanese);
  }
}

TEST(SystemPosix, ApplicationDataFolder) {
  const EnvironmentValue home("HOME", "/home/somebody");
  for (const std::optional<std::string>& unset : {std::optional<std::string>(), {""}, {"x"}}) {
    const EnvironmentValue configured("XDG_CONFIG_HOME", unset);
    EXPECT_EQ(ApplicationDataFolder(), "/home/somebody/.config");
  }
  const EnvironmentValue configured("XDG_CONFIG_HOME", "/elsewhere");
  EXPECT_EQ(ApplicationDataFolder(), "/elsewhere");
}

}  // namespace
}  // namespace warpline
