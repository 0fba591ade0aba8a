#include "standin/beamseek_standin.h"

#include "core/conversions.h"

#include <gtest/gtest.h>

#include <mutex>

#include "standin/search_texts.h"
#include "tests/support/comes_true.h"

namespace warpline::sim {
namespace {

using Notes = std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // code and index

constexpr csAdapterList kNoAdapters{};

// Nobody answers there: the search takes as long as it is given.
constexpr DiscoveryRange kNobody{0x7F000063, 1, 9, milliseconds(1)};
constexpr DiscoveryRange kEndless{0x7F000063, 1, 9, milliseconds(600'000)};

// What the library's callback told.
class Told {
 public:
  static void WARPLINE_LIBRARY_CALL Record(std::uint32_t code, std::uint32_t index, std::uint32_t,
                                           void* user) {
    auto* told = static_cast<Told*>(user);
    const std::lock_guard lock(told->mutex_);
    told->notes_.emplace_back(code, index);
  }

  Notes All() {
    const std::lock_guard lock(mutex_);
    return notes_;
  }
  // All so far, as soon as there are that many; those that there are when no more come.
  Notes Wait(std::size_t count) {
    ComesTrue([&] { return All().size() >= count; });
    return All();
  }

 private:
  std::mutex mutex_;
  Notes notes_;
};

// A window without controls: the test does what the user would.
struct ScriptedWindow : SelectionWindow {
  struct Log {
    SelectionWindowHost host;
    Language language = Language::kEnglish;
    std::vector<std::string> calls;
    int alive = 0;
  };

  explicit ScriptedWindow(Log& shared) : log(shared) { ++log.alive; }
  ~ScriptedWindow() override { --log.alive; }
  ScriptedWindow(const ScriptedWindow&) = delete;
  ScriptedWindow& operator=(const ScriptedWindow&) = delete;
  void ShowSearching(const std::string& last_address) override {
    log.calls.push_back("search " + last_address);
  }
  void GoOn() override { log.calls.push_back("go on"); }

  static SelectionWindowFactory Factory(Log& log) {
    return [&log](SelectionWindowHost host, Language language) {
      log.host = std::move(host);
      log.language = language;
      return std::make_unique<ScriptedWindow>(log);
    };
  }

  Log& log;
};

struct Created {
  std::int32_t ok = 0;
  std::int32_t handle = 0;
  const csResData* result = nullptr;
};

Created Create(BeamseekStandin& library, Told& told, std::int32_t flags) {
  Created created;
  created.ok =
      library.Create(&kNoAdapters, Told::Record, &told, flags, &created.handle, &created.result);
  return created;
}

SearchResult WaitForResult(const SelectionWindowHost& host) {
  std::optional<SearchResult> result;
  EXPECT_TRUE(ComesTrue([&] { return (result = host.TakeResult()).has_value(); })) << "no result";
  return result.value_or(SearchResult{});
}

TEST(BeamseekStandin, SaysWhatCanBeChosenAndInWhichState) {
  const std::tuple<const char*, std::uint16_t, bool, std::uint8_t, std::int32_t, const char*>
      rows[] = {{"standby", 7142, true, 0, 1, "Standby"},
                {"on", 7142, true, 1, 1, "Ready"},
                {"warming up", 7142, true, 2, 1, "Warming up"},
                {"cooling down", 7142, true, 3, 1, "Cooling down"},
                {"no such state", 7142, true, 4, 1, "Ready"},
                {"refuses", 7142, false, 0, 0, "Cannot be chosen"},
                {"another port", 7143, true, 1, 0, "Cannot be chosen"},
                {"neither", 1, false, 2, 0, "Cannot be chosen"}};
  for (const auto& [name, port, says_so, power, selectable, state] : rows) {
    const SearchResult found =
        ResultOf({{0x7F0203FE, {port, 5, power, says_so, std::string(31, 'n')}}});
    const csResData& result = found.Record;
    ASSERT_EQ(result.iPjNum, 1);
    const SearchText text = StateOf(result.PJData[0].bSelectable != 0, found.PowerState[0]);
    EXPECT_EQ(SearchTextsOf(Language::kEnglish)[text], state) << name;
    EXPECT_EQ(result.PJData[0].bSelectable, selectable) << name;
    EXPECT_EQ(AddressText(result.PJData[0].ucIP), "127.2.3.254");
    EXPECT_EQ(std::string(result.PJData[0].cName), std::string(31, 'n'));
  }
  EXPECT_EQ(ResultOf(std::vector<DiscoveredProjector>(65)).Record.iPjNum, 64);
}

// One projector, and where it is found.
struct LeftProjector {
  std::unique_ptr<DiscoveryResponder> responder =
      DiscoveryResponder::Open({0x7F000002, 0}, {7142, 5, 3, true, "Left"});
  DiscoveryRange range{0x7F000002, 1, responder->Where().Port, milliseconds(600'000)};
};

TEST(BeamseekStandin, WithoutAWindowTellsWhenAllAreFound) {
  const LeftProjector left;
  BeamseekStandin library({}, left.range);
  Told told;
  const Created search = Create(library, told, 0);
  ASSERT_EQ(search.ok, 1);
  EXPECT_EQ(library.Restart(search.handle, 1), 0) << "not started yet";
  EXPECT_EQ(library.Start(search.handle), 1);
  EXPECT_EQ(told.Wait(1), (Notes{{2005, 0}}));
  ASSERT_EQ(search.result->iPjNum, 1);
  EXPECT_STREQ(search.result->PJData[0].cName, "Left");
  EXPECT_EQ(library.Start(search.handle), 0) << "only once";
  EXPECT_EQ(library.Restart(search.handle, 1), 1);
  EXPECT_EQ(told.Wait(2), (Notes{{2005, 0}, {2005, 0}}));
  EXPECT_EQ(library.Destroy(search.handle), 1);
  EXPECT_EQ(library.Destroy(search.handle), 0) << "exactly once";
}

TEST(BeamseekStandin, RefusesBadHandlesAndArguments) {
  BeamseekStandin library({}, kNobody);
  Told told;
  std::int32_t handle = 0;
  const csResData* result = nullptr;
  EXPECT_EQ(library.Create(nullptr, Told::Record, &told, 0, &handle, &result), 0);
  EXPECT_EQ(library.Create(&kNoAdapters, nullptr, &told, 0, &handle, &result), 0);
  EXPECT_EQ(library.Create(&kNoAdapters, Told::Record, &told, 0, nullptr, &result), 0);
  EXPECT_EQ(library.Create(&kNoAdapters, Told::Record, &told, 0, &handle, nullptr), 0);
  EXPECT_EQ(Create(library, told, kSearchShowWindow).ok, 0) << "there are no windows here";
  const Created search = Create(library, told, 0);
  EXPECT_NE(search.handle, 0);
  EXPECT_EQ(library.SetLastPJ(search.handle, nullptr), 0);
  for (const std::int32_t bad : {0, -1, search.handle + 1}) {
    EXPECT_EQ(library.SetLastPJ(bad, "127.0.0.1"), 0);
    EXPECT_EQ(library.Start(bad), 0);
    EXPECT_EQ(library.Restart(bad, 1), 0);
    EXPECT_EQ(library.Destroy(bad), 0);
  }
}

TEST(BeamseekStandin, EndsASearchThatIsDestroyed) {
  BeamseekStandin library({}, kEndless);
  Told told;
  const Created search = Create(library, told, 0);
  ASSERT_EQ(library.Start(search.handle), 1);
  EXPECT_EQ(library.Restart(search.handle, kRestartFromStart), 1);
  EXPECT_EQ(library.Destroy(search.handle), 1);
  EXPECT_EQ(told.All(), Notes{}) << "nothing is told any more";
}

TEST(BeamseekStandin, LetsTheWindowDecide) {
  const LeftProjector left;
  ScriptedWindow::Log window;
  BeamseekStandin library(ScriptedWindow::Factory(window), left.range);
  Told told;
  const Created search = Create(library, told, kSearchShowWindow | kSearchJapanese);
  ASSERT_EQ(search.ok, 1);
  EXPECT_EQ(window.language, Language::kJapanese);
  // A buffer without a NUL.
  EXPECT_EQ(library.SetLastPJ(search.handle, "192.168.100.100..more"), 1);
  EXPECT_EQ(library.Start(search.handle), 1);
  EXPECT_EQ(search.result->iPjNum, 0) << "the record changes on the windows' thread alone";
  EXPECT_EQ(WaitForResult(window.host).PowerState[0], 3);
  EXPECT_EQ(search.result->iPjNum, 1);
  EXPECT_FALSE(window.host.TakeResult()) << "taken";
  EXPECT_EQ(library.Restart(search.handle, kRestartGoOn), 1);
  EXPECT_EQ(library.Restart(search.handle, kRestartFromStart), 1);
  EXPECT_EQ(WaitForResult(window.host).Record.iPjNum, 1);
  window.host.Notify(kSearchSelected, 7);
  EXPECT_EQ(told.Wait(1), (Notes{{2000, 7}})) << "2005 is only told where there is no window";
  EXPECT_EQ(window.alive, 1);
  EXPECT_EQ(library.Destroy(search.handle), 1);
  EXPECT_EQ(window.alive, 0);
  EXPECT_EQ(window.calls, (std::vector<std::string>{"search 192.168.100.100..", "go on",
                                                    "search 192.168.100.100.."}));
}

}  // namespace
}  // namespace warpline::sim
