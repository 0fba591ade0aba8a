#include "app/projector_commands.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/registers.h"
#include "tests/support/engine_rig.h"

namespace warpline {
namespace {

using Calls = Texts;

struct CommandsRig : EngineRig {
  CommandsRig() {
    global.Correction.Axes[kHorizontal].Distortion = 20;
    global.Correction.Axes[kVertical].Stadium = 1;
    global.Registers = BuildRegisters(global.Correction, {16, 12});
  }
};

struct Sequence {
  const char* name;
  std::uint8_t model_class;
  bool (*run)(ProjectorCommands& commands);
  Calls heads;  // the frames behind the probe, at most their first seven bytes
  Calls rest;   // the calls between the last frame and closing
};

const std::vector<Sequence>& Sequences() {
  using C = ProjectorCommands;
  static const Calls show{"021A0000020201", "01DF0000020000", "01DF0000120200", "01DF0000140300",
                          "01DF0000051000", "01DF0000051100", "01DF0000020100"};
  static const Calls store{"00850000010086", "01DF0000021200", "01DE0000020100"};
  static const Calls block{"00850000010086", "01FC00061D0060", "01DE0000020100"};
  static const Calls clear{"021A0000020201", "01DF0000020000", "01DF0000020100"};
  static const Calls mode{"01DE0000020200"}, query{"01DE0000020100"};
  static const Calls switch_input{"timeout 3000", "status", "input 7"};
  static const std::vector<Sequence> rows{
      {"Apply", 5, [](C& c) { return c.Apply(); }, show, {}},
      {"Store, class 5", 5, [](C& c) { return c.Store(); }, store, {}},
      {"Store, class 4", 4, [](C& c) { return c.Store(); }, block, {}},
      {"Initialize", 5, [](C& c) { return c.Initialize(); }, clear, {}},
      {"SendRegisters", 5, [](C& c) { return c.SendRegisters(); }, show, {}},
      {"SetMode", 5, [](C& c) { return c.SetMode(2); }, mode, switch_input},
      {"ReadMode", 5, [](C& c) { return c.ReadMode().has_value(); }, query, {}},
  };
  return rows;
}

// The calls of a sequence that goes well, frames cut to their first seven bytes.
Calls ExpectedCalls(const Sequence& sequence) {
  Calls calls{"open 1 '192.168.10.10' '7142' 1", "timeout 3000", "running", "panel",
              "send 01DF000000E0"};
  for (const std::string& head : sequence.heads) {
    const bool block = head.starts_with("01FC");
    calls.insert(calls.end(),
                 {block ? "timeout 10000" : "timeout 3000", "running", "send " + head});
  }
  calls.insert(calls.end(), sequence.rest.begin(), sequence.rest.end());
  calls.push_back("close");
  return calls;
}

Calls GoodCalls(const Sequence& sequence) {
  CommandsRig rig;
  rig.library.model_class = sequence.model_class;
  EXPECT_TRUE(sequence.run(rig.commands)) << sequence.name;
  EXPECT_TRUE(rig.display.messages.empty()) << sequence.name;
  EXPECT_EQ(rig.busy.depth, 0) << sequence.name;
  EXPECT_GE(rig.busy.begins, 1) << sequence.name;
  return rig.library.calls;
}

TEST(ProjectorCommands, EachSequenceMakesItsCallsInOrder) {
  for (const Sequence& sequence : Sequences()) {
    Calls calls = GoodCalls(sequence);
    for (std::string& call : calls) {
      if (call.starts_with("send ")) call.resize(std::min<std::size_t>(call.size(), 19));
    }
    EXPECT_EQ(calls, ExpectedCalls(sequence)) << sequence.name;
  }
}

// A result of the library, and the message for it.
using Failures = std::vector<std::pair<std::int32_t, int>>;

// By how a call begins.
const Failures& FailuresOf(const std::string& call) {
  static const Failures open{{-1, 128}, {-2, 120}, {-3, 121}, {-4, 122},  {-5, 123}, {-6, 124},
                             {-7, 125}, {-8, 126}, {-9, 127}, {-99, 133}, {-10, 128}};
  static const Failures close{{-1, 134}, {-2, 135}, {-3, 136}, {1, 136}};
  static const Failures time_out{{-1, 140}, {-2, 140}, {-5, 140}, {-99, 140}};
  static const Failures exchange{{-1, 137}, {-2, 138}, {-3, 139},  {-4, 140},
                                 {-5, 141}, {-6, 142}, {-99, 142}, {1, 142}};
  if (call.starts_with("open")) return open;
  if (call.starts_with("close")) return close;
  return call.starts_with("timeout") ? time_out : exchange;
}

// Spoils one call of a sequence: what happens must be the good calls up to that one, then nothing
// but closing, with one box.
void ExpectStopped(const Sequence& sequence, const Calls& good, std::size_t failing,
                   const std::function<void(FakeBeamlink&)>& spoil, int number, int code) {
  SCOPED_TRACE(std::string(sequence.name) + ", " + good[failing] + ", " + std::to_string(code));
  CommandsRig rig;
  rig.library.model_class = sequence.model_class;
  spoil(rig.library);
  EXPECT_FALSE(sequence.run(rig.commands));
  Calls expected(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(failing) + 1);
  if (failing > 0 && failing + 1 < good.size()) expected.push_back("close");
  EXPECT_EQ(rig.library.calls, expected);
  const RecordedMessage box{"Warpline Tool 3.0", rig.ErrorText(number, code),
                            MessageIcon::kCritical};
  EXPECT_EQ(rig.display.messages, std::vector{box});
  EXPECT_FALSE(rig.link.IsOpen());
  EXPECT_EQ(rig.busy.depth, 0);
}

TEST(ProjectorCommands, EachFailureOfEachCallStopsWithItsMessage) {
  for (const Sequence& sequence : Sequences()) {
    const Calls good = GoodCalls(sequence);
    for (std::size_t failing = 0; failing < good.size(); ++failing) {
      for (const auto& failure : FailuresOf(good[failing])) {
        const auto spoil = [&](FakeBeamlink& library) { library.results[failing] = failure.first; };
        // A projector that does not know the model-class query keeps silent.
        const bool unknown_model = good[failing] == "send 00850000010086" && failure.first == -3;
        ExpectStopped(sequence, good, failing, spoil, unknown_model ? 74 : failure.second,
                      unknown_model ? 1 : failure.first);
      }
    }
  }
}

struct ReplyRow {
  Frame reply;
  int code, number;              // of the box that a data command shows
  int probe_code, probe_number;  // of the box that the probe shows
};

TEST(ProjectorCommands, EachBadReplyStopsWithItsMessage) {
  const ReplyRow kReplies[] = {
      {{}, -5, 141, -5, 141},
      {{1, 2, 3, 4, 5}, -5, 141, -5, 141},
      {{0x21, 0xDF, 0, 0, 1, 0}, -5, 141, -5, 141},
      {{0x21, 0xDF, 0, 0, 1, 1, 0}, 2, 142, 1, 74},
      {{0x21, 0xDF, 0, 0, 1, 2, 0}, 2, 142, 2, 142},
      {{0x21, 0xDF, 0, 0, 1, 3, 0}, 2, 142, 3, 75},
      {{0x21, 0xDF, 0, 0, 1, 255, 0}, 2, 142, 255, 142},
  };
  for (const Sequence& sequence : Sequences()) {
    const Calls good = GoodCalls(sequence);
    for (std::size_t failing = 0; failing < good.size(); ++failing) {
      const std::string& call = good[failing];
      if (!call.starts_with("send ") || call == "send 00850000010086") continue;
      const bool probe = call == "send 01DF000000E0";
      for (const ReplyRow& row : kReplies) {
        const auto spoil = [&](FakeBeamlink& library) { library.replies[failing] = row.reply; };
        ExpectStopped(sequence, good, failing, spoil, probe ? row.probe_number : row.number,
                      probe ? row.probe_code : row.code);
      }
    }
  }
}

TEST(ProjectorCommands, ReportIsAskedAndChangesNothing) {
  const Sequence report{"AskReport", 4, {}, {"00850000010086", "01DE0000020100"}, {}};
  for (const int result : {0, -3}) {  // one that does not know the question keeps silent
    CommandsRig rig;
    rig.library.model_class = 4;
    rig.library.results[7] = result;
    const auto told = rig.commands.AskReport();
    ASSERT_TRUE(told);
    EXPECT_EQ(told->panel, rig.global.Panel);
    EXPECT_EQ(told->model_class, result == 0 ? 4 : 0);
    Calls calls = rig.library.calls;
    for (std::string& call : calls) {
      if (call.starts_with("send ")) call.resize(std::min<std::size_t>(call.size(), 19));
    }
    EXPECT_EQ(calls, ExpectedCalls(report));
  }
  CommandsRig rig;
  rig.global.Settings.DemoMode = 1;
  EXPECT_FALSE(rig.commands.AskReport());
  EXPECT_TRUE(rig.library.calls.empty());
}

TEST(ProjectorCommands, MissingLibraryIsSaidOnceAndNotMissedInDemoMode) {
  for (const Sequence& sequence : Sequences()) {
    for (const std::int16_t demo : {std::int16_t{0}, std::int16_t{1}}) {
      CommandsRig rig;
      rig.global.Settings.DemoMode = demo;
      rig.library_there = false;
      EXPECT_EQ(sequence.run(rig.commands), demo == 1) << sequence.name;
      const Calls said = demo == 1 ? Calls{} : Calls{TextOf(rig.global, 85)};
      EXPECT_EQ(rig.display.Texts(), said) << sequence.name;
      EXPECT_TRUE(rig.library.calls.empty()) << sequence.name;
      EXPECT_EQ(rig.busy.depth, 0) << sequence.name;
    }
  }
}

TEST(ProjectorCommands, ParametersFollowWhateverTheProjectorSays) {
  for (const int failing : {-1, 0, 4}) {  // none, opening, the probe
    CommandsRig rig;
    if (failing >= 0) rig.library.results[static_cast<std::size_t>(failing)] = -5;
    const CorrectionData before = rig.global.Correction;
    EXPECT_EQ(rig.commands.Apply(), failing < 0);
    EXPECT_EQ(rig.global.SecondCopy, before.Axes);
    EXPECT_EQ(rig.global.Correction, before);

    rig.global.Correction.Projection = {1, 0};
    CorrectionData reset = rig.global.Correction;
    reset.Axes = {ResetAxisParameters(1), ResetAxisParameters(0)};
    rig.commands.Initialize();
    EXPECT_EQ(rig.global.Correction, reset);
    EXPECT_EQ(rig.global.SecondCopy, reset.Axes);
  }
}

TEST(ProjectorCommands, ModeIsRecordedWhenTheProjectorTookIt) {
  const auto mode_after = [](const Sequence& sequence, const char* failing_call) {
    CommandsRig rig;
    rig.global.ProjectorMode = 7;
    const Calls good = GoodCalls(sequence);
    for (std::size_t i = 0; i < good.size(); ++i) {
      if (good[i] == failing_call) rig.library.results[i] = -5;
    }
    sequence.run(rig.commands);
    return rig.global.ProjectorMode;
  };
  const Sequence& store = Sequences()[1];
  const Sequence& set_mode = Sequences()[5];
  EXPECT_EQ(mode_after(store, ""), 1);
  EXPECT_EQ(mode_after(store, "send 01DE0000020100E2"), 7);
  EXPECT_EQ(mode_after(store, "send 01DF0000021200F4"), 7);
  EXPECT_EQ(mode_after(set_mode, ""), 2);
  EXPECT_EQ(mode_after(set_mode, "send 01DE0000020200E3"), 7);
  EXPECT_EQ(mode_after(set_mode, "status"), 2);

  CommandsRig rig;
  for (const auto told : {std::uint8_t{2}, std::uint8_t{255}}) {
    rig.library.mode = told;
    EXPECT_EQ(rig.commands.ReadMode(), 0);
    EXPECT_EQ(rig.global.ProjectorMode, 0);
    EXPECT_TRUE(rig.global.OtherModeTold);
  }
  rig.library.mode = 1;
  EXPECT_EQ(rig.commands.ReadMode(), 1);
  EXPECT_FALSE(rig.global.OtherModeTold);
  EXPECT_EQ(rig.global.ProjectorMode, 1);
  rig.library.results[rig.library.calls.size()] = kOpenConnect;
  EXPECT_EQ(rig.commands.ReadMode(), std::nullopt);
  EXPECT_EQ(rig.global.ProjectorMode, 1);
}

TEST(ProjectorCommands, FaultsCloseTheLinkAndAreReported) {
  constexpr std::pair<PJPcViewerInformation, const char*> kCases[] = {
      {{1024, 2050}, "[2] "},  // more lines than a profile has
      {{0, 0}, "[2] "},       {{-1024, -768}, "[2] "}, {{1, 1}, "[3] "}, {{99999, 99999}, "[2] "},
  };
  for (const auto& [panel, code] : kCases) {
    SCOPED_TRACE(panel.PanelHeight);
    for (const auto run : {&ProjectorCommands::Apply, &ProjectorCommands::Store}) {
      CommandsRig rig;
      rig.library.panel = panel;
      EXPECT_FALSE((rig.commands.*run)());
      EXPECT_EQ(rig.display.Texts(), Calls{code + TextOf(rig.global, 80)});
      EXPECT_EQ(rig.library.calls.size(), 6u);
      EXPECT_EQ(rig.library.calls.back(), "close");
      EXPECT_EQ(rig.global.SecondCopy, rig.global.Correction.Axes);
      EXPECT_EQ(rig.busy.depth, 0);
    }
  }
}

TEST(ProjectorCommands, IncompleteRegisterTextsAreNotSent) {
  const std::string length = "The length of parameter is not correct.";
  const std::tuple<const char*, PJPcViewerInformation, std::size_t, std::string> rows[] = {
      {"00", {16, 12}, 0, length},
      {"0000", {24, 18}, 6, length},
      {"00G0", {16, 12}, 15, "[3] Wrong value."},
  };
  for (const auto& [scroll, panel, calls, message] : rows) {
    CommandsRig rig;
    rig.global.Registers[kVertical][kScroll] = scroll;
    rig.library.panel = panel;
    EXPECT_FALSE(rig.commands.SendRegisters()) << scroll;
    EXPECT_EQ(rig.display.Texts(), Calls{message});
    ASSERT_EQ(rig.library.calls.size(), calls) << scroll;
    EXPECT_TRUE(calls == 0 || rig.library.calls.back() == "close") << scroll;
  }
}

}  // namespace
}  // namespace warpline
