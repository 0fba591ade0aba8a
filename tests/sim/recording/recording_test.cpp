#include "sim/recording/recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "picture/test_picture.h"
#include "sim/recording/frame_names.h"
#include "sim/recording/replay.h"
#include "sim/station/shown_picture.h"
#include "tests/support/comes_true.h"
#include "tests/support/projector_server.h"
#include "tests/support/sim_hex.h"
#include "tests/support/temp_folder.h"

namespace warpline::sim {
namespace {

const std::string kTitle = std::string(kRecordingTitle) + "\n";

std::vector<RecordedEvent> Parsed(const std::string& text) {
  NamedText reason;
  const auto events = ParseRecording(text, reason);
  EXPECT_TRUE(events) << Said(reason);
  return events.value_or(std::vector<RecordedEvent>());
}

TEST(Recording, ReadsBackWhatItWrote) {
  std::ostringstream out;
  Clock::time_point now{};
  Recorder recorder(out, [&now] { return now; });
  recorder.Opened(2);
  now += milliseconds(7);
  recorder.Opened(3);
  recorder.Request(2, FromHex("01DF0000020100E3"));
  recorder.Request(3, FromHex("FF"));
  now += milliseconds(5);
  recorder.Reply(2, FromHex("01DF0000020100E3"), FromHex("21DF0000010001"));
  recorder.Reply(3, FromHex("FF"), {});
  recorder.Closed(3);
  EXPECT_EQ(out.str(), kTitle +
                           "2\t0\topened\n3\t0\topened\n"
                           "2\t7\trequest\tShow (1)\t01DF0000020100E3\n3\t0\trequest\tUnknown\tFF\n"
                           "2\t12\treply\tShow (1)\t21DF0000010001\n3\t5\tclosed\n");
  const std::vector<RecordedEvent> events = Parsed(out.str());
  ASSERT_EQ(events.size(), 5u);
  EXPECT_EQ(ToHex(events[2].Request), "01DF0000020100E3");
  EXPECT_EQ(ToHex(events[2].Reply), "21DF0000010001");
  EXPECT_EQ(events[2].At, milliseconds(7));
  EXPECT_EQ(events[2].ReplyAfter, milliseconds(5));
  EXPECT_EQ(events[2].Line, 4u);
  EXPECT_EQ(events[3].Reply, Bytes());
  EXPECT_EQ(events[4].Kind, RecordedKind::kClosed);
  EXPECT_EQ(events[4].Link, 3u);
}

TEST(Recording, TellsWhatIsWrongAndWhere) {
  const std::string open = kTitle + "1\t0\topened\n", request = open + "1\t0\trequest\tx\t";
  const std::string closed = open + "1\t0\tclosed\n";
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"line 1: this is not", {"", "[Warpline]\n", std::string(40, '\0')}},
      {"line 2: link, time", {kTitle + "1 0 opened\n"}},
      {"line 3: the event", {open + "1\t0\treq"}},
      {"line 3: link, ", {open + "1\t0\trequest\tShow"}},
      {"line 2: the link needs", {kTitle + "0\t0\topened\n"}},
      {"line 2: the time needs",
       {kTitle + "1\t99999999999999999999\topened\n", kTitle + "1\t-1\topened\n"}},
      {"line 3: the time is less", {kTitle + "1\t5\topened\n1\t4\tclosed\n"}},
      {"line 3: the bytes", {request + "\n", request + "01D\n", request + "cs\n"}},
      {"line 4: the link is not open", {kTitle + "# note\n\n1\t0\trequest\tx\t01\n"}},
      {"line 4: the link is not", {closed + "1\t0\tclosed\n"}},
      {"line 4: the link w", {closed + "1\t0\topened\n"}},
      {"line 3: there is no request", {open + "1\t0\treply\tx\t01\n"}},
      {"line 2: name and bytes", {kTitle + "1\t0\topened\tx\t01\n"}},
      {"line 2: the link is not open", {kTitle + "1\t0\tcall\tPJGetStatus\t0\t0.1\t\n"}},
      {"line 3: the result", {open + "1\t0\tcall\tPJGetStatus\t0x\t0.1\t\n"}},
      {"line 3: there is no request", {open + "1\t0\tcall\tPJAnyCommand\t0\t0.1\t\n"}}};
  for (const auto& [said, texts] : cases) {
    for (const std::string& text : texts) {
      NamedText reason;
      EXPECT_FALSE(ParseRecording(text, reason)) << text;
      EXPECT_TRUE(Said(reason).starts_with(said)) << text << Said(reason);
    }
  }
  EXPECT_EQ(Parsed(std::string(kRecordingTitle) + "\r\n\r\n1\t0\topened\r\n").size(), 1u);
}

