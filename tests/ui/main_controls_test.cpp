#include <wx/uiaction.h>

#include "tests/ui/window_rig.h"

// The upper part of the main window: screen list, groups, sliders, keys, icons, symmetry.

namespace warpline {
namespace {

TEST(MainControls, GroupsShowTheirRowsAndExtras) {
  WindowRig rig;
  rig.H() = {40, -10, 7, 8, -9, 1};
  rig.V() = {0, 5, -70, -80, 90, 0};
  rig.global.Correction.ScreenType = kOtherScreens;
  rig.dialogs.curve_editor = [](wxWindow*, Axis, const std::function<void()>&) {};
  rig.Open();
  const struct {
    int group;
    int values[2];
    const char* texts[2];
    bool enabled[2];
    const char* icon;
    bool symmetry;
    bool editor;
  } rows[] = {
      {0, {5, 0}, {"5", "0%"}, {false, true}, "iconbutton0", false, true},
      {1, {40, 10}, {"40%", "10"}, {true, true}, "iconbutton3", false, true},
      {2, {7, -70}, {"7", "-70"}, {true, true}, "iconbutton4", true, false},
      {3, {8, -80}, {"8", "-80"}, {true, true}, "iconbutton7", false, false},
      {4, {9, 90}, {"9", "90"}, {true, true}, "iconbutton8", false, false},
  };
  const wxPoint place = rig.Find<wxWindow>("ctrl_bar1").GetPosition();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.group);
    rig.SelectGroup(row.group);
    for (const int slider : {0, 1}) {
      const std::string number = std::to_string(slider);
      EXPECT_EQ(rig.Value("ctrl_bar" + number), row.values[slider]);
      EXPECT_EQ(rig.Text("ctrl_value" + number), row.texts[slider]);
      EXPECT_EQ(rig.Enabled("ctrl_bar" + number), row.enabled[slider]);
    }
    EXPECT_TRUE(rig.Shown(row.icon));
    EXPECT_EQ(rig.Shown("lr_symm"), row.symmetry);
    EXPECT_EQ(rig.Shown("ud_symm"), row.symmetry);
    EXPECT_EQ(rig.Shown("corre_edit"), row.editor);
    EXPECT_EQ(rig.Find<wxWindow>("ctrl_bar1").GetPosition(), place) << "the layout jumps";
  }
  EXPECT_EQ(rig.Links(), 0U);
}

TEST(MainControls, MovingASliderChangesTheModelAndSendsOnRelease) {
  WindowRig rig;
  rig.Open();
  EXPECT_EQ(rig.SentBy([&] { rig.Move("ctrl_bar1", 30); }), "");
  EXPECT_EQ(rig.V().Distortion, 30);
  EXPECT_EQ(rig.Text("ctrl_value1"), "30%");
  EXPECT_TRUE(rig.Enabled("ctrl_bar0")) << "a distortion has an optical centre";
  rig.Find<wxWindow>("ctrl_bar1").SetFocus();
  EXPECT_EQ(rig.SentBy([&] { rig.ReleaseMouse("ctrl_bar1"); }), kApplyWords);
  EXPECT_EQ(wxWindow::FindFocus(), &rig.Find<wxWindow>("ctrl_bar1"));
  EXPECT_TRUE(WindowRig::SettleUntil([&] { return rig.server.Snapshot().OpenLinks == 0; }));

  rig.SelectGroup(4);
  rig.Move("ctrl_bar0", 1000);
  EXPECT_EQ(rig.H().Position, -1000);
  EXPECT_EQ(rig.Text("ctrl_value0"), "1000");

  rig.Pick("menu_opt_auto_off");
  EXPECT_EQ(rig.SentBy([&] { rig.ReleaseMouse("ctrl_bar0"); }), "");
}

