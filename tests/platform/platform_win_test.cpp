#include <gtest/gtest.h>
#include <windows.h>

#include <array>

#include "platform/environment.h"
#include "platform/file_lock.h"
#include "platform/files.h"
#include "platform/shared_library.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(FileAttributesWin, AreTheSystemsOwn) {
  const TempFolder folder;
  const std::tuple<const char*, DWORD, std::uint32_t> rows[] = {
      {"plain", FILE_ATTRIBUTE_NORMAL, 0},
      {"archive", FILE_ATTRIBUTE_ARCHIVE, kArchive},
      {"read-only", FILE_ATTRIBUTE_READONLY, kReadOnly},
      {"hidden", FILE_ATTRIBUTE_HIDDEN, kHidden},
      {"system", FILE_ATTRIBUTE_SYSTEM, kSystemFile},
      {"all of them",
       FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
           FILE_ATTRIBUTE_ARCHIVE,
       kReadOnly | kHidden | kSystemFile | kArchive},
  };
  for (const auto& [name, attributes, expected] : rows) {
    const fs::path path = folder.Write(name, "x");
    ASSERT_TRUE(::SetFileAttributesW(path.c_str(), attributes)) << name;
    // Not every system keeps the archive bit of a file that has others.
    constexpr std::uint32_t kAlways = ~std::uint32_t{kArchive};
    EXPECT_EQ(FileAttributes(path) & (kAlways | expected), expected) << name;
    ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

// The standard library's own walk through a folder ends at the old limit of a path's length.
std::vector<std::wstring> NamesIn(const fs::path& folder) {
  std::vector<std::wstring> names;
  WIN32_FIND_DATAW entry{};
  const HANDLE search = ::FindFirstFileW((folder / "*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return names;
  do {
    const std::wstring name = entry.cFileName;
    if (name != L"." && name != L"..") names.push_back(name);
  } while (::FindNextFileW(search, &entry));
  ::FindClose(search);
  return names;
}

TEST(FilesWin, JapaneseAndLongPathsHoldFiles) {
  const TempFolder folder;
  fs::path deep = folder.Path();
  while (deep.native().size() < 400)
    deep /= PathOf("とても長い名前のフォルダー・投写画面の補正データ");
  const std::pair<const char*, fs::path> rows[] = {
      {"Japanese", folder / "曲面 スクリーン" / "表示"},
      {"longer than the old limit", deep},
  };
  for (const auto& [name, place] : rows) {
    SCOPED_TRACE(name);
    std::error_code error;
    fs::create_directories(place, error);
    ASSERT_FALSE(error) << error.message();
    const fs::path path = place / PathOf("補正.wlt");
    ASSERT_EQ(ReplaceFileContents(path, "first"), std::error_code());
    ASSERT_EQ(ReplaceFileContents(path, "second"), std::error_code());
    std::string bytes;
    ASSERT_EQ(ReadWholeFile(path, bytes), std::error_code());
    EXPECT_EQ(bytes, "second");
    EXPECT_GT(FreeSpace(path, error), 0u);
    EXPECT_FALSE(error);
    EXPECT_EQ(FileAttributes(path) & ~std::uint32_t{kArchive}, 0u);
    EXPECT_EQ(NamesIn(place), (std::vector<std::wstring>{path.filename().native()}))
        << "no temporary stays";
    for (fs::path gone = path; gone != folder.Path(); gone = gone.parent_path()) {
      EXPECT_TRUE(fs::remove(gone)) << gone;
    }
  }
}

// Another program has the file open and lets nobody else write it or take its name away.
TEST(FilesWin, AFileThatIsInUseStaysAsItWas) {
  const TempFolder folder;
  const fs::path path = folder.Write("used.wlt", "old");
  const HANDLE other = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(ReplaceFileContents(path, "new"));
  ::CloseHandle(other);
  EXPECT_EQ(TempFolder::Read(path), "old");
  EXPECT_EQ(folder.Names(), (Names{"used.wlt"}));
}

TEST(SystemWin, DataFolderIsTheUsersRoamingOne) {
  const fs::path folder = ApplicationDataFolder();
  EXPECT_TRUE(fs::is_directory(folder));
  EXPECT_EQ(Utf8Of(folder), EnvironmentVariable("APPDATA"));
}

TEST(SystemWin, ProgramFolderHoldsTheProgram) {
  std::array<wchar_t, MAX_PATH> name{};
  ASSERT_GT(::GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())), 0u);
  EXPECT_TRUE(fs::exists(ProgramFolder() / fs::path(name.data()).filename()));
}

TEST(SystemWin, ErrorsAreDescribedInOneLine) {
  const std::error_code missing(ERROR_FILE_NOT_FOUND, std::system_category());
  const std::string text = SystemErrorText(missing);
  EXPECT_FALSE(text.empty());
  EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << text;
}

// A library of a wanted name in the current folder is never taken, nor is one beside the program.
TEST(SystemWin, LibrariesAreFoundInTheSystemsFolderAlone) {
  const TempFolder folder;
  const fs::path own = ProgramFolder() / "Beamlink.dll";
  ASSERT_TRUE(fs::exists(own));
  fs::copy_file(own, folder / "NowhereElse.dll");
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  for (const wchar_t* name : {L"NowhereElse.dll", L"Beamlink.dll"}) {
    const HMODULE by_name = ::LoadLibraryW(name);
    EXPECT_EQ(by_name, nullptr) << Utf8Of(fs::path(name));
    if (by_name != nullptr) ::FreeLibrary(by_name);
  }
  fs::current_path(before);
  SharedLibrary library;
  EXPECT_TRUE(library.Load(folder / "NowhereElse.dll")) << "by its full path it is";
}

// What killed saves left goes; what belongs to a living program or to somebody else stays.
TEST(FilesWin, ATemporaryThatIsStillWrittenStays) {
  const TempFolder folder;
  folder.Write("~warpline.abcd0123", "stray");
  folder.Write("~warpline.notes", "not ours");
  const fs::path owned = folder.Write("~warpline.zzzz9999", "owned");
  const HANDLE owner = ::CreateFileW(owned.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(owner, INVALID_HANDLE_VALUE);
  const std::error_code error = ReplaceFileContents(folder / "a.wlt", "new");
  const Names while_owned = folder.Names();
  ::CloseHandle(owner);
  EXPECT_EQ(error, std::error_code());
  EXPECT_EQ(while_owned, (Names{"a.wlt", "~warpline.notes", "~warpline.zzzz9999"}));
}

// A handle of another process counts like one of this: the system asks about files, not owners.
TEST(FileLockWin, BelongsToOneAtATime) {
  const TempFolder folder;
  const fs::path path = folder / "lock";
  using Result = FileLock::Result;
  {
    FileLock lock;
    EXPECT_EQ(lock.Take(path), Result::kTaken);
    EXPECT_EQ(FileLock().Take(path), Result::kOwned);
  }
  EXPECT_EQ(FileLock().Take(path), Result::kTaken) << "the file is there still, its owner is not";
  EXPECT_EQ(FileLock().Take(folder / "missing" / "lock"), Result::kFailed);
}

}  // namespace
}  // namespace warpline
