#include "link/projector_link.h"

#include <gtest/gtest.h>

#include <array>

#include "core/fault.h"
#include "tests/support/link_rig.h"

namespace warpline {
namespace {

using Calls = std::vector<std::string>;

struct OpenCase {
  const char* name;
  void (*choose)(Settings& settings);
  const char* call;
};

TEST(ProjectorLink, OpensTheConnectionOfTheSettings) {
  constexpr OpenCase kCases[] = {
      {"LAN", [](Settings&) {}, "open 1 '192.168.10.10' '7142' 1"},
      {"COM1, slowest",
       [](Settings& s) {
         s.ConnectDevice = kSerial;
         s.ComSpeed = 0;
       },
       "open 0 'COM1' '4800' 1"},
      {"COM8, fastest",
       [](Settings& s) {
         s.ConnectDevice = kSerial;
         s.ComPort = 7;
       },
       "open 0 'COM8' '38400' 1"},
      {"unknown speed",
       [](Settings& s) {
         s.ConnectDevice = kSerial;
         s.ComSpeed = -1;
       },
       "open 0 'COM1' '38400' 1"},
      {"USB8",
       [](Settings& s) {
         s.ConnectDevice = kUsb;
         s.USBPort = 7;
       },
       "open 2 'USB8' '' 1"},
      {"too long for the buffers",
       [](Settings& s) {
         s.IPAddress = "abcdefghijklmnopq";
         s.LANPort = "12345678901234567";
       },
       "open 1 'abcdefghijklmnop' '1234567890123456' 1"},
  };
  for (const OpenCase& each : kCases) {
    LinkRig rig;
    each.choose(rig.global.Settings);
    EXPECT_TRUE(rig.link.OpenLink()) << each.name;
    EXPECT_EQ(rig.library.calls, Calls{each.call}) << each.name;
    EXPECT_EQ(rig.busy.event_rounds, 1) << each.name;
  }
}

TEST(ProjectorLink, FailedOpenKeepsItsErrorAndLetsEventsRun) {
  LinkRig rig;
  rig.library.results[0] = kOpenConnect;
  EXPECT_FALSE(rig.link.OpenLink());
  EXPECT_FALSE(rig.link.IsOpen());
  EXPECT_EQ(rig.link.LastOpenError(), -8);
  EXPECT_EQ(rig.busy.event_rounds, 1);
  EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(126, -8)});
}

TEST(ProjectorLink, ClosesOnceEvenWhenClosingFails) {
  {
    LinkRig rig;
    rig.library.results[1] = kCloseAlreadyClosed;
    ASSERT_TRUE(rig.link.OpenLink());
    EXPECT_FALSE(rig.link.CloseLink());
    EXPECT_FALSE(rig.link.IsOpen());
    EXPECT_TRUE(rig.link.CloseLink());
    EXPECT_EQ(rig.library.calls.size(), 2u);
    EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(135, -2)});
  }
  FakeBeamlink library;
  LSSglobal global;
  RecordingDisplay display;
  RecordingBusy busy;
  const Messages messages(global, display);
  {
    ProjectorLink link(global, messages, busy, [&] { return library.Functions(); });
    ASSERT_TRUE(link.OpenLink());
  }
  EXPECT_EQ(library.calls.back(), "close");
  EXPECT_TRUE(display.messages.empty());
}

TEST(ProjectorLink, NeedsAnOpenLinkBeforeAnythingElse) {
  LinkRig rig;
  EXPECT_FALSE(rig.link.CheckConnection());
  EXPECT_FALSE(rig.link.SendCommand(kCommandClear));
  EXPECT_FALSE(rig.link.SendCommand(kCommandStore));
  EXPECT_FALSE(rig.link.SwitchInput());
  EXPECT_TRUE(rig.library.calls.empty());
  EXPECT_EQ(rig.display.Texts(), Calls(4, rig.ErrorText(137, -1)));
}