TEST(MainControls, ArrowKeysStepAndSendUnlessShiftIsHeld) {
  WindowRig rig;
  rig.Open();
  const struct {
    const char* name;
    int key;
    int modifiers;
    int value;
    bool sends;
  } rows[] = {
      {"right", WXK_RIGHT, wxMOD_NONE, 1, true},
      {"up", WXK_UP, wxMOD_NONE, 2, true},
      {"left", WXK_LEFT, wxMOD_NONE, 1, true},
      {"down", WXK_DOWN, wxMOD_NONE, 0, true},
      {"right under Shift", WXK_RIGHT, wxMOD_SHIFT, 1, false},
      {"again", WXK_RIGHT, wxMOD_SHIFT, 2, false},
      {"Shift goes up", WXK_SHIFT, wxMOD_SHIFT, 2, true},
      {"no arrow", WXK_TAB, wxMOD_NONE, 2, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string sent = rig.SentBy([&] {
      rig.KeyDown("ctrl_bar1", row.key, row.modifiers);
      rig.KeyUp("ctrl_bar1", row.key, row.modifiers);
    });
    EXPECT_EQ(sent, row.sends ? kApplyWords : "");
    EXPECT_EQ(rig.V().Distortion, row.value);
    EXPECT_EQ(rig.Value("ctrl_bar1"), row.value);
  }
}

TEST(MainControls, RealMouseAndKeysReachTheSlider) {
  WindowRig rig;
  LSSmain& window = rig.Open();
  window.Raise();
  auto& bar = rig.Find<wxSlider>("ctrl_bar1");
  const wxPoint middle = bar.ClientToScreen(wxPoint(bar.GetSize().x / 2, bar.GetSize().y / 2));
  wxUIActionSimulator hand;
  hand.MouseDragDrop(middle.x, middle.y, middle.x + bar.GetSize().x / 4, middle.y);
  ASSERT_TRUE(WindowRig::SettleUntil([&] { return rig.Links() == 1; })) << "the release sends";
  EXPECT_GT(rig.V().Distortion, 20);
  EXPECT_EQ(rig.LastCommands(), kApplyWords);

  const int dragged = rig.V().Distortion;
  ASSERT_TRUE(WindowRig::SettleUntil([&] { return bar.HasFocus(); })) << "focus is back";
  hand.Char(WXK_RIGHT);
  ASSERT_TRUE(WindowRig::SettleUntil([&] { return rig.Links() == 2; }));
  EXPECT_EQ(rig.V().Distortion, dragged + 1);
  hand.KeyDown(WXK_SHIFT);
  hand.KeyDown(WXK_RIGHT, wxMOD_SHIFT);
  hand.KeyUp(WXK_RIGHT, wxMOD_SHIFT);
  ASSERT_TRUE(WindowRig::SettleUntil([&] { return rig.V().Distortion == dragged + 2; }));
  hand.KeyUp(WXK_SHIFT);
  ASSERT_TRUE(WindowRig::SettleUntil([&] { return rig.Links() >= 3; }));
}

TEST(MainControls, ValueOutsideTheSliderStaysUntilItIsMoved) {
  WindowRig rig;
  rig.V().Distortion = 200;
  rig.Open();
  EXPECT_EQ(rig.Value("ctrl_bar1"), 150);
  EXPECT_EQ(rig.Text("ctrl_value1"), "200%");
  rig.ReleaseMouse("ctrl_bar1");
  EXPECT_EQ(rig.V().Distortion, 200);
  rig.Move("ctrl_bar1", 149);
  EXPECT_EQ(rig.V().Distortion, 149);
}

TEST(MainControls, OpticalIconResetsAndOthersOnlyShow) {
  WindowRig rig;
  rig.H().Distortion = 20;
  rig.H().Optical = 4;
  rig.Open();
  rig.SelectGroup(1);
  EXPECT_EQ(rig.SentBy([&] { rig.Press("iconbutton2"); }), "") << "the distortion's picture";
  EXPECT_EQ(rig.SentBy([&] { rig.Press("iconbutton3"); }), kApplyWords);
  EXPECT_EQ(rig.H().Optical, -32);
  EXPECT_EQ(rig.Value("ctrl_bar1"), 32) << "the horizontal slider shows the opposite sign";
  rig.SelectGroup(2);
  EXPECT_EQ(rig.SentBy([&] { rig.Press("iconbutton4"); }), "");
}

TEST(MainControls, SymmetryBoxesStoreAndSend) {
  WindowRig rig;
  rig.H().Optical = 3;
  rig.Open();
  rig.SelectGroup(2);
  EXPECT_EQ(rig.SentBy([&] { rig.Check("lr_symm", true); }), kApplyWords);
  EXPECT_EQ(rig.H().Stadium, 1);
  EXPECT_EQ(rig.V().Stadium, 0);
  rig.Pick("menu_opt_auto_off");
  EXPECT_EQ(rig.SentBy([&] { rig.Check("ud_symm", true); }), "");
  EXPECT_EQ(rig.V().Stadium, 1);
  EXPECT_EQ(rig.H().Optical, 3);
}

TEST(MainControls, ScreenTypeAsksClearsAndInitializes) {
  WindowRig rig;
  rig.global.CurrentFile = rig.temp / "old.wlt";
  rig.Open();
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - old.wlt");
  rig.Move("ctrl_bar1", 30);

  rig.display.answers = {MessageAnswer::kCancel};
  EXPECT_EQ(rig.SentBy([&] { rig.Choose("scr_select", 2); }), "");
  EXPECT_EQ(rig.display.Texts(), std::vector<std::string>{"Do you want to save the change?"});
  EXPECT_EQ(rig.Find<wxChoice>("scr_select").GetSelection(), 0) << "the list goes back";
  EXPECT_EQ(rig.V().Distortion, 30);

  rig.display.answers = {MessageAnswer::kNo};
  EXPECT_EQ(rig.SentBy([&] { rig.Choose("scr_select", 2); }), kInitializeWords);
  EXPECT_EQ(rig.global.Correction.ScreenType, 2);
  EXPECT_EQ(rig.V().Distortion, 0);
  EXPECT_EQ(rig.Text("ctrl_value1"), "0%");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0");

  rig.Move("ctrl_bar1", 10);
  rig.display.answers = {MessageAnswer::kYes};
  rig.choices = {rig.temp / "kept"};
  EXPECT_EQ(rig.SentBy([&] { rig.Choose("scr_select", 5); }), kInitializeWords);
  EXPECT_TRUE(fs::exists(rig.temp / "kept.wlt"));
  EXPECT_EQ(rig.global.Correction.ScreenType, 5);
}

TEST(MainControls, CurveEditorOpensForTheAxisShown) {
  WindowRig rig;
  std::vector<Axis> opened;
  rig.dialogs.curve_editor = [&opened](wxWindow*, Axis axis, const std::function<void()>&) {
    opened.push_back(axis);
  };
  rig.Open();
  EXPECT_FALSE(rig.Enabled("corre_edit")) << "the other screen types have fixed curves";
  rig.Choose("scr_select", kOtherScreens);
  EXPECT_TRUE(rig.Enabled("corre_edit"));
  rig.Press("corre_edit");
  rig.SelectGroup(1);
  rig.Press("corre_edit");
  EXPECT_EQ(opened, (std::vector<Axis>{kVertical, kHorizontal}));
}

}  // namespace
}  // namespace warpline
