#include <functional>
#include <memory>

#include "tests/ui/window_rig.h"
#include "toolkit/wheel_guard.h"

// The upper part of the main window: groups, sliders, keys, icons, symmetry.

namespace warpline {
namespace {

TEST(MainControls, GroupsShowTheirRowsAndExtras) {
  WindowRig rig;
  rig.H() = {40, -10, 7, 8, -9, 1};
  rig.V() = {0, 5, -70, -80, 90, 0};
  rig.global.Correction.ScreenType = kOtherScreens;
  rig.Open();
  const struct {
    int values[2];
    const char *texts[2], *icon;
    bool symmetry, editor;
    int page;  // of the second slider
  } rows[] = {
      {{5, 0}, {"5", "0%"}, "iconbutton0", false, true, 10},
      {{40, 10}, {"40%", "10"}, "iconbutton3", false, true, 4},
      {{7, -70}, {"7", "-70"}, "iconbutton4", true, false, 8},
      {{8, -80}, {"8", "-80"}, "iconbutton7", false, false, 8},
      {{9, 90}, {"9", "90"}, "iconbutton8", false, false, 128},
  };
  EXPECT_EQ(wxWindow::FindFocus(), &rig.Find("ctrl_select0"));
  const wxPoint place = rig.Find("ctrl_bar1").GetPosition();
  for (int group = 0; group < kGroupCount; ++group) {
    SCOPED_TRACE(group);
    const auto& row = rows[group];
    rig.SelectGroup(group);
    for (const int slider : {0, 1}) {
      const std::string number = std::to_string(slider);
      EXPECT_EQ(rig.Value("ctrl_bar" + number), row.values[slider]);
      EXPECT_EQ(rig.Text("ctrl_value" + number), row.texts[slider]);
      EXPECT_EQ(rig.Enabled("ctrl_bar" + number), group + slider > 0) << "centre of no distortion";
    }
    EXPECT_TRUE(rig.Shown(row.icon));
    EXPECT_EQ(rig.Find<wxSlider>("ctrl_bar1").GetPageSize(), row.page);
    EXPECT_EQ(rig.Shown("lr_symm"), row.symmetry);
    EXPECT_EQ(rig.Shown("ud_symm"), row.symmetry);
    EXPECT_EQ(rig.Shown("corre_edit"), row.editor);
    EXPECT_EQ(rig.Find("ctrl_bar1").GetPosition(), place) << "the layout jumps";
  }
  EXPECT_TRUE(rig.Find<wxCheckBox>("lr_symm").GetValue());
  EXPECT_FALSE(rig.Find<wxCheckBox>("ud_symm").GetValue());
}

void ForEachControl(wxWindow& window, const std::function<void(wxWindow&)>& action) {
  for (wxWindow* child : window.GetChildren()) {
    if (!child->IsTopLevel()) ForEachControl(*child, action);
  }
  action(window);
}

void SettleUntilPainted(wxWindow& panel) {
  const auto painted = std::make_shared<bool>(false);
  const auto note = [painted](wxPaintEvent& event) {
    *painted = true;
    event.Skip();
  };
  panel.Bind(wxEVT_PAINT, note);
  panel.Refresh();
  EXPECT_TRUE(SettleUntil([&] { return *painted; }));
}

// As the system does for a display of another scale, with letters that grow a little more than it.
// GTK knows how large they are when they are painted.
void Enlarge(WindowRig& rig) {
  ForEachControl(*rig.window, [](wxWindow& each) { each.SetFont(each.GetFont().Scaled(1.6F)); });
  SettleUntilPainted(rig.Find("main_panel"));
  ForEachControl(*rig.window, [](wxWindow& each) {
    each.InvalidateBestSize();
    wxDPIChangedEvent event({96, 96}, {144, 144});
    each.ProcessWindowEvent(event);
  });
}

TEST_F(OpenedWindow, LettersOfAnotherScaleFit) {
  Enlarge(rig);
  const wxWindow& link = rig.Find("status_link");
  const auto fits = [&] {
    const wxSize least = rig.window->GetSizer()->ComputeFittingClientSize(rig.window);
    const wxSize now = rig.window->GetClientSize();
    return now.x >= least.x && now.y >= least.y &&
           link.GetSize().x >= link.GetTextExtent(link.GetLabel()).x;
  };
  EXPECT_TRUE(SettleUntil(fits));
  const wxPoint place = rig.Find("ctrl_bar1").GetPosition();
  for (int group = 0; group < kGroupCount; ++group) {
    rig.SelectGroup(group);
    EXPECT_TRUE(SettleUntil(fits)) << group;
    EXPECT_EQ(rig.Find("ctrl_bar1").GetPosition(), place) << group;
  }
}

TEST(MainControls, SliderStoresAtOnceAndSendsOnRelease) {
  WindowRig rig;
  rig.V().Distortion = 200;
  rig.Open();
  EXPECT_EQ(rig.Value("ctrl_bar1"), 150);
  EXPECT_EQ(rig.Text("ctrl_value1"), "200%") << "stays until the slider is moved";
  EXPECT_EQ(rig.Move("ctrl_bar1", 30), "");
  EXPECT_EQ(rig.V().Distortion, 30);
  EXPECT_EQ(rig.Text("ctrl_value1"), "30%");
  EXPECT_TRUE(rig.Enabled("ctrl_bar0")) << "a distortion has an optical centre";
  EXPECT_EQ(rig.Release("ctrl_bar1"), kApplyWords);
  EXPECT_EQ(wxWindow::FindFocus(), &rig.Find("ctrl_bar1"));
  EXPECT_TRUE(SettleUntil([&] { return rig.server.Snapshot().OpenLinks == 0; }));
  EXPECT_EQ(rig.Release("ctrl_bar1"), "") << "the projector has it";
  rig.Pick("menu_opt_auto_off");
  rig.Move("ctrl_bar1", 31);
  EXPECT_EQ(rig.Release("ctrl_bar1"), "");
  rig.Pick("menu_opt_auto_on");
  EXPECT_EQ(rig.Release("ctrl_bar1"), kApplyWords);
}

TEST_F(OpenedWindow, ArrowKeysStepAndSendUnlessShiftIsHeld) {
  const struct {
    const char* name;
    int key, modifiers, value;
    bool sends;
  } rows[] = {
      {"right", WXK_RIGHT, wxMOD_NONE, 1, true},
      {"up", WXK_UP, wxMOD_NONE, 2, true},
      {"left", WXK_LEFT, wxMOD_NONE, 1, true},
      {"down", WXK_DOWN, wxMOD_NONE, 0, true},
      {"right under Shift", WXK_RIGHT, wxMOD_SHIFT, 1, false},
      {"again", WXK_RIGHT, wxMOD_SHIFT, 2, false},
      {"Shift goes up", WXK_SHIFT, wxMOD_SHIFT, 2, true},
      {"Shift again, nothing has changed", WXK_SHIFT, wxMOD_SHIFT, 2, false},
      {"no step with Ctrl", WXK_RIGHT, wxMOD_CONTROL, 2, false},
      {"no arrow", WXK_TAB, wxMOD_NONE, 2, false},
      {"page up", WXK_PAGEUP, wxMOD_NONE, 12, true},
      {"page down under Shift", WXK_PAGEDOWN, wxMOD_SHIFT, 2, false},
      {"end", WXK_END, wxMOD_NONE, 150, true},
      {"home", WXK_HOME, wxMOD_NONE, -150, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string sent = rig.SentBy([&] {
      SendKey(rig.Find("ctrl_bar1"), wxEVT_KEY_DOWN, row.key, row.modifiers);
      SendKey(rig.Find("ctrl_bar1"), wxEVT_KEY_UP, row.key, row.modifiers);
    });
    EXPECT_EQ(sent, row.sends ? kApplyWords : "");
    EXPECT_EQ(rig.V().Distortion, row.value);
    EXPECT_EQ(rig.Value("ctrl_bar1"), row.value);
  }
}

TEST_F(OpenedWindow, NumberIsAskedForUntilItFits) {
  const struct {
    const char* entered;
    bool fits;
  } rows[] = {{"151", false}, {"1.5", false}, {"", false}, {" -77 ", true}};
  const ModalScript script("NumberEntry", [&rows](wxDialog& dialog) {
    for (const auto& row : rows) {
      ControlOf<wxTextCtrl>(dialog, "number").ChangeValue(row.entered);
      Send(ControlOf(dialog, "OKButton"), wxCommandEvent(wxEVT_BUTTON));
      EXPECT_EQ(dialog.IsShown(), !row.fits) << row.entered;
      EXPECT_TRUE(ControlOf(dialog, "fault").IsShown());
    }
  });
  EXPECT_EQ(rig.SentBy([&] { SendKey(rig.Find("ctrl_bar1"), wxEVT_CHAR_HOOK, WXK_F2); }),
            kApplyWords);
  EXPECT_EQ(rig.Text("ctrl_value1"), "-77%");
}

TEST_F(OpenedWindow, WheelMovesWhatHasTheFocusAndSendsOnce) {
  const WheelGuard guard;
  auto& bar = rig.Find("ctrl_bar1");
  wxMouseEvent notch(wxEVT_MOUSEWHEEL);
  notch.m_wheelDelta = 120;
  notch.m_wheelRotation = 240;
  notch.SetEventObject(&bar);
  Handle(bar, notch);
  EXPECT_EQ(rig.V().Distortion, 0) << "the focus is elsewhere";
  rig.window->Raise();
  bar.SetFocus();
  ASSERT_TRUE(SettleUntil([&] { return rig.window->IsActive() && bar.HasFocus(); }));
  Handle(bar, notch);
  notch.m_wheelRotation = 60;
  for (int half = 0; half < 2; ++half) Handle(bar, notch);
  EXPECT_EQ(rig.V().Distortion, 3);
  EXPECT_TRUE(
      SettleUntil([&] { return CommandsOf(rig.server.Snapshot().ToolFrames) == kApplyWords; }));
  EXPECT_EQ(rig.Links(), 1U);
}

TEST(MainControls, RealMouseAndKeysReachTheSlider) {
  WindowRig rig;
  rig.Open().Raise();
  auto& bar = rig.Find<wxSlider>("ctrl_bar1");
  const wxPoint middle = bar.ClientToScreen(wxPoint(bar.GetSize().x / 2, bar.GetSize().y / 2));
  wxUIActionSimulator hand;
  hand.MouseDragDrop(middle.x, middle.y, middle.x + bar.GetSize().x / 4, middle.y);
  ASSERT_TRUE(SettleUntil([&] { return rig.Links() == 1; })) << "the release sends";
  EXPECT_GT(rig.V().Distortion, 20);
  const int dragged = rig.V().Distortion;
  ASSERT_TRUE(SettleUntil([&] { return bar.HasFocus(); })) << "focus is back";
  hand.Char(WXK_RIGHT);
  ASSERT_TRUE(SettleUntil([&] { return rig.Links() == 2; }));
  EXPECT_EQ(rig.V().Distortion, dragged + 1);
}

TEST(MainControls, IconsAndSymmetryBoxesReachTheModel) {
  WindowRig rig;
  rig.H().Distortion = 20;
  rig.H().Optical = 4;
  rig.Open();
  rig.SelectGroup(1);
  EXPECT_EQ(rig.Press("iconbutton2"), "") << "only shows";
  EXPECT_EQ(dynamic_cast<wxBitmapButton*>(&rig.Find("iconbutton2")), nullptr);
  EXPECT_EQ(rig.Press("iconbutton3"), kApplyWords);
  EXPECT_EQ(rig.Value("ctrl_bar1"), 32) << "the horizontal slider shows the opposite sign";
  rig.SelectGroup(2);
  EXPECT_EQ(rig.Check("lr_symm", true), kApplyWords);
  EXPECT_EQ(rig.H().Stadium - rig.V().Stadium, 1);
  rig.Check("ud_symm", true);
  EXPECT_EQ(rig.V().Stadium, 1);
}

}  // namespace
}  // namespace warpline
