#include <fcntl.h>
#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <fstream>
#include <thread>

#include "platform/environment.h"
#include "platform/file_lock.h"
#include "platform/files.h"
#include "platform/files_posix.h"
#include "platform/shared_library.h"
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

// Both ways of replacing a file, the second as on a file system without nameless files.
std::error_code ReplaceNamed(const fs::path& path, std::string_view bytes) {
  return ReplaceByNamedTemporary(path, path.parent_path(), bytes);
}
constexpr std::error_code (*kWays[])(const fs::path&, std::string_view){ReplaceFileContents,
                                                                        ReplaceNamed};

TEST(ReplaceFilePosix, EitherWayKeepsTheModeAndWhatItCannotReplace) {
  for (const auto way : kWays) {
    const TempFolder folder;
    const fs::path path = folder.Write("old.wlt", "old");
    for (const mode_t mode : {0640u, 0600u, 0664u}) {
      ASSERT_EQ(::chmod(path.c_str(), mode), 0);
      ASSERT_EQ(way(path, "new"), std::error_code());
      EXPECT_EQ(ModeOf(path), mode);
    }
    {
      const FileSizeLimit limit(1000);
      EXPECT_TRUE(way(path, std::string(2000, 'n')));
      EXPECT_TRUE(way(folder / "fresh.wlt", std::string(2000, 'n')));
    }
    fs::create_directory(folder / "folder.wlt");
    EXPECT_TRUE(way(folder / "folder.wlt", "new"));
    EXPECT_EQ(TempFolder::Read(path), "new");
    EXPECT_EQ(folder.Names(), (Names{"folder.wlt", "old.wlt"}));
  }
}

TEST(ReplaceFilePosix, ANameWithoutAFolderMeansTheCurrentOne) {
  const TempFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  const std::error_code error = ReplaceFileContents("here.wlt", "new");
  fs::current_path(before);
  EXPECT_EQ(error, std::error_code());
  EXPECT_EQ(TempFolder::Read(folder / "here.wlt"), "new");
}

// A process that does nothing but save, killed after a while.
void KillASaver(const fs::path& path, std::error_code (*save)(const fs::path&, std::string_view),
                int microseconds) {
  const pid_t child = ::fork();
  if (child == 0) {
    for (int i = 0;; ++i) save(path, i % 2 == 0 ? std::string(500, 'a') : std::string(900, 'b'));
  }
  ::usleep(static_cast<useconds_t>(microseconds));
  ::kill(child, SIGKILL);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
}

TEST(ReplaceFilePosix, AKilledSaveLeavesAWholeFileAndTheNextOneClearsUp) {
  for (const auto way : kWays) {
    const TempFolder folder;
    const fs::path path = folder.Write("old.wlt", std::string(500, 'a'));
    const fs::path others = folder.Write(".warpline.notes", "not ours");
    for (int kill = 0; kill < 40; ++kill) {
      KillASaver(path, way, 1000 + 97 * kill);
      const std::string bytes = TempFolder::Read(path);
      EXPECT_TRUE(bytes == std::string(500, 'a') || bytes == std::string(900, 'b'));
    }
    ASSERT_EQ(ReplaceFileContents(path, "last"), std::error_code());
    EXPECT_EQ(folder.Names(), (Names{".warpline.notes", "old.wlt"}));
  }
}

TEST(ReplaceFilePosix, ATemporaryThatALivingProcessFillsStays) {
  const TempFolder folder;
  folder.Write(".warpline.abcd0123", "stray");
  const int owned = ::open(folder.Write(".warpline.zzzz9999", "owned").c_str(), O_RDONLY);
  ASSERT_EQ(::flock(owned, LOCK_EX), 0);
  ASSERT_EQ(ReplaceFileContents(folder / "a.wlt", "new"), std::error_code());
  EXPECT_EQ(folder.Names(), (Names{".warpline.zzzz9999", "a.wlt"}));
  ::close(owned);
}

