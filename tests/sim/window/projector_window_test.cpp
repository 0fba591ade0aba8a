#include <gtest/gtest.h>

#include <wx/evtloop.h>
#include <wx/menu.h>
#include <wx/notebook.h>

#include <numeric>

#include "sim/window/first_size.h"
#include "sim/window/projector_frame.h"
#include "tests/support/comes_true.h"
#include "tests/support/sim_hex.h"

namespace warpline::sim {
namespace {

// A projector and its window.
struct World {
  World() { frame->Show(); }
  // At once: its end must not wait for an event loop that looks at a station that is gone.
  ~World() { delete frame; }

  template <typename Control>
  Control& Find(const char* name) {
    return dynamic_cast<Control&>(*wxWindow::FindWindowByName(name, frame));
  }

  // Handles events until it is so; false when it is not within some seconds.
  static bool WaitUntil(const std::function<bool()>& so) {
    return ComesTrue([&] {
      wxEventLoopBase::GetActive()->DispatchTimeout(10);
      return so();
    });
  }

  static void Press(wxWindow& control, wxEventType type) {
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    control.ProcessWindowEvent(event);
  }

  void Key(int key) {
    wxKeyEvent event(wxEVT_CHAR_HOOK);
    event.m_keyCode = key;
    frame->ProcessWindowEvent(event);
  }

  // The first texts of the State page.
  std::string FirstOfState(int count) {
    std::string texts;
    for (const wxWindow* text : Find<wxNotebook>("pages").GetPage(0)->GetChildren()) {
      if (count-- > 0) texts += text->GetLabel().utf8_string() + "|";
    }
    return texts;
  }

  void Choose(const char* menu, const char* item) {
    wxCommandEvent event(wxEVT_MENU, frame->GetMenuBar()->FindMenuItem(menu, item));
    frame->ProcessWindowEvent(event);
  }

