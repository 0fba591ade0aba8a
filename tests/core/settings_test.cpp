#include "core/settings.h"

#include <gtest/gtest.h>

#include <array>

namespace warpline {
namespace {

Settings Read(const std::vector<std::string>& lines, Settings settings = DefaultSettings()) {
  for (const std::string& line : lines) ReadSettingsLine(line, settings);
  return settings;
}

std::string ValueOf(const Settings& settings, const std::string& key) {
  for (const std::string& line : SettingsLines(settings)) {
    if (line.starts_with(key + "=")) return line.substr(key.size() + 1);
  }
  return "(no such key)";
}

TEST(Settings, DefaultsAreWrittenAsTheWholeFile) {
  const std::vector<std::string> expected{
      "[Warpline Tool 3.0]",
      ";0:NormalMode",
      ";1:DemoMode",
      "DemoMode=0",
      ";0:Serial",
      ";1:LAN",
      ";2:USB",
      "ConnectDevice=1",
      "SerialTimeOut=3000",
      "LANTimeOut=3000",
      "USBTimeOut=3000",
      ";0:COM1",
      ";1:COM2",
      ";2:COM3",
      ";3:COM4",
      ";4:COM5",
      ";5:COM6",
      ";6:COM7",
      ";7:COM8",
      "ComPort=0",
      ";0:4800bps",
      ";1:9600bps",
      ";2:19200bps",
      ";3:38400bps",
      "ComSpeed=3",
      "IPAddress=192.168.10.10",
      "LANPort=7142",
      ";0:USB1",
      ";1:USB2",
      ";2:USB3",
      ";3:USB4",
      ";4:USB5",
      ";5:USB6",
      ";6:USB7",
      ";7:USB8",
      "USBPort=0",
      ";0:No",
      ";1:Yes",
      "AutoApply=1",
      ";0:No",
      ";1:Yes",
      "AutoApplyMenu=0",
      ";0:No",
      ";1:Yes",
      "TestPattern=1",
      ";Correction Dialog Position",
      "DialogPosX=120",
      "DialogPosY=-45",
      ";0:SimpleMode",
      ";1:DetailedMode",
      "CommunicationMode=0",
  };
  EXPECT_EQ(SettingsLines(DefaultSettings(120, -45)), expected);
}

struct RangeRow {
  const char* key;
  const char* lowest;
  const char* highest;
  const char* below;
  const char* above;
};

constexpr std::array<RangeRow, 12> kRanges{{
    {"DemoMode", "0", "1", "-1", "2"},
    {"ConnectDevice", "0", "2", "-1", "3"},
    {"SerialTimeOut", "500", "7000", "499", "7001"},
    {"LANTimeOut", "500", "7000", "499", "7001"},
    {"USBTimeOut", "500", "7000", "499", "7001"},
    {"ComPort", "0", "7", "-1", "8"},
    {"ComSpeed", "0", "3", "-1", "4"},
    {"USBPort", "0", "7", "-1", "8"},
    {"AutoApply", "0", "1", "-1", "2"},
    {"AutoApplyMenu", "0", "1", "-1", "2"},
    {"TestPattern", "0", "1", "-1", "2"},
    {"CommunicationMode", "0", "1", "-1", "2"},
}};

TEST(Settings, NumbersAreTakenWithinTheirRangeAlone) {
  for (const RangeRow& row : kRanges) {
    SCOPED_TRACE(row.key);
    const std::string key = row.key;
    for (const char* edge : {row.lowest, row.highest}) {
      EXPECT_EQ(ValueOf(Read({key + "=" + edge}), key), edge);
      for (const char* outside : {row.below, row.above, "65536", "99999999999999999999"}) {
        EXPECT_EQ(ValueOf(Read({key + "=" + edge, key + "=" + outside}), key), edge) << outside;
      }
    }
  }
}

TEST(Settings, MalformedNumbersBecomeTheDefault) {
  const Settings defaults = DefaultSettings();
  for (const RangeRow& row : kRanges) {
    SCOPED_TRACE(row.key);
    const std::string key = row.key;
    for (const char* malformed : {"", "-", "x", "."}) {
      EXPECT_EQ(ValueOf(Read({key + "=" + row.lowest, key + "=" + malformed}), key),
                ValueOf(defaults, key));
    }
  }
  const Settings placed = DefaultSettings(10, 20);
  EXPECT_EQ(Read({"DialogPosX=x", "DialogPosY="}, placed), placed);
}

TEST(Settings, LineForms) {
  struct Row {
    const char* name;
    std::vector<std::string> lines;
    const char* key;
    const char* value;
  };
  const std::vector<Row> rows{
      {"blanks around key and value", {"  ComPort  =  5  "}, "ComPort", "5"},
      {"characters that are no digits", {"LANTimeOut=4,5s00"}, "LANTimeOut", "4500"},
      {"comment", {";ComPort=5"}, "ComPort", "0"},
      {"a comment begins at the first character", {" ;ComPort=5"}, "ComPort", "0"},
      {"key in other letters", {"comport=5"}, "ComPort", "0"},
      {"a tab is no blank", {"\tComPort=5"}, "ComPort", "0"},
      {"unknown key", {"ComPorts=5"}, "ComPort", "0"},
      {"no equals sign", {"ComPort"}, "ComPort", "0"},
      {"no key", {"=5"}, "ComPort", "0"},
      {"duplicate: the last wins", {"ComPort=5", "ComPort=2"}, "ComPort", "2"},
      {"duplicate: a bad last one is dropped", {"ComPort=5", "ComPort=9"}, "ComPort", "5"},
      {"cut at the first equals sign", {"IPAddress=a=b"}, "IPAddress", "a=b"},
      {"an address is any text", {"IPAddress=pj 1.local"}, "IPAddress", "pj 1.local"},
      {"empty address", {"IPAddress="}, "IPAddress", ""},
      {"address line without a sign", {"IPAddress"}, "IPAddress", "192.168.10.10"},
      {"empty port", {"LANPort="}, "LANPort", "7142"},
      {"blank port", {"LANPort=   "}, "LANPort", "7142"},
      {"port as text", {"LANPort=0x1F"}, "LANPort", "0x1F"},
      {"far left", {"DialogPosX=-2147483648"}, "DialogPosX", "-2147483648"},
      {"too far left", {"DialogPosX=-2147483649"}, "DialogPosX", "0"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(ValueOf(Read(row.lines), row.key), row.value);
  }
}

TEST(Settings, SectionLineOnlySetsTheFlag) {
  EXPECT_FALSE(Read({"DemoMode=1", "[Warpline Tool 2.0]"}).SectionFound);
  EXPECT_EQ(Read({"DemoMode=1"}).DemoMode, 1) << "keys count without the section";
  Settings expected = DefaultSettings();
  expected.SectionFound = true;
  EXPECT_EQ(Read({"[Warpline Tool 3.0]"}), expected);
  EXPECT_EQ(Read({"  [Warpline Tool 3.0] "}), expected);
  EXPECT_EQ(Read({";[Warpline Tool 3.0]"}), expected);
}

TEST(Settings, EveryFieldSurvivesTheFileInAnyOrder) {
  Settings settings;
  settings.DemoMode = 1;
  settings.ConnectDevice = kUsb;
  settings.SerialTimeOut = 501;
  settings.LANTimeOut = 502;
  settings.USBTimeOut = 6999;
  settings.ComPort = 7;
  settings.ComSpeed = 1;
  settings.IPAddress = "10.0.0.7";
  settings.LANPort = "80";
  settings.USBPort = 6;
  settings.AutoApply = 0;
  settings.AutoApplyMenu = 1;
  settings.TestPattern = 0;
  settings.DialogPosX = -1920;
  settings.DialogPosY = 1080;
  settings.CommunicationMode = 1;
  settings.SectionFound = true;
  const std::vector<std::string> lines = SettingsLines(settings);
  EXPECT_EQ(Read(lines), settings);
  EXPECT_EQ(Read({lines.rbegin(), lines.rend()}), settings);
}

TEST(Settings, TimeOutFollowsTheConnection) {
  Settings settings = Read({"SerialTimeOut=501", "LANTimeOut=502", "USBTimeOut=503"});
  for (const ConnectDevice device : {kSerial, kLan, kUsb}) {
    settings.ConnectDevice = device;
    EXPECT_EQ(TimeOutOf(settings), 501 + device);
  }
}

}  // namespace
}  // namespace warpline
