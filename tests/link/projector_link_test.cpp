#include "link/projector_link.h"

#include <gtest/gtest.h>

#include <tuple>

#include "tests/support/engine_rig.h"

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

TEST(ProjectorLink, ModeIsOneOrZero) {
  const std::pair<std::uint8_t, std::int16_t> kCases[] = {{0, 0}, {1, 1}, {2, 0}, {255, 0}};
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
  constexpr struct {
    const char* name;
    std::size_t field;
    const char* text;
    std::optional<PanelSize> panel;
    bool complete;
  } kCases[] = {
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

}  // namespace
}  // namespace warpline
