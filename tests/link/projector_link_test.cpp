#include "link/projector_link.h"

#include <gtest/gtest.h>

#include "core/conversions.h"
#include "core/fault.h"
#include "link/command_frames.h"
#include "link/library_loader.h"
#include "tests/support/engine_rig.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

using Calls = Texts;

// Texts that any panel takes.
const RegisterSet kPlain{{{"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"},
                          {"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"}}};

TEST(ProjectorLink, OpensTheConnectionOfTheSettings) {
  const Settings usual;
  Settings slow, com2, unknown, usb, buffers;
  slow.ConnectDevice = com2.ConnectDevice = unknown.ConnectDevice = kSerial;
  slow.ComSpeed = 0;
  com2.ComPort = com2.ComSpeed = 1;
  unknown.ComPort = 7;
  unknown.ComSpeed = -1;
  usb.ConnectDevice = kUsb;
  usb.USBPort = 7;
  buffers.IPAddress = "abcdefghijklmnopq";
  buffers.LANPort = "12345678901234567";
  const std::pair<Settings, std::string> cases[] = {
      {usual, "open 1 '192.168.10.10' '7142' 1"},
      {slow, "open 0 'COM1' '4800' 1"},
      {com2, "open 0 'COM2' '9600' 1"},
      {unknown, "open 0 'COM8' '38400' 1"},
      {usb, "open 2 'USB8' '' 1"},
      {buffers, "open 1 'abcdefghijklmnop' '1234567890123456' 1"},
  };
  for (const auto& [settings, call] : cases) {
    EngineRig rig;
    EXPECT_TRUE(rig.link.OpenLink(settings)) << call;
    EXPECT_EQ(rig.library.calls, Calls{call});
    EXPECT_EQ(rig.busy.event_rounds, 1) << call;
  }
}

TEST(ProjectorLink, FailedOpenKeepsItsErrorAndLetsEventsRun) {
  EngineRig rig;
  rig.library.results[0] = kOpenConnect;
  EXPECT_FALSE(rig.link.OpenLink(rig.global.Settings));
  EXPECT_FALSE(rig.link.IsOpen());
  EXPECT_EQ(rig.link.LastOpenError(), -8);
  EXPECT_EQ(rig.busy.event_rounds, 1);
  EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(126, -8)});
}

TEST(ProjectorLink, ClosesOnceEvenWhenClosingFails) {
  EngineRig rig;
  rig.library.results[1] = kCloseAlreadyClosed;
  ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
  EXPECT_FALSE(rig.link.CloseLink());
  EXPECT_FALSE(rig.link.IsOpen());
  EXPECT_TRUE(rig.link.CloseLink());
  EXPECT_EQ(rig.library.calls.size(), 2u);
  EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(135, -2)});
  {
    ProjectorLink link(rig.messages, rig.busy, [&] { return rig.library.Functions(); });
    ASSERT_TRUE(link.OpenLink(Settings()));
  }
  EXPECT_EQ(rig.library.calls.back(), "close");
}

TEST(ProjectorLink, NeedsAnOpenLinkBeforeAnythingElse) {
  EngineRig rig;
  EXPECT_FALSE(rig.link.CheckConnection());
  EXPECT_FALSE(rig.link.SendCommand(kCommandClear, rig.global.Registers, 0));
  EXPECT_FALSE(rig.link.SendCommand(kCommandStore, rig.global.Registers, 0));
  EXPECT_FALSE(rig.link.SwitchInput());
  EXPECT_TRUE(rig.library.calls.empty());
  EXPECT_EQ(rig.display.Texts(), Calls(4, rig.ErrorText(137, -1)));
}

