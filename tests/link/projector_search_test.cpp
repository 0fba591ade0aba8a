#include "link/projector_search.h"

#include <gtest/gtest.h>

#include <thread>

#include "core/catalogue.h"
#include "platform/files.h"
#include "tests/support/fake_beamseek.h"
#include "tests/support/recorder.h"

namespace warpline {
namespace {

using Calls = std::vector<std::string>;

const SearchOptions kOptions{.FirstAddress = "192.168.10.10"};
const Calls kStarted{"Create 1", "SetLastPJ 192.168.10.10", "Start"};

Calls StartedAnd(const Calls& more) {
  Calls all = kStarted;
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

// A fake library that has found three projectors, and a search over it.
struct SearchRig : Recorded {
  SearchRig() {
    library.AddProjector({127, 0, 0, 2}, "Left", true);
    library.AddProjector({10, 20, 30, 40}, "", false);
    library.AddProjector({255, 254, 0, 9}, "Right", true);
  }

  FakeBeamseek library;
  ProjectorSearch search{messages, [this] { return library.Functions(); }};
};

TEST(ProjectorSearch, HandlesEachNotification) {
  constexpr auto kNone = SearchRequest::kNone;
  // calls: beyond those of the start
  // address: of the chosen one, null: none
  using Row = std::tuple<const char*, std::uint32_t, std::uint32_t, Calls, const char*,
                         SearchRequest, bool, Calls>;
  const Row rows[] = {
      {"first selected", 2000, 0, {"Destroy"}, "127.0.0.2", kNone, false, {}},
      {"last selected", 2000, 2, {"Destroy"}, "255.254.0.9", kNone, false, {}},
      {"selected beyond", 2000, 3, {"Destroy"}, nullptr, kNone, false, {"[2] Wrong value."}},
      {"selected nonsense", 2000, ~0U, {"Destroy"}, nullptr, kNone, false, {"[2] Wrong value."}},
      {"closed", 2001, 0, {"Destroy"}, nullptr, kNone, false, {}},
      {"cancelled", 2002, 0, {"Destroy"}, nullptr, kNone, false, {}},
      {"read-me", 2003, 0, {"Restart 0"}, nullptr, SearchRequest::kOpenReadMe, true, {}},
      {"repeat", 2004, 0, {"Restart 1"}, nullptr, kNone, true, {}},
      {"finished", 2005, 0, {}, nullptr, kNone, true, {}},
      {"unknown 2007", 2007, 0, {}, nullptr, kNone, true, {}},
      {"other repeat", 2008, 0, {"Restart 1"}, nullptr, kNone, true, {}},
      {"below", 1999, 0, {}, nullptr, kNone, true, {}},
      {"above", 2009, 0, {}, nullptr, kNone, true, {}},
      {"zero", 0, 0, {}, nullptr, kNone, true, {}},
  };
  for (const auto& [name, code, first, calls, address, request, running, messages] : rows) {
    SCOPED_TRACE(name);
    SearchRig rig;
    ASSERT_TRUE(rig.search.Start(kOptions));
    EXPECT_EQ(rig.search.Poll(), kNone) << "nothing was notified yet";
    rig.library.Notify(code, first);
    EXPECT_EQ(rig.library.calls, kStarted) << "the callback itself does nothing";
    EXPECT_EQ(rig.search.Poll(), request);
    EXPECT_EQ(rig.search.Poll(), kNone) << "handled once";
    EXPECT_EQ(rig.library.calls, StartedAnd(calls));
    EXPECT_EQ(rig.search.IsRunning(), running);
    EXPECT_EQ(rig.search.Chosen(), address ? std::optional<std::string>(address) : std::nullopt);
    EXPECT_EQ(rig.display.Texts(), messages);
  }
}

TEST(ProjectorSearch, ShowsEachFailureInOneMessage) {
  const char* const create = "ConnectSelectCreate() に失敗しました。";
  const char* const start = "ConnectSelectStart() 戻り値が FALSE でした";
  const char* const handle = "Handle Error!!";
  using Result = std::int32_t FakeBeamseek::*;
  // code: notified after a good start, 0: none
  const std::tuple<const char*, Result, std::uint32_t, Calls, const char*> rows[] = {
      {"create", &FakeBeamseek::create_result, 0, {"Create 1"}, create},
      {"handle", &FakeBeamseek::handle, 0, {"Create 1"}, handle},
      {"start", &FakeBeamseek::start_result, 0, StartedAnd({"Destroy"}), start},
      {"repeat", &FakeBeamseek::restart_result, 2004, StartedAnd({"Restart 1", "Destroy"}), handle},
      {"go on", &FakeBeamseek::restart_result, 2003, StartedAnd({"Restart 0", "Destroy"}), handle},
  };
  for (const auto& [name, spoilt, code, calls, text] : rows) {
    SCOPED_TRACE(name);
    SearchRig rig;
    rig.library.*spoilt = 0;
    EXPECT_EQ(rig.search.Start(kOptions), code != 0);
    if (code != 0) rig.library.Notify(code);
    rig.search.Poll();
    EXPECT_FALSE(rig.search.IsRunning());
    EXPECT_EQ(rig.library.calls, calls);
    const RecordedMessage expected{"Warpline Tool 3.0", text, MessageIcon::kCritical};
    EXPECT_EQ(rig.display.messages, std::vector<RecordedMessage>{expected});
  }
}

TEST(ProjectorSearch, SaysWhenThereIsNoLibrary) {
  Recorded world;
  ProjectorSearch search(world.messages, [] { return nullptr; });
  EXPECT_FALSE(search.Start(kOptions));
  EXPECT_EQ(search.Poll(), SearchRequest::kNone);
  EXPECT_EQ(world.display.Texts(), Calls{TextOf(world.global, 85)});
}

TEST(ProjectorSearch, DestroysExactlyOnceHoweverItEnds) {
  FakeBeamseek library;
  Recorded world;
  {
    ProjectorSearch search(world.messages, [&library] { return library.Functions(); });
    ASSERT_TRUE(search.Start(kOptions));
    EXPECT_FALSE(search.Start(kOptions)) << "it runs already";
    // The user was quicker than the timer; what comes after the end is void.
    for (const std::uint32_t code : {2004U, 2002U, 2000U, 2001U, 2003U}) library.Notify(code);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(search.Poll(), SearchRequest::kNone);
    EXPECT_EQ(library.calls, StartedAnd({"Restart 1", "Destroy"}));
    library.calls.clear();
    ASSERT_TRUE(search.Start(kOptions));
    EXPECT_EQ(search.Poll(), SearchRequest::kNone) << "old notifications do not count";
    EXPECT_TRUE(search.IsRunning());
  }
  EXPECT_EQ(library.calls, StartedAnd({"Destroy"})) << "still running when it was let go";
  EXPECT_TRUE(world.display.messages.empty());
}

// The library may let window events run, and so the timer's, while it is being called.
TEST(ProjectorSearch, HandlesOneNotificationAtATime) {
  SearchRig rig;
  ASSERT_TRUE(rig.search.Start(kOptions));
  rig.library.Notify(2004);
  rig.library.Notify(2003);
  rig.library.on_restart = [&rig] { EXPECT_EQ(rig.search.Poll(), SearchRequest::kNone); };
  EXPECT_EQ(rig.search.Poll(), SearchRequest::kNone);
  EXPECT_EQ(rig.library.calls, StartedAnd({"Restart 1"}));
  EXPECT_EQ(rig.search.Poll(), SearchRequest::kOpenReadMe);
  EXPECT_EQ(rig.library.calls, StartedAnd({"Restart 1", "Restart 0"}));
}

TEST(ProjectorSearch, TellsTheLibraryAddressLanguageAndAdapters) {
  SearchRig rig;
  SearchOptions options{"projector-in-the-great-hall", {}, true, SearchWindow::kHidden};
  for (std::uint8_t i = 0; i < 17; ++i) options.Adapters.push_back({10, i, 200, 255});
  ASSERT_TRUE(rig.search.Start(options));
  EXPECT_EQ(rig.library.calls, (Calls{"Create 2", "SetLastPJ projector-in-the", "Start"}))
      << "16 characters and a NUL";
  ASSERT_EQ(rig.library.adapters.iAdapterNum, 16) << "as many as the record holds";
  for (std::uint8_t i = 0; i < 16; ++i) {
    EXPECT_EQ(std::to_array(rig.library.adapters.Adapter[i].ucIP), options.Adapters[i]);
  }
}

TEST(ProjectorSearch, CopiesTheRecordBeforeItIsGone) {
  SearchRig rig;
  ASSERT_TRUE(rig.search.Start({.Window = SearchWindow::kHidden}));
  EXPECT_TRUE(rig.search.Found().empty());
  EXPECT_EQ(rig.search.Diagnosis(), "csResData.iPjNum = 0");
  std::thread([&rig] { rig.library.Notify(2005); }).join();
  rig.search.Poll();
  EXPECT_FALSE(rig.search.IsRunning()) << "without a window there is nothing to wait for";
  std::memset(&rig.library.result, 0xEE, sizeof rig.library.result);
  const std::vector<FoundProjector> expected{
      {"127.0.0.2", "Left", true}, {"10.20.30.40", "", false}, {"255.254.0.9", "Right", true}};
  EXPECT_EQ(rig.search.Found(), expected);
  EXPECT_EQ(rig.search.Diagnosis(),
            "csResData.iPjNum = 3\r\n"
            "csResData.PJData(0).bSelectable = 1\r\ncsResData.PJData(0).ucIP        = 127.0.0.2\r\n"
            "csResData.PJData(1).bSelectable = 0\r\n"
            "csResData.PJData(1).ucIP        = 10.20.30.40\r\n"
            "csResData.PJData(2).bSelectable = 1\r\n"
            "csResData.PJData(2).ucIP        = 255.254.0.9");
}

TEST(ProjectorSearch, StaysWithinARecordThatIsNonsense) {
  for (const auto& [count, entries] : {std::pair(1000000, 64U), {65, 64U}, {-1, 0U}}) {
    SearchRig rig;
    std::memset(&rig.library.result, 0x41, sizeof rig.library.result);
    rig.library.result.iPjNum = count;
    ASSERT_TRUE(rig.search.Start(kOptions));
    rig.library.Notify(2000, 64);
    rig.search.Poll();
    ASSERT_EQ(rig.search.Found().size(), entries);
    if (entries > 0) {
      EXPECT_EQ(rig.search.Found()[63].Name, std::string(32, 'A'));
    }
    EXPECT_EQ(rig.search.Chosen(), std::nullopt);
    EXPECT_EQ(rig.display.Texts(), Calls{"[2] Wrong value."});
  }
}

}  // namespace
}  // namespace warpline
