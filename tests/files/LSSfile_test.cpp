#include "core/fault.h"
#include "platform/files.h"
#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kShape = "[Warpline Shape File 2.0]\r\n";
const std::string kScroll5G = "[Warpline Register File]\nh_scroll=12345G";
constexpr const char* kOldVersion = "File version is different. Loading is not possible.";
constexpr const char* kNoSpace = "There is not enough free disk space.";
constexpr const char* kSaveRefused = "Failed writing file.";

TEST(OpenDataFile, ShowsTheMessagesOfAFailureInOrder) {
  const TempFolder folder;
  const std::tuple<const char*, const char*, std::string, Texts> rows[] = {
      {"accepted", "wls", kShape, {}},
      {"no last line end", "wls", kShape + "CorreFixed=0", {}},
      {"half a line end at the end", "wls", kShape + "CorreFixed=0\r", {}},
      {"carriage returns alone", "wls", "[Warpline Shape File 2.0]\rCorreFixed=2\r", {}},
      {"two carriage returns", "wls", kShape + "CorreFixed=0\r\r\n", {kBadValue}},
      {"no empty line of two", "wls", kShape + "\r\r\nX=1", {kBadValue}},
      {"empty line of LF", "wls", kShape + "\nX=1", {}},
      {"empty line of CR LF", "wls", kShape + "\r\nX=1", {}},
      {"line of blanks", "wls", kShape + "  \r\nX=1", {kBadValue}},
      {"old version", "wlt", "[Warpline Tool Data File]", {kOldVersion}},
      {"invalid line", "wls", kShape + "X=1", {kBadValue}},
      {"check of the whole", "wls", kShape + "CorreDataPtsX00=1", {kBadValue}},
      {"unknown type word", "txt", kShape, {kBadValue}},
      {"type word in other case", "WLS", kShape, {kBadValue}},
      {"settings without section", "ini", "ComSpeed=1", {}},
      {"empty settings", "ini", "", {}},
      {"NULs", "wlt", std::string(5000, '\0'), {kCorrupted}},
      {"a long key", "wls", kShape + std::string(1 << 20, ' ') + "=", {kBadValue}},
      {"the register lines' own", "wlr", kScroll5G, {kBadLength, kBadValue, kBadValue}},
  };
  for (const auto& [name, type, bytes, messages] : rows) {
    FileWorld world;
    EXPECT_EQ(world.file.OpenDataFile(folder.Write("file", bytes), type), messages.empty()) << name;
    EXPECT_EQ(world.display.Texts(), messages) << name;
  }
}

TEST(OpenDataFile, ShowsTheSystemsErrors) {
  const TempFolder folder;
  const std::string missing =
      SystemErrorText(std::make_error_code(std::errc::no_such_file_or_directory));
  for (const std::string_view type : {kTypeWlt, kTypeWls, kTypeWlr}) {
    FileWorld world;
    world.data.Registers[kHorizontal][kScroll] = "1234";
    EXPECT_FALSE(world.file.OpenDataFile(folder / "missing", type));
    EXPECT_EQ(world.display.Texts(), Texts{missing});
    EXPECT_EQ(world.data.Registers[kHorizontal][kScroll], type == kTypeWlr ? "" : "1234");
  }
  FileWorld world;
  EXPECT_FALSE(world.file.OpenDataFile(folder / "missing", kTypeIni));
  EXPECT_TRUE(world.display.messages.empty());
  EXPECT_FALSE(world.file.OpenDataFile(folder.Path(), kTypeWlt));
  ASSERT_EQ(world.display.messages.size(), 1u);
  EXPECT_FALSE(world.display.messages[0].text.empty());
}

TEST(OpenDataFile, SettingsAreCommittedAndStagingIsKept) {
  const TempFolder folder;
  FileWorld world;
  world.data.Settings.SectionFound = true;
  const auto ini = folder.Write("a.ini", "ComSpeed=1\r\n;LANPort=1\r\nComSpeed=9\r\n\r\nComPort=3");
  EXPECT_TRUE(world.file.OpenDataFile(ini, kTypeIni));
  EXPECT_EQ(world.data.Settings.ComSpeed, 1);
  EXPECT_EQ(world.data.Settings.ComPort, 0);
  EXPECT_FALSE(world.data.Settings.SectionFound);

  const auto refused = folder.Write("a.wls", kShape + "CorreInterp=4\nCorreInterp=9");
  EXPECT_FALSE(world.file.OpenDataFile(refused, kTypeWls));
  EXPECT_TRUE(world.file.OpenDataFile(folder.Write("b.wls", kShape), kTypeWls));
  EXPECT_EQ(world.data.Correction.Curves[kHorizontal].CorreInterp, kQuartic);
  world.file.ResetStaging();
  EXPECT_EQ(world.data.Correction, FileWorld().data.Correction);
}