TEST(ProjectorLink, PanelIsTheReportedOneOrTheUsualOne) {
  LinkRig rig;
  rig.library.panel = {1920, 1200};
  ASSERT_TRUE(rig.link.OpenLink());
  EXPECT_TRUE(rig.link.CheckConnection());
  EXPECT_EQ(rig.global.Panel, (PanelSize{1920, 1200}));
  rig.library.results[rig.library.calls.size() + 2] = kBeamlinkNoPanelInformation;
  EXPECT_TRUE(rig.link.CheckConnection());
  EXPECT_EQ(rig.global.Panel, (PanelSize{1024, 768}));
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(ProjectorLink, TimeOutFollowsTheConnectionAndTheWholeBlock) {
  LinkRig rig;
  rig.global.Settings.SerialTimeOut = 500;
  rig.global.Settings.LANTimeOut = 1500;
  rig.global.Settings.USBTimeOut = 7000;
  rig.library.model_class = 4;
  ASSERT_TRUE(rig.link.OpenLink());
  const std::pair<std::int16_t, Calls> kCases[] = {
      {kSerial, {"timeout 500", "timeout 7500"}},
      {kLan, {"timeout 1500", "timeout 8500"}},
      {kUsb, {"timeout 7000", "timeout 14000"}},
  };
  for (const auto& [device, expected] : kCases) {
    rig.global.Settings.ConnectDevice = device;
    rig.library.calls.clear();
    EXPECT_TRUE(rig.link.SendCommand(kCommandStore));
    ASSERT_EQ(rig.library.calls.size(), 6u);
    EXPECT_EQ((Calls{rig.library.calls[0], rig.library.calls[3]}), expected);
  }
}

struct StoreCase {
  const char* name;
  std::uint8_t model_class;
  std::uint8_t reply5;
  const char* frame_head;  // of the frame behind the model-class query
  std::size_t frame_bytes;
};

TEST(ProjectorLink, StoreFollowsTheModelClass) {
  constexpr StoreCase kCases[] = {
      {"class 3", 3, 0, "send 01FC00061D00500400", 1571},
      {"class 4, layout 11", 4, 11, "send 01FC00061D00500400", 1571},
      {"class 4, other layout", 4, 12, "send 01FC00061D00600400", 1571},
      {"class 5", 5, 0, "send 01DF0000021200F4", 8},
      {"class 5 whose byte 5 is no error", 5, 13, "send 01DF0000021200F4", 8},
      {"class 255", 255, 0, "send 01DF0000021200F4", 8},
  };
  for (const StoreCase& each : kCases) {
    LinkRig rig;
    rig.library.model_class = each.model_class;
    rig.library.reply5 = each.reply5;
    rig.global.Registers = {{{"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"},
                             {"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"}}};
    ASSERT_TRUE(rig.link.OpenLink());
    EXPECT_TRUE(rig.link.SendCommand(kCommandStore)) << each.name;
    const std::string& sent = rig.library.calls.back();
    EXPECT_EQ(sent.substr(0, std::string(each.frame_head).size()), each.frame_head) << each.name;
    EXPECT_EQ(sent.size(), 5 + 2 * each.frame_bytes) << each.name;
    EXPECT_TRUE(rig.display.messages.empty()) << each.name;
  }
}

TEST(ProjectorLink, StoreIsRefusedBeforeAnythingIsStored) {
  const auto refused = [](LinkRig& rig, const char* name) {
    ASSERT_TRUE(rig.link.OpenLink());
    EXPECT_FALSE(rig.link.SendCommand(kCommandStore)) << name;
    EXPECT_EQ(rig.library.calls.back(), "send 00850000010086") << name;
    EXPECT_EQ(rig.display.Texts(), Calls{rig.ErrorText(74, 1)}) << name;
  };
  for (const std::uint8_t model_class : std::array<std::uint8_t, 3>{0, 1, 2}) {
    LinkRig rig;
    rig.library.model_class = model_class;
    refused(rig, "low class");
  }
  LinkRig silent;
  silent.library.results[3] = kBeamlinkNoResponse;
  refused(silent, "silent");
  LinkRig brief;
  brief.library.replies[3] = Frame(7, 5);
  refused(brief, "short answer");
  LinkRig large;
  large.library.model_class = 4;
  for (auto& axis : large.global.Registers) axis[kCorre2] = std::string(2 * 769, '0');
  refused(large, "tables too large");
}

TEST(ProjectorLink, ModeIsOneOrZero) {
  const std::pair<std::uint8_t, std::int16_t> kCases[] = {{0, 0}, {1, 1}, {2, 0}, {255, 0}};
  for (const auto& [answered, expected] : kCases) {
    LinkRig rig;
    rig.library.mode = answered;
    ASSERT_TRUE(rig.link.OpenLink());
    EXPECT_EQ(rig.link.QueryMode(), expected);
    EXPECT_EQ(rig.library.calls.back(), "send 01DE0000020100E2");
  }
  LinkRig brief;
  brief.library.replies[3] = Frame(6, 0);
  ASSERT_TRUE(brief.link.OpenLink());
  EXPECT_EQ(brief.link.QueryMode(), std::nullopt);
  EXPECT_EQ(brief.display.Texts(), Calls{brief.ErrorText(141, -5)});
}

TEST(ProjectorLink, SwitchInputSelectsTheInputShown) {
  LinkRig rig;
  rig.library.input = 26;
  ASSERT_TRUE(rig.link.OpenLink());
  EXPECT_TRUE(rig.link.SwitchInput());
  EXPECT_EQ(rig.library.calls,
            (Calls{"open 1 '192.168.10.10' '7142' 1", "timeout 3000", "status", "input 26"}));
}

TEST(ProjectorLink, UnusedNumbersAreFaults) {
  LinkRig rig;
  ASSERT_TRUE(rig.link.OpenLink());
  for (const int number : {-1, 13, 15, 22}) EXPECT_THROW(rig.link.SendCommand(number), Fault);
  EXPECT_EQ(rig.library.calls.size(), 1u);
}

struct CompleteCase {
  const char* name;
  std::size_t field;
  const char* text;
  std::optional<PanelSize> panel;
  bool complete;
};

TEST(ProjectorLink, RegisterTextsMustHaveTheirLength) {
  constexpr PanelSize kPanel{6, 6};  // four digits in each table
  const CompleteCase kCases[] = {
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
  for (const CompleteCase& each : kCases) {
    for (const Axis axis : {kHorizontal, kVertical}) {
      LinkRig rig;
      RegisterSet registers{{{"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"},
                             {"0000", "0000", "00", "00", "00", "00", "0080", "00", "0000"}}};
      registers[axis][each.field] = each.text;
      EXPECT_EQ(ProjectorLink::RegistersComplete(registers, each.panel, rig.messages),
                each.complete)
          << each.name;
      const Calls shown = each.complete ? Calls{} : Calls{TextOf(rig.global, 198)};
      EXPECT_EQ(rig.display.Texts(), shown) << each.name;
    }
  }
}

}  // namespace
}  // namespace warpline
