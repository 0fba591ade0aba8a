#include "app/projector_commands.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/registers.h"
#include "tests/support/link_rig.h"

namespace warpline {
namespace {

using Calls = std::vector<std::string>;

struct Rig : LinkRig {
  Rig() {
    global.Correction.Axes[kHorizontal].Distortion = 20;
    global.Correction.Axes[kVertical].Stadium = 1;
    global.Registers = BuildRegisters(global.Correction, {16, 12});
  }
  ProjectorCommands commands{global, link, messages, busy};
};

struct Sequence {
  const char* name;
  std::uint8_t model_class;
  bool (*run)(ProjectorCommands& commands);
  Calls heads;  // the frames behind the probe, at most their first seven bytes
  Calls rest;   // the calls between the last frame and closing
};

const std::vector<Sequence>& Sequences() {
  static const Calls kShow{"021A0000020201", "01DF0000020000", "01DF0000120200", "01DF0000140300",
                           "01DF0000051000", "01DF0000051100", "01DF0000020100"};
  static const Calls kStoreFrames{"00850000010086", "01DF0000021200", "01DE0000020100"};
  static const Calls kBlockFrames{"00850000010086", "01FC00061D0060", "01DE0000020100"};
  static const std::vector<Sequence> rows{
      {"Apply", 5, [](ProjectorCommands& c) { return c.Apply(); }, kShow, {}},
      {"Store, class 5", 5, [](ProjectorCommands& c) { return c.Store(); }, kStoreFrames, {}},
      {"Store, class 4", 4, [](ProjectorCommands& c) { return c.Store(); }, kBlockFrames, {}},
      {"Initialize",
       5,
       [](ProjectorCommands& c) { return c.Initialize(); },
       {"021A0000020201", "01DF0000020000", "01DF0000020100"},
       {}},
      {"SendRegisters", 5, [](ProjectorCommands& c) { return c.SendRegisters(); }, kShow, {}},
      {"SetMode",
       5,
       [](ProjectorCommands& c) { return c.SetMode(2); },
       {"01DE0000020200"},
       {"timeout 3000", "status", "input 7"}},
      {"ReadMode",
       5,
       [](ProjectorCommands& c) { return c.ReadMode().has_value(); },
       {"01DE0000020100"},
       {}},
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
  Rig rig;
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

struct Failure {
  std::int32_t code;
  int number;
};

struct OperationRow {
  const char* call;  // how its calls begin
  std::vector<Failure> failures;
};

const std::vector<OperationRow>& Operations() {
  static const std::vector<Failure> kExchangeFailures{{-1, 137}, {-2, 138}, {-3, 139},  {-4, 140},
                                                      {-5, 141}, {-6, 142}, {-99, 142}, {1, 142}};
  static const std::vector<OperationRow> rows{
      {"open",
       {{-1, 128},
        {-2, 120},
        {-3, 121},
        {-4, 122},
        {-5, 123},
        {-6, 124},
        {-7, 125},
        {-8, 126},
        {-9, 127},
        {-99, 133},
        {-10, 128}}},
      {"close", {{-1, 134}, {-2, 135}, {-3, 136}, {1, 136}}},
      {"timeout", {{-1, 140}, {-2, 140}, {-5, 140}, {-99, 140}}},
      {"running", kExchangeFailures},
      {"panel", kExchangeFailures},
      {"status", kExchangeFailures},
      {"input", kExchangeFailures},
      {"send", kExchangeFailures},
  };
  return rows;
}

const std::vector<Failure>& FailuresOf(const std::string& call) {
  const auto row =
      std::find_if(Operations().begin(), Operations().end(),
                   [&](const OperationRow& each) { return call.starts_with(each.call); });
  return row->failures;
}

// What happened must be the good calls up to the failing one, then nothing but closing, with one
// box.
void ExpectStopped(const Rig& rig, const Calls& good, std::size_t failing, const std::string& box) {
  Calls expected(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(failing) + 1);
  if (failing > 0 && failing + 1 < good.size()) expected.push_back("close");
  EXPECT_EQ(rig.library.calls, expected);
  EXPECT_EQ(rig.display.Texts(), Calls{box});
  for (const RecordedMessage& message : rig.display.messages) {
    EXPECT_EQ(message.icon, MessageIcon::kCritical);
  }
  EXPECT_FALSE(rig.link.IsOpen());
  EXPECT_EQ(rig.busy.depth, 0);
}

TEST(ProjectorCommands, EachFailureOfEachCallStopsWithItsMessage) {
  for (const Sequence& sequence : Sequences()) {
    const Calls good = GoodCalls(sequence);
    for (std::size_t failing = 0; failing < good.size(); ++failing) {
      for (const Failure& failure : FailuresOf(good[failing])) {
        SCOPED_TRACE(std::string(sequence.name) + ", call " + std::to_string(failing) + " (" +
                     good[failing].substr(0, 19) + ") gives " + std::to_string(failure.code));
        Rig rig;
        rig.library.model_class = sequence.model_class;
        rig.library.results[failing] = failure.code;
        EXPECT_FALSE(sequence.run(rig.commands));
        // A projector that does not know the model-class query keeps silent.
        const bool unknown_model = good[failing] == "send 00850000010086" && failure.code == -3;
        ExpectStopped(
            rig, good, failing,
            unknown_model ? rig.ErrorText(74, 1) : rig.ErrorText(failure.number, failure.code));
      }
    }
  }
}

struct ReplyRow {
  const char* name;
  Frame reply;
  int code;          // of the box that a data command shows
  int number;        // the same
  int probe_code;    // of the box that the probe shows
  int probe_number;  // the same
};

TEST(ProjectorCommands, EachBadReplyStopsWithItsMessage) {
  const ReplyRow kReplies[] = {
      {"empty", {}, -5, 141, -5, 141},
      {"one byte short", {1, 2, 3, 4, 5}, -5, 141, -5, 141},
      {"error 1", {0x21, 0xDF, 0, 0, 1, 1}, 2, 142, 1, 74},
      {"error 2", {0x21, 0xDF, 0, 0, 1, 2}, 2, 142, 2, 142},
      {"error 3", {0x21, 0xDF, 0, 0, 1, 3}, 2, 142, 3, 75},
      {"error 255", {0x21, 0xDF, 0, 0, 1, 255}, 2, 142, 255, 142},
  };
  for (const Sequence& sequence : Sequences()) {
    const Calls good = GoodCalls(sequence);
    for (std::size_t failing = 0; failing < good.size(); ++failing) {
      const std::string& call = good[failing];
      const bool has_no_error_byte =
          call == "send 00850000010086" || call == "send 01DE0000020100E2";
      if (!call.starts_with("send ") || has_no_error_byte) continue;
      for (const ReplyRow& row : kReplies) {
        SCOPED_TRACE(std::string(sequence.name) + ", " + call.substr(0, 19) + ", " + row.name);
        Rig rig;
        rig.library.model_class = sequence.model_class;
        rig.library.replies[failing] = row.reply;
        EXPECT_FALSE(sequence.run(rig.commands));
        const bool probe = call == "send 01DF000000E0";
        ExpectStopped(rig, good, failing,
                      probe ? rig.ErrorText(row.probe_number, row.probe_code)
                            : rig.ErrorText(row.number, row.code));
      }
    }
  }
}

TEST(ProjectorCommands, MissingLibraryIsSaidOnce) {
  for (const Sequence& sequence : Sequences()) {
    Rig rig;
    rig.library_there = false;
    EXPECT_FALSE(sequence.run(rig.commands)) << sequence.name;
    EXPECT_EQ(rig.display.Texts(), Calls{TextOf(rig.global, 85)}) << sequence.name;
    EXPECT_TRUE(rig.library.calls.empty()) << sequence.name;
    EXPECT_EQ(rig.busy.depth, 0) << sequence.name;
  }
}

TEST(ProjectorCommands, DemoModeOpensNothing) {
  for (const Sequence& sequence : Sequences()) {
    Rig rig;
    rig.global.Settings.DemoMode = 1;
    rig.library_there = false;
    EXPECT_TRUE(sequence.run(rig.commands)) << sequence.name;
    EXPECT_TRUE(rig.display.messages.empty()) << sequence.name;
  }
}

TEST(ProjectorCommands, ParametersFollowWhateverTheProjectorSays) {
  for (const int failing : {-1, 0, 4}) {  // none, opening, the probe
    Rig rig;
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
    Rig rig;
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

  Rig rig;
  rig.library.mode = 1;
  EXPECT_EQ(rig.commands.ReadMode(), 1);
  EXPECT_EQ(rig.global.ProjectorMode, 1);
  rig.library.results[rig.library.calls.size()] = kOpenConnect;
  EXPECT_EQ(rig.commands.ReadMode(), std::nullopt);
  EXPECT_EQ(rig.global.ProjectorMode, 1);
}

TEST(ProjectorCommands, FaultsCloseTheLinkAndAreReported) {
  struct Case {
    const char* name;
    PJPcViewerInformation panel;
    const char* code;
  };
  constexpr Case kCases[] = {
      {"more lines than a profile has", {1024, 2050}, "[2] "},
      {"no panel", {0, 0}, "[2] "},
      {"negative panel", {-1024, -768}, "[2] "},
      {"one pixel", {1, 1}, "[3] "},
      {"width beyond its 16 bits", {99999, 99999}, "[2] "},
  };
  for (const Case& each : kCases) {
    for (const auto run : {&ProjectorCommands::Apply, &ProjectorCommands::Store}) {
      Rig rig;
      rig.library.panel = each.panel;
      EXPECT_FALSE((rig.commands.*run)()) << each.name;
      EXPECT_EQ(rig.display.Texts(), Calls{each.code + TextOf(rig.global, 80)}) << each.name;
      EXPECT_EQ(rig.library.calls.size(), 6u) << each.name;
      EXPECT_EQ(rig.library.calls.back(), "close") << each.name;
      EXPECT_EQ(rig.global.SecondCopy, rig.global.Correction.Axes) << each.name;
      EXPECT_EQ(rig.busy.depth, 0) << each.name;
    }
  }
}

TEST(ProjectorCommands, RegistersAreBuiltForTheReportedPanel) {
  Rig rig;
  rig.library.panel = {24, 18};
  EXPECT_TRUE(rig.commands.Apply());
  EXPECT_EQ(rig.global.Registers, BuildRegisters(rig.global.Correction, {24, 18}));
}

TEST(ProjectorCommands, IncompleteRegisterTextsAreNotSent) {
  Rig half;
  half.global.Registers[kVertical][kScroll] = "00";
  EXPECT_FALSE(half.commands.SendRegisters());
  EXPECT_TRUE(half.library.calls.empty());
  EXPECT_EQ(half.display.Texts(), Calls{TextOf(half.global, 198)});

  Rig other_panel;
  other_panel.library.panel = {24, 18};
  EXPECT_FALSE(other_panel.commands.SendRegisters());
  EXPECT_EQ(other_panel.library.calls.size(), 6u);
  EXPECT_EQ(other_panel.library.calls.back(), "close");
  EXPECT_EQ(other_panel.display.Texts(), Calls{TextOf(other_panel.global, 198)});

  Rig no_character;
  no_character.global.Registers[kVertical][kScroll] = "00G0";
  EXPECT_FALSE(no_character.commands.SendRegisters());
  EXPECT_EQ(no_character.library.calls.back(), "close");
  EXPECT_EQ(no_character.display.Texts(), Calls{"[3] " + TextOf(no_character.global, 80)});
}

}  // namespace
}  // namespace warpline
