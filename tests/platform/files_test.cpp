
#include <gtest/gtest.h>

#include "platform/files.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(ReplaceFileContents, WritesExactlyTheseBytesAndNoOtherFile) {
  const TempFolder folder;
  const std::string bytes("a\r\nb\0c\n\x1A\xE3", 9);
  ASSERT_EQ(ReplaceFileContents(folder / "new.wlt", bytes), std::error_code());
  EXPECT_EQ(TempFolder::Read(folder / "new.wlt"), bytes);
  ASSERT_EQ(ReplaceFileContents(folder / "new.wlt", ""), std::error_code());
  EXPECT_EQ(fs::file_size(folder / "new.wlt"), 0u) << "nothing of the longer text stays";
  EXPECT_EQ(folder.Names(), (Names{"new.wlt"}));
}

TEST(ReplaceFileContents, TakesLongAndJapaneseNames) {
  const TempFolder folder;
  const Names names{std::string(251, 'n') + ".wlt", "曲面スクリーン.wlt"};
  for (const std::string& name : names) {
    ASSERT_EQ(ReplaceFileContents(PathOf(Utf8Of(folder.Path()) + "/" + name), name),
              std::error_code());
    EXPECT_EQ(TempFolder::Read(folder.Path() / PathOf(name)), name);
  }
  EXPECT_EQ(folder.Names(), names);
}

TEST(ReplaceFileContents, FailsWithNothingBehind) {
  const TempFolder folder;
  const fs::path occupied = folder / "occupied.wlt";
  fs::create_directory(occupied);
  const fs::path inner = folder.Write("occupied.wlt/old", "old");
  EXPECT_TRUE(ReplaceFileContents(occupied, "new")) << "a folder stands in the way";
  EXPECT_TRUE(ReplaceFileContents(folder / "missing" / "x.wlt", "new")) << "no such folder";
  EXPECT_TRUE(ReplaceFileContents(inner / "x.wlt", "new")) << "a file is no folder";
  EXPECT_TRUE(ReplaceFileContents(folder / std::string(300, 'n'), "new")) << "name too long";
  EXPECT_EQ(folder.Names(), (Names{"occupied.wlt"}));
  EXPECT_EQ(TempFolder::Read(inner), "old");
}

TEST(ReadWholeFile, GivesTheBytesOrTheReason) {
  const TempFolder folder;
  const std::string bytes("x\0\r\ny", 5);
  std::string read = "left over";
  EXPECT_EQ(ReadWholeFile(folder.Write("a", bytes), read), std::error_code());
  EXPECT_EQ(read, bytes);
  EXPECT_EQ(ReadWholeFile(folder.Write("empty", ""), read), std::error_code());
  EXPECT_EQ(read, "");
  const std::error_code missing = ReadWholeFile(folder / "missing", read);
  EXPECT_EQ(missing, std::errc::no_such_file_or_directory);
  EXPECT_FALSE(SystemErrorText(missing).empty());
  EXPECT_EQ(ReadWholeFile(folder.Path(), read), std::errc::is_a_directory);
  const fs::path huge = folder.Write("huge", "");
  fs::resize_file(huge, (std::uintmax_t{64} << 20) + 1);
  EXPECT_EQ(ReadWholeFile(huge, read), std::errc::file_too_large);
}

TEST(FileAttributes, OfFoldersAndMissingFiles) {
  const TempFolder folder;
  EXPECT_EQ(FileAttributes(folder / "missing"), 0u);
  EXPECT_EQ(FileAttributes(folder.Path()) & kDirectory, kDirectory + 0u);
  EXPECT_EQ(FileAttributes(folder.Write("plain.wlt", "x")) & ~std::uint32_t{kArchive}, 0u);
}

TEST(FreeSpace, OfTheFolderThatHoldsThePath) {
  const TempFolder folder;
  std::error_code error;
  EXPECT_GT(FreeSpace(folder / "not yet there.wlt", error), 0u);
  EXPECT_FALSE(error);
  EXPECT_EQ(FreeSpace(folder / "missing" / "x.wlt", error), 0u);
  EXPECT_TRUE(error);
}

}  // namespace
}  // namespace warpline