// What the tool saw of its library is what the stand-in library and a projector would have said.
TEST(Recording, TurnsTheToolsCallsIntoExchanges) {
  const std::tuple<const char*, const char*, const char*> calls[] = {
      {"PJGetRunningStatus\t0\t1.5\thandle=0 Power=1", "7F5700000101D8", "7F570000020001D9"},
      {"PJGetRunningStatus\t-3\t1.5\thandle=0", "7F5700000101D8", ""},
      {"PJGetRunningStatus\t-5\t1.5\thandle=0", "7F5700000101D8", "7F570000010226"},
      {"PJGetPcViewerInformation\t0\t1.5\tPanelWidth=1024 PanelHeight=768", "7F5700000102D9",
       "7F570000050000040003E2"},
      {"PJGetPcViewerInformation\t-20\t1.5\thandle=0", "7F5700000102D9", "7F5700000101D8"},
      {"PJGetStatus\t0\t1.5\tPower=1 Input=7", "7F5700000103DA", "7F57000006000107000000E4"},
      {"PJSetInput\t-6\t1.5\thandle=0 input=7", "7F570000050407000000E6", "7F5700000102D9"}};
  for (const auto& [call, request, reply] : calls) {
    const std::vector<RecordedEvent> events =
        Parsed(std::string(kToolRecordingTitle) + "\tany version\n1\t0\topened\n1\t9\tcall\t" +
               call + "\n");
    ASSERT_EQ(events.size(), 2u) << call;
    EXPECT_EQ(ToHex(events[1].Request), request) << call;
    EXPECT_EQ(ToHex(events[1].Reply), reply) << call;
    EXPECT_EQ(events[1].At, milliseconds(8));
  }
}

constexpr const char* kSession =
    "1\t0\topened\n1\t1\trequest\tModel class?\t00850000010086\n"
    "1\t1\treply\tModel class?\t20850000030B0004B7\n"
    "1\t1\trequest\tRegisters (8)\t01DF00000608000200334467\n"
    "1\t1\treply\tRegisters (8)\t21DF0000010001\n"
    "1\t2\trequest\tShow (1)\t01DF0000020100E3\n1\t2\treply\tShow (1)\t21DF0000010001\n"
    "1\t3\trequest\tProbe\t01DF000000E0\n"
    "1\t4\trequest\tShow (1)\t01DF0000020100E3\n1\t4\treply\tShow (1)\t21DF0000010203\n"
    "1\t5\tclosed\n";

TEST(Replay, AnswersTheToolFromTheRecording) {
  std::vector<std::string> log;
  const TempFolder folder;
  LinkedStation at({.Replay = Parsed(kTitle + kSession),
                    .State = folder / "state.json",
                    .Log = [&log](const NamedText& text) { log.push_back(Said(text)); }});
  EXPECT_EQ(at.Send("01DF00000608000200334467"), "21DF0000010001") << "recorded later on";
  EXPECT_EQ(at.Send("01DF0000020100E3"), "21DF0000010001");
  EXPECT_EQ(at.Scroll(), "3344") << "the picture follows";
  EXPECT_EQ(at.Send("01DF0000020100E3"), "21DF0000010203") << "the next one";
  EXPECT_EQ(at.Send("00850000010086"), "20850000030B0004B7") << "from the start again";
  EXPECT_EQ(at.Send("01DF000000E0"), "") << "was not answered then either";
  EXPECT_TRUE(log.empty());

  EXPECT_EQ(at.Send("01DF0000021200F4"), "") << "never recorded";
  const StationSnapshot state = at.station.Snapshot();
  EXPECT_EQ(state.Mismatches, 1u);
  EXPECT_EQ(state.Exchanges.back().Fault, kMismatch);
  EXPECT_EQ(state.Count.Stores, 0u);
  EXPECT_NE(TempFolder::Read(folder / "state.json").find("\"01 DF 00 00 02 12 00 F4\""),
            std::string::npos);
  ASSERT_EQ(log.size(), 1u);
  EXPECT_NE(log[0].find("01 DF 00 00 02 12 00 F4"), std::string::npos) << log[0];
}

