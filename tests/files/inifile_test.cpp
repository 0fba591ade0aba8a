#include "files/inifile.h"

#include <gtest/gtest.h>

namespace warpline {
namespace {

Settings Read(const std::vector<std::string>& lines, Settings settings = DefaultSettings()) {
  IniFile file(settings);
  file.ResetRead();
  for (const std::string& line : lines) EXPECT_TRUE(file.ParseLine(line)) << line;
  file.Commit();
  return settings;
}

std::vector<std::string> LinesOf(Settings settings) {
  std::vector<std::string> lines;
  IniFile(settings).Write(lines);
  return lines;
}

std::string ValueOf(const Settings& settings, const std::string& key) {
  for (const std::string& line : LinesOf(settings)) {
    if (line.starts_with(key + "=")) return line.substr(key.size() + 1);
  }
  return "(no such key)";
}

TEST(Settings, DefaultsAreWrittenAsTheWholeFile) {
  std::string text;
  for (const std::string& line : LinesOf(DefaultSettings(120, -45))) text += line + "\n";
  EXPECT_EQ(text,
            "[Warpline Tool 3.0]\n;0:NormalMode\n;1:DemoMode\nDemoMode=0\n"
            ";0:Serial\n;1:LAN\n;2:USB\nConnectDevice=1\n"
            "SerialTimeOut=3000\nLANTimeOut=3000\nUSBTimeOut=3000\n"
            ";0:COM1\n;1:COM2\n;2:COM3\n;3:COM4\n;4:COM5\n;5:COM6\n;6:COM7\n;7:COM8\nComPort=0\n"
            ";0:4800bps\n;1:9600bps\n;2:19200bps\n;3:38400bps\nComSpeed=3\n"
            "IPAddress=192.168.10.10\nLANPort=7142\n"
            ";0:USB1\n;1:USB2\n;2:USB3\n;3:USB4\n;4:USB5\n;5:USB6\n;6:USB7\n;7:USB8\nUSBPort=0\n"
            ";0:No\n;1:Yes\nAutoApply=1\n;0:No\n;1:Yes\nAutoApplyMenu=0\n"
            ";0:No\n;1:Yes\nTestPattern=1\n"
            ";Correction Dialog Position\nDialogPosX=120\nDialogPosY=-45\n"
            ";0:SimpleMode\n;1:DetailedMode\nCommunicationMode=0\n");
}

TEST(Settings, NumbersAreTakenWithinTheirRangeAlone) {
  const struct {
    const char* key;
    int lowest, highest;
  } rows[] = {
      {"DemoMode", 0, 1},        {"ConnectDevice", 0, 2}, {"SerialTimeOut", 500, 7000},
      {"LANTimeOut", 500, 7000}, {"ComPort", 0, 7},       {"USBTimeOut", 500, 7000},
      {"ComSpeed", 0, 3},        {"USBPort", 0, 7},       {"AutoApply", 0, 1},
      {"AutoApplyMenu", 0, 1},   {"TestPattern", 0, 1},   {"CommunicationMode", 0, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.key);
    const auto value_after = [&row](const std::string& first, const std::string& second) {
      const std::string start = std::string(row.key) + "=";
      return ValueOf(Read({start + first, start + second}), row.key);
    };
    for (const int number : {row.lowest, row.highest}) {
      const std::string edge = std::to_string(number);
      EXPECT_EQ(value_after(std::to_string(row.lowest), edge), edge);
      for (const std::string& outside :
           {std::to_string(row.lowest - 1), std::to_string(row.highest + 1), std::string("65536"),
            std::string("99999999999999999999")}) {
        EXPECT_EQ(value_after(edge, outside), edge) << outside;
      }
    }
    for (const char* malformed : {"", "-", "x", "."}) {
      EXPECT_EQ(value_after(std::to_string(row.lowest), malformed),
                ValueOf(DefaultSettings(), row.key));
    }
  }
  const Settings placed = DefaultSettings(10, 20);
  EXPECT_EQ(Read({"DialogPosX=x", "DialogPosY="}, placed), placed);
  EXPECT_EQ(Read({"DialogPosX=7", "DialogPosX=-", "DialogPosY=65536", "DialogPosY="}, placed),
            placed);
}

TEST(Settings, LineForms) {
  const std::tuple<const char*, std::vector<std::string>, const char*, const char*> rows[] = {
      {"blanks around key and value", {"  ComPort  =  5  "}, "ComPort", "5"},
      {"characters that are no digits", {"LANTimeOut=4,5s00"}, "LANTimeOut", "4500"},
      {"comment", {";ComPort=5"}, "ComPort", "0"},
      {"a comment begins at the first character", {" ;ComPort=5"}, "ComPort", "0"},
      {"no comment behind a number", {"LANTimeOut=4;500"}, "LANTimeOut", "4500"},
      {"nor behind a text", {"IPAddress=a;b"}, "IPAddress", "a;b"},
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
  for (const auto& [name, lines, key, value] : rows) {
    SCOPED_TRACE(name);
    EXPECT_EQ(ValueOf(Read(lines), key), value);
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

TEST(Settings, EveryKeyIsItsFieldInAnyOrder) {
  const Settings settings{1, kUsb, 501, 502, 6999,  7,    1, "10.0.0.7", "80",
                          6, 0,    1,   0,   -1920, 1080, 1, false};
  const std::vector<std::string> lines{
      "DemoMode=1",      "ConnectDevice=2",  "SerialTimeOut=501", "LANTimeOut=502",
      "USBTimeOut=6999", "ComPort=7",        "ComSpeed=1",        "IPAddress=10.0.0.7",
      "LANPort=80",      "USBPort=6",        "AutoApply=0",       "AutoApplyMenu=1",
      "TestPattern=0",   "DialogPosX=-1920", "DialogPosY=1080",   "CommunicationMode=1"};
  EXPECT_EQ(Read(lines), settings);
  EXPECT_EQ(Read({lines.rbegin(), lines.rend()}), settings);
  for (const std::string& line : lines) {
    const std::size_t equals = line.find('=');
    EXPECT_EQ(ValueOf(settings, line.substr(0, equals)), line.substr(equals + 1));
  }
}

}  // namespace
}  // namespace warpline
