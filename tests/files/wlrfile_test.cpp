#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

const std::string kHeader = "[Warpline Register File]\r\n";
const std::string kWhole = kHeader +
                           "h_panel_ext=0102\r\nh_scroll=0304\r\nh_opt_center=E0\r\n"
                           "h_linearity=05\r\nh_comp_disp=00\r\nh_stadium=01\r\nh_corre_0=0080\r\n"
                           "h_corre_1=F8\r\nh_corre_2_0000=0123\r\n"
                           "v_panel_ext=0A0B\r\nv_scroll=0C0D\r\nv_opt_center=20\r\n"
                           "v_linearity=15\r\nv_comp_disp=00\r\nv_stadium=00\r\nv_corre_0=FF7F\r\n"
                           "v_corre_1=08\r\nv_corre_2_0000=CDEF\r\n";
const RegisterSet kRegisters{{{"0102", "0304", "E0", "05", "00", "01", "0080", "F8", "0123"},
                              {"0A0B", "0C0D", "20", "15", "00", "00", "FF7F", "08", "CDEF"}}};

std::string Without(std::string text, std::string_view key) {
  const std::size_t start = text.find(key);
  return text.erase(start, text.find('\n', start) + 1 - start);
}

TEST(WlrFile, WritesAndReadsBothAxes) {
  FileWorld world;
  world.global.Registers = kRegisters;
  EXPECT_EQ(world.Written("wlr"), kWhole);
  FileWorld reader;
  reader.global.Registers[0][0] = "FFFF";
  EXPECT_EQ(reader.Read("wlr", kWhole), std::nullopt);
  EXPECT_EQ(reader.global.Registers, kRegisters);
}

TEST(WlrFile, AcceptsOrRefuses) {
  const std::vector<std::string> none;
  const std::string length = "The length of parameter is not correct.";
  const std::string value = "The parameter value is not correct.";
  const struct {
    const char* name;
    std::string text;
    std::optional<FileErrorCode> expected;
    std::vector<std::string> messages;
  } rows[] = {
      {"no header", Without(kWhole, "[Warp"), kFileCorrupted, none},
      {"nonsense before the header", "h_scroll=12345\n" + kWhole, std::nullopt, none},
      {"no comp_disp", Without(Without(kWhole, "h_comp"), "v_comp"), std::nullopt, none},
      {"no stadium", Without(kWhole, "h_stadium"), kFileValueWrong, none},
      {"no table", Without(kWhole, "v_corre_2"), kFileValueWrong, none},
      {"line without equals sign", kWhole + "rubbish", std::nullopt, none},
      {"comment", kWhole + ";x=y", std::nullopt, none},
      {"lower case and blanks", kWhole + " h_opt center = f f ; x", kFileValueWrong, {length}},
      {"lower case digits", kWhole + " h_opt_center = f f ; x", std::nullopt, none},
      {"too long", kHeader + "h_opt_center=1F0", kFileValueWrong, {length}},
      {"no digit", kHeader + "h_opt_center=G1", kFileValueWrong, {value}},
      {"too long and no digit", kHeader + "h_opt_center=G1F", kFileValueWrong, {length, value}},
      {"short is no fault here", kWhole + "h_scroll=1", std::nullopt, none},
      {"empty", kHeader + "h_opt_center=", kFileValueWrong, {length}},
      {"unknown key", kHeader + "h_colour=1", kFileValueWrong, {length}},
      {"unknown key, no digit", kHeader + "h_colour=?", kFileValueWrong, {length, value}},
      {"key in other case", kHeader + "H_SCROLL=1", kFileValueWrong, {length}},
      {"table without offset", kHeader + "h_corre_2=12", kFileValueWrong, {length}},
      {"table of no axis", kHeader + "_corre_2_=12", kFileValueWrong, {length}},
      {"table of another axis", kHeader + "x_corre_2_0000=12", kFileValueWrong, {length}},
      {"offset that is no number", kWhole + "h_corre_2_zzzz=12", std::nullopt, none},
      {"piece of 64", kWhole + "h_corre_2_0040=" + std::string(64, 'A'), std::nullopt, none},
      {"piece of 65", kWhole + "h_corre_2_0040=" + std::string(65, 'A'), kFileValueWrong, {length}},
      {"empty piece", kWhole + "h_corre_2_0040=", kFileValueWrong, {length}},
  };
  for (const auto& row : rows) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlr", row.text), row.expected) << row.name;
    EXPECT_EQ(world.display.Texts(), row.messages) << row.name;
  }
}

TEST(WlrFile, StoresBeforeItChecks) {
  FileWorld world;
  world.Read("wlr", kHeader + "h_scroll=1234\nh_scroll=56789");
  EXPECT_EQ(world.global.Registers[kHorizontal][kScroll], "56789");
}

TEST(WlrFile, UnknownKeysStoreNothing) {
  for (const char* line : {"h_corre_2=12", "h_stadium_corre_2_0000=12", "_corre_2_=12"}) {
    FileWorld world;
    world.Read("wlr", kHeader + line);
    EXPECT_EQ(world.global.Registers, RegisterSet()) << line;
  }
}

TEST(WlrFile, AppendsPiecesInTheOrderOfTheLines) {
  FileWorld world;
  world.Read("wlr", kHeader + "v_corre_2_0040=AB\nv_corre_2_0000=CD\nv_corre_2_0000=EF");
  EXPECT_EQ(world.global.Registers[kVertical][kCorre2], "ABCDEF");
}

TEST(WlrFile, CutsTablesIntoPieces) {
  const std::string full(64, '7');
  const struct {
    std::size_t digits;
    std::string expected;
  } rows[] = {
      {0, "h_corre_2_0000=\r\n"},
      {64, "h_corre_2_0000=" + full + "\r\n"},
      {65, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=7\r\n"},
      {320, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=" + full + "\r\nh_corre_2_0080=" + full +
                "\r\nh_corre_2_00C0=" + full + "\r\nh_corre_2_0100=" + full + "\r\n"},
  };
  for (const auto& row : rows) {
    FileWorld world;
    world.global.Registers[kHorizontal][kCorre2] = std::string(row.digits, '7');
    const std::string text = world.Written("wlr").value_or("");
    EXPECT_NE(text.find("h_corre_1=\r\n" + row.expected + "v_panel_ext="), std::string::npos)
        << row.digits;
  }
  FileWorld world;
  world.global.Registers[kVertical][kCorre2] = std::string(2046, '7');
  const std::string text = world.Written("wlr").value_or("");
  EXPECT_NE(text.find("v_corre_2_07C0=" + std::string(62, '7') + "\r\n"), std::string::npos);
}

}  // namespace
}  // namespace warpline