// What a projector answered is what one like it answers again, and another one does not.
TEST(Replay, ComparesAProjectorWithTheRecording) {
  constexpr ReplayTimes kTimes{.Silence = milliseconds(30)};
  const ProjectorTexts& texts = ProjectorTextsOf(Language::kEnglish);
  std::ostringstream recorded;
  Recorder recorder(recorded);
  Station station(
      {.Projector = {.Panel = {}, .ModelClass = 4}, .Faults = FaultRules({"kind=mode:timeout"})});
  Server recording(station, &recorder);
  NamedText reason;
  ASSERT_TRUE(recording.Listen({}, reason)) << Said(reason);
  const std::string asked =
      kTitle + kSession + "2\t0\topened\n2\t0\trequest\tx\t01DE0000020100E2\n";
  std::ostringstream told;
  EXPECT_FALSE(ReplayTo(Parsed(asked), recording.Where(), kTimes, texts, told));
  EXPECT_EQ(
      told.str(),
      "line 3: Model class?: recorded 20 85 00 00 03 0B 00 04 B7, now 20 85 00 00 03 00 00 "
      "04 AC\n"
      "line 9: Probe: recorded no answer, now 21 DF 00 00 01 00 01\n"
      "line 10: Show (1): recorded 21 DF 00 00 01 02 03, now 21 DF 00 00 01 00 01\n"
      "6 exchanges over 2 links, 3 differences, 3 agree\nthe first difference is in line 3\n");
  EXPECT_TRUE(ComesTrue([&] { return station.Snapshot().Count.Exchanges == 6; }));
  recording.Stop();

  const std::vector<RecordedEvent> events = Parsed(recorded.str());
  EXPECT_EQ(events.size(), 10u);
  const ProjectorServer same({.Panel = {}, .ModelClass = 4}, {"kind=mode:timeout"});
  told.str("");
  EXPECT_TRUE(ReplayTo(events, same.Where(), kTimes, texts, told)) << told.str();
  EXPECT_EQ(told.str(), "6 exchanges over 2 links, 0 differences, 6 agree\n");
  const ProjectorServer replaying(StationSetup{.Replay = events});
  EXPECT_TRUE(ReplayTo(events, replaying.Where(), kTimes, texts, told))
      << "answers as another class did";
  EXPECT_FALSE(ReplayTo({}, same.Where(), kTimes, texts, told)) << "nothing was compared";
  told.str("");
  const Endpoint nobody{.Address = 0x7F4D4D4D, .Port = same.Where().Port};
  EXPECT_FALSE(ReplayTo(events, nobody, kTimes, ProjectorTextsOf(Language::kJapanese), told))
      << "nobody is there";
  const std::string no_link = " 行目：" + TextOf(nobody) + " に接続できません\n";
  // The first link's end and the second's beginning are told by two threads.
  const auto second = std::ranges::find_if(events, [](const RecordedEvent& event) {
    return event.Link == 2 && event.Kind == RecordedKind::kOpened;
  });
  EXPECT_EQ(told.str(),
            "2" + no_link + std::to_string(second->Line) + no_link +
                "交信 0 回、接続 0 回、相違 2 件、一致 0 件\n最初の相違は 2 行目です\n");
}

TEST(FrameNames, TellEveryFrameApart) {
  const ProjectorTexts& texts = ProjectorTextsOf(Language::kEnglish);
  const std::tuple<const char*, const char*> cases[] = {
      {"01DF000000E0", "Probe"},
      {"01DF0000020000E2", "Clear (0)"},
      {"01DF0000020100E3", "Show (1)"},
      {"01DF0000021200F4", "Store (21)"},
      {"01DF00000608000200334467", "Registers (8)"},
      {"01DE0000020100E2", "Mode (18, 19)"},
      {"021A000002020121", "Prepare (20)"},
      {"00850000010086", "Model class?"},
      {"7F5700000101D8", "Running?"},
      {"01FC000000FD", "Whole block (21)"},
      {"01DF0000020D00EF", "Unknown"},
      {"01", "Unknown"},
      {"", "Unknown"}};
  for (const auto& [frame, name] : cases) EXPECT_EQ(FrameName(texts, FromHex(frame)), name);
  EXPECT_EQ(FrameHex(FromHex("01DF00"), 3), "01 DF 00");
  EXPECT_EQ(FrameHex(FromHex("01DF00"), 2), "01 DF ...");
}

TEST(ShownPicture, MarksLinesAtTheirLimitAndGoesDarkWithThePower) {
  const PanelSize panel{160, 120};
  RegisterSet registers = NeutralRegisters(panel);
  registers[kHorizontal][kCorre2].replace(20, 2, "78");  // rows 22 and 23: -8, then 7
  const RgbImage source = TestPicture(panel);
  const ShownPicture marked = PanelAsShown(source, registers, Power::kOn, true);
  EXPECT_EQ(marked.RowsAtLimit, 2);
  EXPECT_EQ(marked.ColumnsAtLimit, 0);
  const auto purple = [&](int y) {
    const std::uint8_t* pixel = marked.Image.At(0, y);
    return pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 255;
  };
  EXPECT_FALSE(purple(21));
  EXPECT_TRUE(purple(22));
  EXPECT_TRUE(purple(23));
  EXPECT_FALSE(purple(24));
  for (const Power power : {Power::kStandby, Power::kWarmingUp, Power::kCoolingDown}) {
    const RgbImage dark = PanelAsShown(source, registers, power, true).Image;
    EXPECT_EQ(dark.Pixels, BlackImage(panel).Pixels);
  }
}

}  // namespace
}  // namespace warpline::sim