TEST(SaveDataFile, RoundTripsEveryKind) {
  const TempFolder folder;
  FileWorld world;
  world.data.Settings.IPAddress = "10.0.0.7";
  world.data.Correction.Axes[kVertical].Distortion = 17;
  for (AxisRegisters& axis : world.data.Registers) axis.fill("12");
  for (const std::string_view type : {kTypeIni, kTypeWlt, kTypeWls, kTypeWlr}) {
    const auto path = folder / std::string("\xE6\x98\xA0.").append(type);
    EXPECT_TRUE(world.file.SaveDataFile(path, type, world.data)) << type;
    EXPECT_EQ(TempFolder::Read(path), world.Written(type)) << type;
    EXPECT_TRUE(world.file.SaveDataFile(path, type, world.data)) << "over the old " << type;
    FileWorld reader;
    EXPECT_TRUE(reader.file.OpenDataFile(path, type)) << type;
    EXPECT_EQ(reader.Written(type), world.Written(type)) << type;
  }
  EXPECT_EQ(folder.Names().size(), 4u);
  EXPECT_TRUE(world.display.messages.empty());
}

TEST(SaveDataFile, FailuresLeaveTheOldFileAndNoOther) {
  const TempFolder folder;
  const auto read_only = folder.Write("read_only.wlt", "old");
  std::filesystem::permissions(read_only, std::filesystem::perms::owner_read);
  folder.Write("old.wlt", "old");
  std::filesystem::create_directory(folder / "folder.wlt");
  const std::vector<std::string> names = folder.Names();
  const std::tuple<const char*, const char*, const char*, double, const char*> rows[] = {
      {"read-only", "read_only.wlt", "wlt", 0.0, kSaveRefused},
      {"attributes come before the contents", "read_only.wlt", "wlt", std::nan(""), kSaveRefused},
      {"folder", "folder.wlt", "wlt", 0.0, kSaveRefused},
      {"no number over an old file", "old.wlt", "wlt", std::nan(""), "Failed to save the file."},
      {"no number in a new file", "new.wlt", "wlt", std::nan(""), "Failed to save the file."},
      {"unknown type word", "old.wlt", "txt", 0.0, kBadValue},
  };
  for (const auto& [name, file, type, coordinate, message] : rows) {
    FileWorld world;
    world.data.Correction.Curves[kVertical].CorreDataPts[7].X = coordinate;
    EXPECT_FALSE(world.file.SaveDataFile(folder / file, type, world.data)) << name;
    EXPECT_EQ(world.display.Texts(), Texts{message}) << name;
    EXPECT_EQ(folder.Names(), names) << name;
    EXPECT_EQ(TempFolder::Read(folder / "old.wlt"), "old") << name;
    EXPECT_EQ(TempFolder::Read(read_only), "old") << name;
  }
}

TEST(SaveDataFile, LeavesHiddenFilesAndLinksAlone) {
  const TempFolder folder;
  std::error_code ignored;  // not every system lets us make links, or hides a name with a dot
  std::filesystem::create_symlink(folder.Write("target.wlt", "old"), folder / "link.wlt", ignored);
  for (const auto& path : {folder.Write(".hidden.wlt", "old"), folder / "link.wlt"}) {
    FileWorld world;
    const bool refused = (FileAttributes(path) & (kHidden | kAlias)) != 0;
    EXPECT_NE(world.file.SaveDataFile(path, kTypeWlt, world.data), refused) << path;
    EXPECT_EQ(world.display.Texts(), refused ? Texts{kSaveRefused} : Texts{}) << path;
  }
}

TEST(SaveDataFile, RefusesWhereTooLittleSpaceIsLeft) {
  const std::pair<const char*, std::uintmax_t> needed[] = {
      {"ini", 2048}, {"wlt", 2048}, {"wls", 1024}, {"wlr", 4096}};
  const TempFolder folder;
  for (const auto& [type, bytes] : needed) {
    for (const std::uintmax_t free : {std::uintmax_t{0}, bytes - 1, bytes}) {
      FileWorld world;
      const LSSfile file(world.messages, [free](const auto&, std::error_code&) { return free; });
      EXPECT_EQ(file.SaveDataFile(folder / type, type, world.data), free == bytes) << type << free;
      EXPECT_EQ(world.display.Texts(), free == bytes ? Texts{} : Texts{kNoSpace});
      EXPECT_EQ(std::filesystem::exists(folder / type), free == bytes) << type << free;
    }
  }
}

TEST(SaveDataFile, ShowsTheSystemsErrors) {
  const TempFolder folder;
  const std::filesystem::path missing = folder / "missing", file = folder.Write("file", "");
  const std::tuple<std::filesystem::path, std::string> rows[] = {
      {missing / "a.wlt", Utf8Of(missing) + ": "},
      {file / "a.wlt", Utf8Of(file) + ": "},
      {folder / std::string(300, 'n'), ""},
  };
  for (const auto& [path, start] : rows) {
    FileWorld world;
    EXPECT_FALSE(world.file.SaveDataFile(path, kTypeWlt, world.data));
    ASSERT_EQ(world.display.messages.size(), 1u);
    const std::string& text = world.display.messages[0].text;
    EXPECT_TRUE(text.starts_with(start) && text.size() > start.size()) << text;
    EXPECT_EQ(text.starts_with(Utf8Of(folder.Path())), !start.empty()) << text;
    EXPECT_NE(text, kNoSpace) << "no disk is full";
  }
  EXPECT_EQ(folder.Names(), std::vector<std::string>{"file"});
}

}  // namespace
}  // namespace warpline