TEST(PipesPosix, AreReadToTheirEndAndWrittenInto) {
  const TempFolder folder;
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  std::string read;
  EXPECT_EQ(ReadWholeFile(pipe, read), std::errc::no_message_available) << "nobody writes";
  EXPECT_TRUE(ReplaceFileContents(pipe, "x")) << "nobody reads";

  const std::string long_text(300'000, 't');  // more than a pipe holds
  std::thread writer([&] {
    std::ofstream stream(pipe, std::ios::binary);
    stream << long_text;
  });
  std::error_code error = std::make_error_code(std::errc::no_message_available);
  for (int tries = 0; tries < 60 && error == std::errc::no_message_available; ++tries) {
    error = ReadWholeFile(pipe, read);  // the writer may take its time to begin
  }
  EXPECT_EQ(error, std::error_code());
  writer.join();
  EXPECT_EQ(read, long_text);

  const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  EXPECT_EQ(ReplaceFileContents(pipe, "into"), std::error_code());
  std::array<char, 8> got{};
  EXPECT_EQ(::read(reader, got.data(), got.size()), 4);
  ::close(reader);
  EXPECT_TRUE(fs::is_fifo(pipe)) << "it is not replaced";
  EXPECT_EQ(ReadWholeFile("/dev/zero", read), std::errc::file_too_large);
}

TEST(FileLock, BelongsToOneProcessAndDiesWithIt) {
  const TempFolder folder;
  const fs::path path = folder / "lock";
  using Result = FileLock::Result;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    FileLock lock;
    const char taken = lock.Take(path) == Result::kTaken ? 'y' : 'n';
    for (ssize_t told = ::write(ready[1], &taken, 1); told > 0;) ::pause();
    ::_exit(1);
  }
  char taken = 0;
  ASSERT_EQ(::read(ready[0], &taken, 1), 1);
  EXPECT_EQ(taken, 'y');
  EXPECT_EQ(FileLock().Take(path), Result::kOwned);
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  FileLock after;
  EXPECT_EQ(after.Take(path), Result::kTaken) << "the file is there still, its owner is not";
  EXPECT_EQ(FileLock().Take(folder / "missing" / "lock"), Result::kFailed);
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST(FileAttributesPosix, FollowTheModeTheNameAndTheLink) {
  const TempFolder folder;
  const fs::path locked = folder.Write("locked.wlt", "x");
  ASSERT_EQ(::chmod(locked.c_str(), 0444), 0);
  EXPECT_EQ(FileAttributes(locked), kReadOnly + 0u);
  ASSERT_EQ(::chmod(locked.c_str(), 0466), 0);
  EXPECT_EQ(FileAttributes(locked), kReadOnly + 0u) << "the owner's permission counts";
  EXPECT_EQ(FileAttributes(folder.Write(".dotted.wlt", "x")), 0u) << "a dot is part of the name";
  fs::create_symlink(locked, folder / "link.wlt");
  EXPECT_EQ(FileAttributes(folder / "link.wlt"), kAlias + 0u) << "not the target's";
  fs::create_symlink(folder / "missing", folder / "dangling.wlt");
  EXPECT_EQ(FileAttributes(folder / "dangling.wlt"), kAlias + 0u);
}

TEST(SharedLibraryPosix, IsNotLookedForInTheSystemsOwnPlaces) {
  EXPECT_FALSE(SharedLibrary().Load("libc.so.6"));
  EXPECT_FALSE(SharedLibrary().Load(fs::path() / "libc.so.6")) << "a folder that is not known";
}

TEST(SystemPosix, LanguageComesFromTheFirstVariableSet) {
  using Value = std::optional<std::string>;
  const std::tuple<const char*, Value, Value, Value, bool> rows[] = {
      {"nothing set", {}, {}, {}, false},
      {"LANG", {}, {}, "ja_JP.UTF-8", true},
      {"LC_MESSAGES before LANG", {}, "en_US.UTF-8", "ja_JP.UTF-8", false},
      {"LC_ALL before all", "ja", "en_US", "C", true},
      {"empty is not set", "", "", "ja_JP", true},
      {"another language", "C.UTF-8", {}, {}, false},
  };
  for (const auto& [name, lc_all, lc_messages, lang, japanese] : rows) {
    SCOPED_TRACE(name);
    const EnvironmentValue first("LC_ALL", lc_all), second("LC_MESSAGES", lc_messages);
    const EnvironmentValue third("LANG", lang);
    EXPECT_EQ(SystemLanguageIsJapanese(), japanese);
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
