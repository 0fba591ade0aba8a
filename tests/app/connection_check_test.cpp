#include "app/connection_check.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/check_texts.h"
#include "app/link_trial.h"
#include "tests/support/engine_rig.h"

namespace warpline {
namespace {

std::vector<TrialStep> EndsIn(const std::string& text) {
  std::istringstream stream(text);
  std::vector<TrialStep> ends;
  for (std::string line; std::getline(stream, line);) {
    const auto taken = TrialLineOf(line);
    EXPECT_TRUE(taken) << line;
    if (taken && taken->event == TrialEvent::kEnd) ends.push_back(taken->step);
  }
  return ends;
}

// The steps with "!" and the code behind one that failed, "?" behind a note.
std::string Summary(const std::vector<TrialStep>& steps) {
  std::string text;
  for (const TrialStep& step : steps) {
    text.append(text.empty() ? "" : " ").append(step.step);
    if (step.state == CheckState::kNote) text += '?';
    if (step.state == CheckState::kFailed) text.append("!").append(std::to_string(step.code));
  }
  return text;
}

TEST(LinkTrial, AsksOnlyAndStopsWhereTheRestIsPointless) {
  const Frame off{0x21, 0xDF, 0, 0, 2, 3, 0, 5};
  struct Case {
    const char* found;
    std::map<std::size_t, std::int32_t> results;
    std::map<std::size_t, Frame> replies;
  };
  const Case cases[] = {
      {"open running probe class panel mode close", {}, {}},
      {"open!-8", {{0, -8}}, {}},
      {"open running!-4 close", {{1, -4}}, {}},
      {"open running!-3 close", {{2, -3}}, {}},
      {"open running probe!3 close", {}, {{4, off}}},
      {"open running probe class!-5 panel mode close", {{7, -5}}, {}},
      {"open running probe class panel!-4 close", {{9, -4}}, {}},
      {"open running probe class? panel? mode!-6 close!-1",
       {{7, -3}, {9, -20}, {12, -6}, {13, -1}},
       {}},
  };
  for (const Case& row : cases) {
    EngineRig rig;
    rig.library.results = row.results;
    rig.library.replies = row.replies;
    std::ostringstream out;
    TryLink([&] { return rig.library.Functions(); }, {}, {}, out);
    EXPECT_EQ(Summary(EndsIn(out.str())), row.found);
    for (const std::string& call : rig.library.calls) {
      EXPECT_FALSE(call.starts_with("input") || call.starts_with("send 01DF000002")) << call;
    }
  }
}

TEST(TrialLines, OtherLinesAreNone) {
  const TrialStep step{"open", CheckState::kFailed, 12, 1, -8, "two\nlines"};
  std::string line = EndLine(step);
  line.pop_back();
  EXPECT_EQ(line, "end\topen\tfailed\t12\t1\t-8\ttwo lines");
  for (const char* text :
       {"", "open", "end\topen", "end\topen\tbad\t1\t1\t1\t", "end\ta\tgood\t1x\t1\t1\t"}) {
    EXPECT_FALSE(TrialLineOf(text)) << text;
  }
}

struct CheckRig : EngineRig {
  // What a process says about a library or the link, and how it ends then.
  struct Script {
    std::string lines;
    TrialOutcome outcome{};
  };

  CheckVerdict Check() {
    return ConnectionCheck({global, temp.Path(),
                            [this](const std::vector<std::string>& words, const auto& take) {
                              const Script& script =
                                  scripts[words[1] == "link" ? "link" : words[2]];
                              std::istringstream stream(script.lines);
                              for (std::string line; std::getline(stream, line);) take(line);
                              return script.outcome;
                            },
                            engine.recording, [this](const CheckRow& row) { rows.push_back(row); }})
        .Run();
  }

  std::map<std::string, Script> scripts;
  std::vector<CheckRow> rows;
};

TEST(ConnectionCheck, NamesTheCauseAndTheNextStep) {
  const CheckRig::Script good{"begin\topen\nend\topen\tgood\t1\t-1\t0\t\n"};
  const CheckRig::Script lacks{"end\tBeamlink.PJSetInput\tfailed\t0\t-1\t0\t\n"};
  const CheckRig::Script narrow{"end\tBeamlink.kind\tfailed\t0\t-1\t0\t32 64\n"};
  const CheckRig::Script no_search{"end\tBeamseek2.file\tfailed\t0\t-1\t0\t/there\n"};
  const CheckRig::Script crash{"begin\topen\n", {TrialEnd::kCrashed, 11}};
  const CheckRig::Script exits{"begin\topen\n", {TrialEnd::kDone, 3}};
  const CheckRig::Script crash_behind{"", {TrialEnd::kCrashed, 11}};
  const CheckRig::Script hung{"begin\tBeamlink.load\n", {TrialEnd::kHung}};
  const CheckRig::Script refused{"begin\topen\nend\topen\tfailed\t1\t1\t-8\t\n"};
  const CheckRig::Script standby{
      "end\trunning\tnote\t1\t-1\t0\t0\nend\tprobe\tfailed\t1\t0\t3\t\n"};
  const std::tuple<std::map<std::string, CheckRig::Script>, const char*, const char*> cases[] = {
      {{{"link", good}}, "Everything works. ", ""},
      {{{"Beamlink", lacks}, {"link", crash}},
       "Beamlink: PJSetInput: This entry point is missing.",
       "Try another version"},
      {{{"Beamlink", narrow}}, "Beamlink: kind: The library is 32-bit", "Take the library"},
      {{{"Beamlink", hung}}, "Beamlink: loading: The library did not come back", "Try another"},
      {{{"Beamseek2", no_search}, {"link", good}}, "Beamseek2: file: not there: /there", "Copy"},
      {{{"Beamseek2", no_search}, {"link", refused}},
       "Open: Failure in the connection.",
       "Check address"},
      {{{"link", crash}}, "Open: The library crashed here (11).", "Try another version"},
      {{{"link", exits}}, "Open: The library crashed here (3).", "Try another version"},
      {{{"Beamseek2", crash_behind}, {"link", refused}},
       "Open: Failure in the connection.",
       "Check address"},
      {{{"link", standby}},
       "Probe: Cannot send. Switch on the power of the projector.",
       "Switch the projector on"},
  };
  for (const auto& [scripts, text, advice] : cases) {
    SCOPED_TRACE(text);
    CheckRig rig;
    rig.scripts = scripts;
    const CheckVerdict verdict = rig.Check();
    EXPECT_TRUE(verdict.text.starts_with(text)) << verdict.text;
    EXPECT_TRUE(verdict.advice.starts_with(advice)) << verdict.advice;
    EXPECT_EQ(verdict.good, verdict.advice.empty());
    EXPECT_TRUE(
        CheckText(rig.global, rig.rows, verdict).ends_with(VerdictText(rig.global, verdict)));
  }
}

TEST(ConnectionCheck, SendsNothingInDemoModeAndRecordsWhatItAsks) {
  CheckRig rig;
  rig.scripts["link"] = {"record\tfirst\nrecord\tsecond\n"};
  ASSERT_TRUE(rig.engine.recording.Begin(rig.temp / "record.txt", false));
  rig.global.Settings.DemoMode = 1;
  EXPECT_EQ(rig.Check().text, "Connection: Demo mode is on: nothing is sent.");
  rig.global.Settings.DemoMode = 0;
  EXPECT_TRUE(rig.Check().good);
  EXPECT_TRUE(TempFolder::Read(rig.temp / "record.txt").ends_with("3.0\nfirst\nsecond\n"));
}

}  // namespace
}  // namespace warpline