TEST(ProjectorLink, PanelIsTheReportedOneOrTheUsualOne) {
  EngineRig rig;
  rig.library.panel = {1920, 1200};
  ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
  EXPECT_EQ(rig.link.CheckConnection(), (PanelSize{1920, 1200}));
  rig.library.results[rig.library.calls.size() + 2] = kBeamlinkNoPanelInformation;
  EXPECT_EQ(rig.link.CheckConnection(), (PanelSize{1024, 768}));
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(ProjectorLink, TimeOutFollowsTheConnectionAndTheWholeBlock) {
  const std::pair<std::int16_t, Calls> kCases[] = {
      {kSerial, {"timeout 500", "timeout 7500"}},
      {kLan, {"timeout 1500", "timeout 8500"}},
      {kUsb, {"timeout 7000", "timeout 14000"}},
  };
  for (const auto& [device, expected] : kCases) {
    EngineRig rig;
    rig.library.model_class = 4;
    Settings settings;
    std::tie(settings.SerialTimeOut, settings.LANTimeOut, settings.USBTimeOut) =
        std::tuple(500, 1500, 7000);
    settings.ConnectDevice = device;
    ASSERT_TRUE(rig.link.OpenLink(settings));
    rig.library.calls.clear();
    EXPECT_TRUE(rig.link.SendCommand(kCommandStore, rig.global.Registers, 0));
    ASSERT_EQ(rig.library.calls.size(), 6u);
    EXPECT_EQ((Calls{rig.library.calls[0], rig.library.calls[3]}), expected);
  }
}

TEST(ProjectorLink, StoreIsRefusedBeforeAnythingIsStored) {
  const std::pair<const char*, void (*)(EngineRig&)> cases[] = {
      {"class 0", [](EngineRig& rig) { rig.library.model_class = 0; }},
      {"class 2", [](EngineRig& rig) { rig.library.model_class = 2; }},
      {"silent", [](EngineRig& rig) { rig.library.results[3] = kBeamlinkNoResponse; }},
      {"short answer", [](EngineRig& rig) { rig.library.replies[3] = Frame(7, 5); }},
      {"tables too large",
       [](EngineRig& rig) {
         rig.library.model_class = 4;
         for (auto& axis : rig.global.Registers) axis[kCorre2] = std::string(2 * 769, '0');
       }},
  };
  for (const auto& [name, spoil] : cases) {
    SCOPED_TRACE(name);
    EngineRig rig;
    spoil(rig);
    ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
    EXPECT_FALSE(rig.link.SendCommand(kCommandStore, rig.global.Registers, 0));
    EXPECT_EQ(rig.library.calls.back(), "send 00850000010086");
    EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(74, 1)});
  }
}

TEST(ProjectorLink, ModeIsTheOneThatTheReplyTells) {
  const std::pair<std::uint8_t, std::int16_t> kCases[] = {{0, 0}, {1, 1}, {2, 2}, {255, 255}};
  for (const auto& [answered, expected] : kCases) {
    EngineRig rig;
    rig.library.mode = answered;
    ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
    EXPECT_EQ(rig.link.QueryMode(), expected);
    EXPECT_EQ(rig.library.calls.back(), "send 01DE0000020100E2");
  }
  for (const Frame& reply : {Frame(6, 0), Frame{0x21, 0xDE, 0, 0, 1, 0, 1}}) {
    EngineRig modeless;
    modeless.library.replies[3] = reply;
    ASSERT_TRUE(modeless.link.OpenLink(modeless.global.Settings));
    EXPECT_EQ(modeless.link.QueryMode(), std::nullopt);
    EXPECT_EQ(modeless.display.Texts(), Calls{modeless.ErrorText(141, -5)});
  }
}

TEST(ProjectorLink, UnusedNumbersAreFaults) {
  EngineRig rig;
  ASSERT_TRUE(rig.link.OpenLink(Settings()));
  for (const int number : {-1, 13, 15, 22}) {
    EXPECT_THROW(rig.link.SendCommand(number, {}, 0), Fault) << number;
  }
  EXPECT_EQ(rig.library.calls.size(), 1u);
}

TEST(ProjectorLink, RegisterTextsMustHaveTheirLength) {
  constexpr PanelSize kPanel{6, 6};  // four digits in each table
  using Row = std::tuple<const char*, std::size_t, const char*, std::optional<PanelSize>, bool>;
  constexpr Row kCases[] = {
      {"whole", kScroll, "0000", {}, true},
      {"half a field", kScroll, "00", {}, false},
      {"too long", kOptCenter, "0000", {}, false},
      {"empty", kStadium, "", {}, false},
      {"empty comp_disp", kCompDisp, "", {}, true},
      {"half comp_disp", kCompDisp, "0", {}, false},
      {"any whole bytes", kCorre2, "00", {}, true},
      {"half a byte", kCorre2, "000", {}, false},
      {"table of the panel", kCorre2, "0000", kPanel, true},
      {"table too short for the panel", kCorre2, "00", kPanel, false},
      {"table too long for the panel", kCorre2, "000000", kPanel, false},
  };
  for (const auto& [name, field, text, panel, complete] : kCases) {
    for (const Axis axis : {kHorizontal, kVertical}) {
      EngineRig rig;
      RegisterSet registers = kPlain;
      registers[axis][field] = text;
      EXPECT_EQ(ProjectorLink::RegistersComplete(registers, panel, rig.messages), complete) << name;
      const Calls shown = complete ? Calls{} : Calls{TextOf(rig.global, 198)};
      EXPECT_EQ(rig.display.Texts(), shown) << name;
    }
  }
}

