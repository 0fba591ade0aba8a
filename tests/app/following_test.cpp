#include "app/status_line.h"
#include "model/registers.h"
#include "tests/app/controller_rig.h"

// What is sent while the user's hand goes on, and what the tool then knows of the projector.

namespace warpline {
namespace {

constexpr std::size_t kSendAgainPressed = 0;

struct FollowingRig : ControllerRig {
  void Press() {
    controller.MoveSlider(1, V().Distortion + 1);
    controller.ReleaseKey(kKeyRight, false);
  }
  Texts Status() const {
    const StatusLine line = controller.Status();
    return {line.shown, line.note};
  }
  // What Apply sends for the model as it stands.
  Texts WhatApplySends() const {
    FollowingRig other;
    other.global.Correction = global.Correction;
    other.controller.Apply();
    return other.Frames();
  }
};

TEST(Following, TwentyPressesWhileTheProjectorTakesItsTime) {
  for (const int rounds : {1, 2, 7, 30, 90, 10000}) {  // between two presses
    SCOPED_TRACE(rounds);
    FollowingRig rig;
    int presses = 1;
    rig.busy.on_events = [&] {
      if (rig.busy.event_rounds % rounds != 0 || presses >= 20) return;
      ++presses;
      rig.Press();
      rig.controller.Apply();  // no command gets between
      rig.controller.Initialize();
    };
    rig.Press();
    rig.busy.on_events = nullptr;
    for (; presses < 20; ++presses) rig.Press();
    EXPECT_EQ(rig.V().Distortion, 20);
    EXPECT_EQ(rig.busy.kind, BusyKind::kFollowing);
    const Texts frames = rig.Frames(), last = rig.WhatApplySends();
    ASSERT_EQ(frames.size() % last.size(), 0U) << "whole sequences alone";
    EXPECT_LE(frames.size() / last.size(), 20U);
    EXPECT_EQ(Texts(frames.end() - static_cast<std::ptrdiff_t>(last.size()), frames.end()), last);
    EXPECT_EQ(rig.global.SecondCopy, rig.global.Correction.Axes);
    rig.controller.ReleaseSlider();
    rig.controller.ReleaseKey(kKeyShift, false);
    EXPECT_TRUE(rig.library.calls.empty()) << "nothing has changed";
  }
}

TEST(Following, AMoveThatIsNotReleasedWaits) {
  FollowingRig rig;
  rig.busy.on_step = [&](int step) {
    if (step == 3) rig.controller.MoveSlider(1, 77);
  };
  rig.Press();
  EXPECT_EQ(rig.Frames().size(), kAppliedCommands.size());
  EXPECT_EQ(rig.global.SecondCopy[kVertical].Distortion, 1) << "what was sent";
  rig.controller.ReleaseSlider();
  EXPECT_EQ(rig.Frames(), rig.WhatApplySends());
}

TEST(Following, AFailureIsToldOnceUntilSomethingElseHappens) {
  FollowingRig rig;
  const std::string no_connection = rig.ErrorText(kMsgConnectionFailed, kOpenConnect);
  const auto fail = [&](bool fails, const auto& act) {
    rig.library.calls.clear();
    rig.library.results.clear();
    if (fails) rig.library.results[0] = kOpenConnect;
    rig.display.messages.clear();
    act();
    return rig.display.Texts();
  };
  const auto press = [&] { rig.Press(); };
  EXPECT_EQ(fail(true, press), Texts{no_connection});
  EXPECT_FALSE(rig.controller.Status().retry);
  EXPECT_EQ(fail(true, press), Texts{});
  EXPECT_EQ(rig.Status(), (Texts{"not known", no_connection}));
  EXPECT_TRUE(rig.controller.Status().retry);
  EXPECT_EQ(fail(true, [&] { rig.controller.Apply(); }), Texts{no_connection});
  EXPECT_EQ(fail(false, press), Texts{});
  EXPECT_EQ(rig.Status(), (Texts{"shows this correction, not kept yet", ""}));
  EXPECT_EQ(fail(true, press), Texts{no_connection}) << "news again";
}

// The commands of Apply behind the probe: the number of the call that sends each.
std::size_t CallOf(int command) {
  return 4 + 3 * static_cast<std::size_t>(command);
}

TEST(Following, AClearedProjectorIsOfferedTheCorrectionAgain) {
  for (const int command : {1, 2, 3, 7}) {
    SCOPED_TRACE(command);
    FollowingRig rig;
    rig.library.results[CallOf(command)] = kBeamlinkNoResponse;
    rig.display.answers = {static_cast<MessageAnswer>(kSendAgainPressed)};
    rig.V().Distortion = 9;
    rig.controller.Apply();
    const bool cleared = command > 1;
    EXPECT_EQ(rig.display.choices, cleared ? (Texts{"&Send again", "&Close"}) : Texts{"OK"});
    EXPECT_EQ(rig.Status()[0], cleared ? "shows this correction, not kept yet" : "not known");
    const Texts frames = rig.Frames(), last = rig.WhatApplySends();
    const auto before = static_cast<std::size_t>(command) + 1;
    EXPECT_EQ(frames.size(), before + (cleared ? last.size() : 0));
  }
}

TEST(Following, CancelEndsBeforeTheNextStepAndWithoutABox) {
  for (const int step : {0, 1, 2, 5, 7}) {
    SCOPED_TRACE(step);
    FollowingRig rig;
    rig.controller.Apply();
    rig.library.calls.clear();
    rig.busy.shown_steps.clear();
    rig.busy.on_step = [&](int shown) { rig.busy.cancelled = shown == step; };
    rig.V().Distortion = 9;
    rig.controller.Apply();
    EXPECT_EQ(rig.library.calls.back(), "close");
    EXPECT_EQ(rig.busy.shown_steps.back(), std::to_string(step) + "/7");
    EXPECT_EQ(rig.Frames().size(), static_cast<std::size_t>(step));
    EXPECT_TRUE(rig.display.messages.empty());
    const char* shown = step > 1 ? "not known" : "shows an older one, not kept yet";
    EXPECT_EQ(rig.Status(), (Texts{shown, "Stopped"}));
  }
}

TEST(Following, StoreAsksWhatToKeepWhereTheProjectorKeepsWhatItShows) {
  const Texts store{"0085 00", "01DF 12", "01DE 01"}, block{"0085 00", "01FC 00", "01DE 01"};
  const auto behind = [](Texts first, const Texts& rest) {
    first.insert(first.end(), rest.begin(), rest.end());
    return first;
  };
  const Texts asked{"01DF ", "0085 00"}, probed{"01DF "};
  // answer: 3 when nothing is asked; shown: afterwards
  const std::tuple<const char*, std::uint8_t, bool, int, Texts, std::string> rows[] = {
      {"shown already", 5, true, 3, behind(probed, store), "shows this correction, kept"},
      {"send it", 5, false, 0, behind(behind(asked, kAppliedCommands), store),
       "shows this correction, kept"},
      {"as it is", 5, false, 1, behind(behind(asked, probed), store), "not known, kept"},
      {"cancel", 5, false, 2, asked, "not known"},
      {"given with the order", 4, false, 3, behind(probed, block), "shows this correction, kept"},
  };
  for (const auto& [name, model_class, shown, answer, commands, status] : rows) {
    SCOPED_TRACE(name);
    FollowingRig rig;
    rig.library.model_class = model_class;
    rig.V().Distortion = 30;
    if (shown) rig.controller.Apply();
    rig.library.calls.clear();
    if (answer < 3) rig.display.answers = {static_cast<MessageAnswer>(answer)};
    rig.controller.Store();
    EXPECT_EQ(rig.Commands(), commands);
    EXPECT_EQ(rig.Status()[0], status);
    EXPECT_EQ(rig.display.messages.size(), answer < 3 ? 1U : 0U);
  }
}

TEST(Following, StatusSaysWhatIsKnown) {
  FollowingRig rig;
  Settings& settings = rig.global.Settings;
  rig.V().Distortion = 30;
  EXPECT_EQ(rig.Status()[0], "not known");
  rig.controller.Apply();
  rig.controller.Store();
  rig.controller.Apply();
  EXPECT_EQ(rig.Status()[0], "shows this correction, kept") << "the same once more";
  rig.V().Distortion = 31;
  EXPECT_EQ(rig.Status()[0], "shows an older one, kept");
  rig.controller.Initialize();
  EXPECT_EQ(rig.Status()[0], "shows none, not kept yet");
  rig.global.Registers = BuildRegisters(rig.global.Correction, rig.global.Panel);
  rig.commands.SendRegisters();
  EXPECT_EQ(rig.Status()[0], "shows registers from a file, not kept yet");
  rig.controller.ConnectionChanged();
  EXPECT_EQ(rig.Status()[0], "not known");

  EXPECT_EQ(rig.controller.Status().link, "LAN 192.168.10.10");
  settings.LANPort = "7143";
  EXPECT_EQ(rig.controller.Status().link, "LAN 192.168.10.10:7143");
  settings.ConnectDevice = kSerial;
  EXPECT_EQ(rig.controller.Status().link, "COM1 38400");
  settings.ConnectDevice = kUsb;
  EXPECT_EQ(rig.controller.Status().link, "USB1");
  EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0");
  rig.link.ExpectSimulators(true);
  EXPECT_EQ(rig.controller.Status().link, "USB1 (simulator)");
  EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0 (simulator)");
  settings.DemoMode = 1;
  EXPECT_EQ(rig.controller.Status(), (StatusLine{"nothing is sent", "", "", "", false}));
}

}  // namespace
}  // namespace warpline