  bool stop = false;
  Station station{StationSetup{}};
  WindowRequest request{station, "127.0.0.1:7142", Language::kEnglish, [this] { return stop; }};
  ProjectorFrame* frame = new ProjectorFrame(request);
};

TEST(ProjectorWindow, PutsFaultsInForceAndShowsThemUntilCleared) {
  World world;
  auto& banner = world.Find<wxStaticText>("fault_banner");
  auto& what = world.Find<wxChoice>("fault_what");
  auto& when = world.Find<wxChoice>("fault_when");
  what.SetStringSelection("Late");
  when.SetStringSelection("By chance, %");
  World::Press(when, wxEVT_CHOICE);
  world.Find<wxChoice>("fault_kind").SetStringSelection("21");
  world.Find<wxSpinCtrl>("fault_count").SetValue(25);
  world.Find<wxSpinCtrl>("fault_jitter").SetValue(40);
  World::Press(world.Find<wxWindow>("add_fault"), wxEVT_BUTTON);
  const std::string rule = "kind=21,chance=0.25:late=500~40";
  EXPECT_EQ(world.station.Snapshot().Faults, std::vector<std::string>{rule});
  ASSERT_TRUE(World::WaitUntil([&] { return banner.GetParent()->IsShown(); })) << "no banner";
  EXPECT_EQ(banner.GetLabel(), "Faults in force: " + rule);
  EXPECT_EQ(world.Find<wxListBox>("active_faults").GetString(0), rule);
  for (int i = 0; i < 9; ++i) World::Press(world.Find<wxWindow>("add_fault"), wxEVT_BUTTON);
  EXPECT_TRUE(World::WaitUntil([&] { return banner.GetLabel().Freq('~') == 10; })) << "not all ten";
  EXPECT_LT(banner.GetBestSize().GetWidth(), world.frame->GetClientSize().GetWidth())
      << "none beyond the window's edge";

  World::Press(world.Find<wxWindow>("clear_faults"), wxEVT_BUTTON);
  EXPECT_TRUE(world.station.Snapshot().Faults.empty());
  EXPECT_TRUE(World::WaitUntil([&] { return !banner.GetParent()->IsShown(); })) << "it stays";
  const wxWindow& side = *world.Find<wxWindow>("canvas").GetParent();
  EXPECT_EQ(side.GetParent()->GetPosition().y, 0) << "and leaves no strip behind";

  world.Find<wxChoice>("fault_kind").SetStringSelection("Whole block (21)");
  World::Press(world.Find<wxWindow>("add_fault"), wxEVT_BUTTON);
  EXPECT_EQ(world.station.Snapshot().Faults,
            std::vector<std::string>{"kind=block,chance=0.25:late=500~40"});
}

TEST(ProjectorWindow, OffersForAConnectionsFaultNoExchanges) {
  World world;
  auto& what = world.Find<wxChoice>("fault_what");
  what.SetStringSelection("Half-open link");
  World::Press(what, wxEVT_CHOICE);
  EXPECT_FALSE(world.Find<wxChoice>("fault_kind").IsEnabled());
  auto& delay = world.Find<wxSpinCtrl>("fault_delay");
  EXPECT_FALSE(delay.IsEnabled());
  EXPECT_LE(delay.GetParent()->GetBestSize().GetWidth(), delay.GetParent()->GetSize().GetWidth());
  World::Press(world.Find<wxWindow>("add_fault"), wxEVT_BUTTON);
  EXPECT_EQ(world.station.Snapshot().Faults, std::vector<std::string>{"always:halfopen"});
}

TEST(ProjectorWindow, FollowsWhatArrives) {
  World world;
  auto& registers = world.Find<wxListCtrl>("registers");
  auto& frames = world.Find<wxListCtrl>("frames");
  EXPECT_EQ(world.frame->GetTitle(), "SIMULATOR - projector 127.0.0.1:7142");
  const auto shows = [&](const char* scroll) {
    return World::WaitUntil([&] { return registers.GetItemText(1, 1) == scroll; });
  };
  EXPECT_TRUE(shows("0000"));
  const int link = world.station.OpenLink();
  for (const char* frame : {kWriteScroll, kShow}) world.station.Exchange(link, FromHex(frame));
  EXPECT_TRUE(shows("3344"));
  EXPECT_EQ(registers.GetItemText(1, 2), "0000");
  EXPECT_EQ(frames.GetItemCount(), 2);
  EXPECT_EQ(frames.GetItemText(0, 1), "Show (1)");
  EXPECT_EQ(frames.GetItemText(1, 2), "01 DF 00 00 06 08 00 02 00 33 44 67");
  EXPECT_EQ(world.FirstOfState(8),
            "Shown|a correction|Kept|no correction|Picture mode|0|Panel|1024x768|");
  world.station.Exchange(link, FromHex(kStore));
  EXPECT_TRUE(World::WaitUntil([&] {
    return world.FirstOfState(4) == "Shown|a correction|Kept|what is shown|";
  })) << world.FirstOfState(4);
}

TEST(ProjectorWindow, ChangesItsViewByKeys) {
  World world;
  auto& shape = world.Find<wxChoice>("wall_shape");
  EXPECT_FALSE(shape.GetParent()->IsShown());
  world.Key('W');
  EXPECT_TRUE(shape.GetParent()->IsShown());
  auto& hint = world.Find<wxStaticText>("wall_hint");
  EXPECT_TRUE(hint.GetLabel().StartsWith("Concave screen.")) << hint.GetLabel();
  world.Find<wxSlider>("wall_curvature").SetValue(40);
  World::Press(world.Find<wxSlider>("wall_curvature"), wxEVT_SLIDER);
  EXPECT_TRUE(hint.GetLabel().StartsWith("Convex screen.")) << hint.GetLabel();
  shape.SetStringSelection("Flat");
  World::Press(shape, wxEVT_CHOICE);
  EXPECT_FALSE(world.Find<wxSlider>("wall_curvature").IsEnabled());
  world.Key('C');
  EXPECT_TRUE(shape.GetParent()->IsShown());
  auto& canvas = world.Find<Canvas>("canvas");
  const auto lit = [&canvas] {
    if (!World::WaitUntil([&canvas] { return canvas.Shown().IsOk(); })) return false;
    const wxSize size = canvas.Shown().GetSize();
    const wxImage seen = canvas.Shown().ConvertToImage();
    EXPECT_NEAR(size.x * 3.0, size.y * 4.0, 8) << "the photograph's shape";
    return seen.GetRed(size.x * 2 / 5, size.y / 2) > 20;
  };
  EXPECT_TRUE(lit());
  world.request.Camera = Camera{.Z = 5};
  world.Key('C');
  EXPECT_FALSE(lit());
  EXPECT_TRUE(hint.GetLabel().StartsWith("The camera does not see")) << hint.GetLabel();
  world.Key('P');
  EXPECT_FALSE(shape.GetParent()->IsShown());
}

TEST(ProjectorWindow, ShowsTheUncorrectedPictureWhileAKeyIsHeld) {
  World world;
  auto& canvas = world.Find<Canvas>("canvas");
  const auto light = [&canvas] {
    if (!canvas.Shown().IsOk()) return 0L;
    const wxImage image = canvas.Shown().ConvertToImage();
    return std::accumulate(image.GetData(), image.GetData() + 3 * 1024 * 768, 0L);
  };
  const auto release = [&canvas](int key) {
    wxKeyEvent event(wxEVT_KEY_UP);
    event.m_keyCode = key;
    canvas.ProcessWindowEvent(event);
  };
  ASSERT_TRUE(World::WaitUntil([&] { return light() > 0; }));
  const long uncorrected = light();
  const int link = world.station.OpenLink();
  for (const char* frame : {kWriteScroll, kShow}) world.station.Exchange(link, FromHex(frame));
  ASSERT_TRUE(World::WaitUntil([&] { return light() != uncorrected; }));
  world.Key('U');
  EXPECT_EQ(light(), uncorrected);
  release('W');
  EXPECT_EQ(light(), uncorrected);
  release('U');
  EXPECT_NE(light(), uncorrected);
}

TEST(ProjectorWindow, LeavesFullScreenByEscape) {
  World world;
  wxWindow& panes = *world.Find<wxWindow>("registers").GetParent();
  world.Choose("View", "Full screen");
  EXPECT_TRUE(world.frame->IsFullScreen());
  EXPECT_FALSE(panes.IsShown());
  world.Key(WXK_ESCAPE);
  EXPECT_FALSE(world.frame->IsFullScreen());
  EXPECT_TRUE(panes.IsShown());
  EXPECT_TRUE(world.frame->GetMenuBar()->IsShown());
  world.frame->SetSize(500, 400);
  EXPECT_TRUE(World::WaitUntil([&] { return !panes.IsShown(); })) << "a narrow window";
}

TEST(ProjectorWindow, BeginsBesideTheWindowsOfTheTool) {
  const wxRect main(0, 0, 560, 385);
  const wxRect preview(565, 0, 642, 505);
  for (const wxSize& screen : {wxSize(1366, 728), wxSize(1280, 1024), wxSize(1920, 1080)}) {
    const wxSize size = FirstSize(screen);
    const wxRect place(wxPoint(0, screen.y - size.y), size);
    EXPECT_FALSE(place.Intersects(main) || place.Intersects(preview)) << size.x << "x" << size.y;
    EXPECT_TRUE(wxRect(screen).Contains(place));
  }
}

TEST(ProjectorWindow, EndsThoughADialogWaits) {
  World world;
  bool closed = false;
  world.frame->Bind(wxEVT_CLOSE_WINDOW, [&closed](wxCloseEvent&) { closed = true; });
  wxTimer late;
  late.Bind(wxEVT_TIMER, [](wxTimerEvent&) {
    ADD_FAILURE() << "the dialog stays";
    dynamic_cast<wxDialog&>(*wxTopLevelWindows.GetLast()->GetData()).EndModal(wxID_CANCEL);
  });
  late.StartOnce(10000);
  world.stop = true;
  world.Choose("Help", "Keys...");
  EXPECT_TRUE(World::WaitUntil([&closed] { return closed; })) << "the dialog holds it back";
}

}  // namespace
}  // namespace warpline::sim