// A library that exports everything but one name.
SymbolLookup AllBut(std::string_view missing) {
  return [missing](const char* name) -> void* {
    static int exported = 0;
    return name == missing ? nullptr : &exported;
  };
}

TEST(LibraryLoader, RequiresWhatIsCalledAndNothingElse) {
  BeamlinkFunctions link;
  EXPECT_TRUE(BindEntryPoints(AllBut("USBConnectPjUpdate"), link));
  for (const char* name :
       {"PJCommDevOpen", "PJCommDevClose", "PJCommDevSetAckTimeout", "PJGetRunningStatus",
        "PJAnyCommand", "PJGetStatus", "PJSetInput", "PJGetPcViewerInformation"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), link)) << name;
  }
  BeamseekFunctions search;
  EXPECT_TRUE(BindEntryPoints(AllBut("CS_GetPJList"), search));
  EXPECT_EQ(search.CS_GetPJList, nullptr);
  for (const char* name : {"ConnectSelectCreate", "ConnectSelectSetLastPJ", "ConnectSelectStart",
                           "ConnectSelectRestart", "ConnectSelectDestroy"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), search)) << name;
  }
}

TEST(LibraryLoader, RefusesWhatIsNoLibrary) {
  const TempFolder folder;
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "nothing there";
  EXPECT_EQ(LoadBeamseek(folder.Path()), nullptr) << "nothing there";
  for (const char* name : {kBeamlinkName, kBeamseekName}) {
    folder.Write(SharedLibrary::FileName(name), "not a library");
  }
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "a text file";
  EXPECT_EQ(LoadBeamseek(folder.Path()), nullptr) << "a text file";
}

TEST(LibraryLoader, KeepsWhatItLoaded) {
  const BeamlinkProvider provider = BeamlinkFromProgramFolder();
  const BeamlinkFunctions* const functions = provider();
  ASSERT_NE(functions, nullptr);
  EXPECT_EQ(provider(), functions);
  EXPECT_TRUE(functions->stands_in) << "it does not say what it is";
}

// Every byte tells where it came from.
const RegisterSet kRegisters{{
    {"1122", "3344", "55", "66", "77", "88", "99AA", "BB", "CCDD"},
    {"0102", "0304", "05", "06", "07", "08", "090A", "0B", "0C0D0E"},
}};

std::string FrameText(int number, const RegisterSet& registers, std::int16_t mode = 0) {
  const auto text = ComposeCommandText(number, registers, mode);
  return text ? HexOf(FrameOf(*text)) : "none";
}

TEST(CommandFrames, EveryNumberHasItsBytes) {
  constexpr std::tuple<int, std::int16_t, const char*> kCases[] = {
      {0, 0, "01DF0000020000E2"},
      {1, 0, "01DF0000020100E3"},
      {2, 0, "01DF00000F02000B001122334499AABB5566CCDD08"},
      {3, 0, "01DF00001003000C0001020304090A0B05060C0D0E59"},
      {4, 0, "01DF0000090400050099AABBCCDD99"},
      {5, 0, "01DF00000A05000600090A0B0C0D0E3A"},
      {6, 0, "01DF00000606000200112221"},
      {7, 0, "01DF000006070002000102F2"},
      {8, 0, "01DF00000608000200334467"},
      {9, 0, "01DF000006090002000304F8"},
      {10, 0, "01DF0000050A0001005545"},
      {11, 0, "01DF0000050B00010005F6"},
      {12, 0, "01DF0000050C0001006658"},
      {14, 0, "01DF0000050E000100776B"},
      {16, 0, "01DF00000510000100887E"},
      {17, 0, "01DF0000051100010008FF"},
      {18, 0, "01DE0000020000E1"},
      {18, 1, "01DE0000020100E2"},
      {18, 2, "01DE0000020200E3"},
      {18, 255, "01DE000002FF00E0"},
      {19, 2, "01DE0000020100E2"},
      {20, 0, "021A000002020121"},
      {21, 0, "01DF0000021200F4"},
  };
  for (const auto& [number, mode, frame] : kCases) {
    EXPECT_EQ(FrameText(number, kRegisters, mode), frame) << number << " mode " << mode;
  }
  for (const int number : {-1, 13, 15, 22, 1000}) {
    EXPECT_EQ(FrameText(number, kRegisters), "none") << number;
  }
  EXPECT_EQ(HexOf(FrameOf(kProbeText)), "01DF000000E0");
  EXPECT_EQ(HexOf(FrameOf(kModelClassText)), "00850000010086");
}

