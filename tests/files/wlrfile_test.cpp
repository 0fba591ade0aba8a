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
  world.data.Registers = kRegisters;
  EXPECT_EQ(world.Written("wlr"), kWhole);
  FileWorld reader;
  reader.data.Registers[0][0] = "FFFF";
  EXPECT_EQ(reader.Read("wlr", kWhole), std::nullopt);
  EXPECT_EQ(reader.data.Registers, kRegisters);
}

TEST(WlrFile, AcceptsOrRefuses) {
  for (const std::string& text :
       Texts{"h_scroll=12345\n" + kWhole, Without(Without(kWhole, "h_comp"), "v_comp"),
             kWhole + "rubbish", kWhole + ";x=y", kWhole + " h_opt_center = f f ; x",
             kWhole + "h_scroll=1", kWhole + "h_corre_2_zzzz=12",
             kWhole + "h_corre_2_0040=" + std::string(64, 'A')}) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlr", text), kAccepted) << text;
    EXPECT_EQ(world.display.Texts(), Texts{}) << text;
  }
  EXPECT_EQ(FileWorld().Read("wlr", Without(kWhole, "[Warp")), kFileCorrupted);
  const Texts length{kBadLength}, value{kBadValue}, both{kBadLength, kBadValue};
  // Each in one way only; what comes before the line would be accepted.
  const std::pair<std::string, Texts> refused[] = {
      {Without(kWhole, "h_stadium"), {}},
      {Without(kWhole, "v_corre_2"), {}},
      {kWhole + "h_opt_center=1F0", length},
      {kWhole + "h_opt_center=G1", value},
      {kWhole + "h_opt_center=G1F", both},
      {kWhole + "h_comp_disp=", length},
      {kWhole + "h_opt center=ff", length},
      {kWhole + "h_colour=12", length},
      {kWhole + "H_SCROLL=1", length},
      {kWhole + "h_corre_2=12", length},
      {kWhole + "_corre_2_=12", length},
      {kWhole + "x_corre_2_0000=12", length},
      {kWhole + "h_corre_2_0040=" + std::string(65, 'A'), length},
      {kWhole + "h_corre_2_0040=", length},
  };
  for (const auto& [text, messages] : refused) {
    FileWorld world;
    EXPECT_EQ(world.Read("wlr", text), kFileValueWrong) << text;
    EXPECT_EQ(world.display.Texts(), messages) << text;
  }
}

TEST(WlrFile, StoresBeforeItChecksAndAppendsPiecesInTheOrderOfTheLines) {
  FileWorld world;
  world.Read("wlr", kHeader + "v_corre_2_0040=AB\nv_corre_2_0000=CD\nv_corre_2_0000=EF\n" +
                        "h_scroll=1234\nh_scroll=56789");
  EXPECT_EQ(world.data.Registers[kVertical][kCorre2], "ABCDEF");
  EXPECT_EQ(world.data.Registers[kHorizontal][kScroll], "56789");
  for (const char* unknown : {"h_corre_2=12", "h_stadium_corre_2_0000=12", "_corre_2_=12"}) {
    FileWorld empty;
    empty.Read("wlr", kHeader + unknown);
    EXPECT_EQ(empty.global.Registers, RegisterSet()) << unknown;
  }
}

TEST(WlrFile, CutsTablesIntoPieces) {
  const std::string full(64, '7');
  const std::pair<std::size_t, std::string> rows[] = {
      {0, "h_corre_2_0000=\r\n"},
      {64, "h_corre_2_0000=" + full + "\r\n"},
      {65, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=7\r\n"},
      {320, "h_corre_2_0000=" + full + "\r\nh_corre_2_0040=" + full + "\r\nh_corre_2_0080=" + full +
                "\r\nh_corre_2_00C0=" + full + "\r\nh_corre_2_0100=" + full + "\r\n"},
  };
  for (const auto& [digits, expected] : rows) {
    FileWorld world;
    world.data.Registers[kHorizontal][kCorre2] = std::string(digits, '7');
    const std::string text = world.Written("wlr").value_or("");
    EXPECT_NE(text.find("h_corre_1=\r\n" + expected + "v_panel_ext="), std::string::npos) << digits;
  }
  FileWorld world;
  world.data.Registers[kVertical][kCorre2] = std::string(2046, '7');
  const std::string text = world.Written("wlr").value_or("");
  EXPECT_NE(text.find("v_corre_2_07C0=" + std::string(62, '7') + "\r\n"), std::string::npos);
}

}  // namespace
}  // namespace warpline