TEST(CommandFrames, TablesFollowTheirLength) {
  RegisterSet registers = kRegisters;
  registers[kHorizontal][kCompDisp].clear();
  EXPECT_EQ(FrameText(14, registers), "01DF0000050E00010000F4") << "empty is sent as zero";
  registers[kHorizontal][kCorre2] = std::string(766, '0');
  const std::string frame = FrameText(kCommandHorizontalSet, registers);
  // 383 + 9 = 0x188 data bytes, 0x18C bytes behind the count.
  EXPECT_EQ(frame.substr(0, 36), "01DF00018C020088011122334499AABB5566");
  EXPECT_EQ(frame.size(), 2u * (9 + 0x188 + 1));
  registers[kHorizontal][kCorre2] = std::string(2 * 65536, '0');
  EXPECT_THROW(ComposeCommandText(kCommandHorizontalSet, registers, 0), Fault);
}

// The whole block that a model stores by; empty when it stores by anything else.
Frame BlockOf(const RegisterSet& registers, ModelAnswer model) {
  const auto store = ComposeStore(registers, model);
  return store && store->whole_block ? store->frame : Frame();
}

TEST(WholeBlock, AddressFollowsClassAndReply) {
  constexpr int kLow[][2] = {{3, 0}, {4, 11}, {4, 13}, {3, 12}},
                kHigh[][2] = {{4, 0}, {4, 12}, {4, 17}};
  const auto head = [](int model_class, int reply5) {  // up to the first byte of the tables
    return HexOf(BlockOf(kRegisters, {model_class, reply5})).substr(0, 24);
  };
  for (const auto& [model_class, reply5] : kLow) {
    EXPECT_EQ(head(model_class, reply5), "01FC00061D00500400160600") << model_class << reply5;
  }
  for (const auto& [model_class, reply5] : kHigh) {
    EXPECT_EQ(head(model_class, reply5), "01FC00061D00600400160600") << model_class << reply5;
  }
}

TEST(WholeBlock, TablesMeetFromBothEnds) {
  const std::string hex = HexOf(BlockOf(kRegisters, {3, 0}));
  ASSERT_EQ(hex.size(), 2u * 1571);
  EXPECT_EQ(hex.substr(2 * 12, 8), "0C0D0E00");
  EXPECT_EQ(hex.find_first_not_of('0', 2 * 15), 2u * 1546);
  EXPECT_EQ(hex.substr(2 * 1544), "0000DDCC112201023344030499AA090ABB0B550566067707880804");
}

TEST(WholeBlock, RefusesTablesThatDoNotFitTogether) {
  RegisterSet registers = kRegisters;
  registers[kVertical][kCorre2] = std::string(2 * 1000, '1');
  registers[kHorizontal][kCorre2] = std::string(2 * 536, '2');
  const Frame full = BlockOf(registers, {4, 11});
  ASSERT_EQ(full.size(), 1571u);
  EXPECT_EQ(HexOf(full).substr(2 * 1010, 8), "11112222");
  registers[kHorizontal][kCorre2] += "22";
  EXPECT_FALSE(ComposeStore(registers, {4, 11}));
  EXPECT_TRUE(ComposeStore(registers, {5, 11})) << "command 21 carries no table";
}

TEST(Store, ModelClassChoosesItsFrame) {
  for (const int model_class : {0, 2}) EXPECT_FALSE(ComposeStore(kRegisters, {model_class, 0}));
  for (const int model_class : {5, 6, 255}) {
    const auto store = ComposeStore(kRegisters, {model_class, 11});
    ASSERT_TRUE(store) << model_class;
    EXPECT_FALSE(store->whole_block) << model_class;
    EXPECT_EQ(HexOf(store->frame), "01DF0000021200F4") << model_class;
  }
}

}  // namespace
}  // namespace warpline
