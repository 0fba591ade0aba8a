#include "tests/ui/dialog_rig.h"
#include "ui/LSSwedit.h"
#include "ui/open_dialogs.h"

// The curve editor's window and the shape dialog: what reaches the editor, and what the controls
// show of it.

namespace warpline {
namespace {

CurveDefinition FourPoints() {
  CurveDefinition curve;
  curve.CorreFixed = 0;
  curve.CorrePointNum = 4;
  curve.CorreDataPts = {{{0, 0.8}, {0.25, 0.9}, {0.75, 0.9}, {1, 0.8}}};
  return curve;
}

class EditorWindow : public testing::Test {
 protected:
  EditorWindow() {
    rig.global.Correction.ScreenType = kOtherScreens;
    rig.global.Settings.TestPattern = 0;
    Live() = FourPoints();
    rig.Open();
  }

  void Create() {
    editor =
        new LSSwedit(rig.window, kVertical,
                     {rig.global,
                      rig.files,
                      rig.messages,
                      {[this](wxWindow*, const fs::path&) { return shape_file; },
                       [this](wxWindow*, const fs::path&, const fs::path&) { return shape_file; }},
                      rig.temp.Path(),
                      [this] { ++applied; }});
  }

  LSSwedit& Open() {
    Create();
    editor->Show();
    WindowRig::SettleUntil([this] { return Graph().IsShownOnScreen(); });
    return *editor;
  }

  WaveGraph& Graph() { return ControlOf<WaveGraph>(*editor, "WaveGraph"); }
  CurveDefinition& Live() { return rig.global.Correction.Curves[kVertical]; }
  const CurveDefinition& Edited() const { return editor->Editor().Curve(); }
  std::string Figure(const std::string& name) {
    return ControlOf<wxTextCtrl>(*editor, name).GetValue().utf8_string();
  }
  bool CanApply() { return ControlOf(*editor, "applybutton").IsEnabled(); }
  wxPoint OnScreen(GraphPosition position) {
    return Graph().ClientToScreen(Graph().PixelOf(position));
  }

  void Key(int key, bool shift = false) {
    wxKeyEvent event(wxEVT_KEY_DOWN);
    event.m_keyCode = key;
    event.SetShiftDown(shift);
    Graph().ProcessWindowEvent(event);
    WindowRig::Settle();
  }

  void SetPoints(int count) {
    ControlOf<wxSpinCtrl>(*editor, "point_num").SetValue(count);
    wxWindow& control = ControlOf(*editor, "point_num");
    wxSpinEvent event(wxEVT_SPINCTRL, control.GetId());
    event.SetPosition(count);
    SendTo(control, event, count);
  }

  // Every control shows what the editor holds.
  void ExpectShown() {
    EXPECT_EQ(ControlOf<wxSpinCtrl>(*editor, "point_num").GetValue(), Edited().CorrePointNum);
    EXPECT_EQ(ControlOf<wxChoice>(*editor, "line_interp").GetSelection() + 1, Edited().CorreInterp);
    EXPECT_EQ(ControlOf<wxCheckBox>(*editor, "fixedpos").GetValue(), Edited().CorreFixed != 0);
    EXPECT_EQ(ControlOf<wxCheckBox>(*editor, "symmetry").GetValue(), Edited().CorreSymmetry != 0);
    EXPECT_EQ(CanApply(), editor->Editor().Changed());
  }

  WindowRig rig;
  LSSwedit* editor = nullptr;  // the main window's child, gone with it
  fs::path shape_file;         // what the user chooses; empty: cancels
  int applied = 0;
};

TEST_F(EditorWindow, MouseDragsAPoint) {
  Open();
  ExpectShown();
  EXPECT_FALSE(CanApply());
  wxUIActionSimulator mouse;
  mouse.MouseMove(OnScreen({125, 75}));
  mouse.MouseDown();
  ASSERT_TRUE(WindowRig::SettleUntil([this] { return editor->Editor().Dragging(); }));
  EXPECT_EQ(Figure("posx_val"), "0.250");
  mouse.MouseMove(OnScreen({150, 60}));
  EXPECT_TRUE(WindowRig::SettleUntil([this] { return Figure("posy_val") == "0.930"; }));
  EXPECT_EQ(Figure("posx_val"), "0.300");
  mouse.MouseMove(OnScreen({150, 10}));
  EXPECT_TRUE(WindowRig::SettleUntil([this] { return Figure("posy_val") == "1.000"; }));
  mouse.MouseUp();
  EXPECT_TRUE(WindowRig::SettleUntil([this] { return !editor->Editor().Dragging(); }));
  mouse.MouseMove(OnScreen({300, 100}));
  WindowRig::Settle();
  EXPECT_EQ(Live(), FourPoints()) << "before Apply";

  PressIn(*editor, "applybutton");
  CurveDefinition wanted = FourPoints();
  wanted.CorreDataPts[1] = {0.3, 1};
  EXPECT_EQ(Live(), wanted);
  EXPECT_EQ(applied, 1);
  EXPECT_FALSE(CanApply());
}

TEST_F(EditorWindow, MouseBesideEveryPointGrabsNone) {
  Open();
  wxUIActionSimulator mouse;
  mouse.MouseMove(OnScreen({125, 75}));
  mouse.MouseClick();
  ASSERT_TRUE(WindowRig::SettleUntil([this] { return Figure("posx_val") == "0.250"; }));
  mouse.MouseMove(OnScreen({140, 75}));
  mouse.MouseClick();
  EXPECT_TRUE(WindowRig::SettleUntil([this] { return Figure("posx_val").empty(); }));
  EXPECT_FALSE(CanApply());
}

TEST_F(EditorWindow, KeysChooseAndMovePoints) {
  Open();
  Graph().SetFocus();
  Key(WXK_TAB);
  EXPECT_EQ(Figure("posx_val"), "0.000");
  Key(WXK_TAB);
  EXPECT_EQ(Figure("posx_val"), "0.250");
  Key(WXK_RIGHT);
  Key(WXK_UP, true);
  EXPECT_EQ(Figure("posx_val"), "0.252");
  EXPECT_EQ(Figure("posy_val"), "0.920");
  Key(WXK_LEFT, true);
  Key(WXK_DOWN);
  EXPECT_EQ(Figure("posx_val"), "0.232");
  EXPECT_EQ(Figure("posy_val"), "0.918");
  EXPECT_TRUE(CanApply());
  for (int i = 0; i < 2; ++i) Key(WXK_TAB);
  EXPECT_TRUE(Graph().HasFocus());
  Key(WXK_TAB);
  EXPECT_EQ(Figure("posx_val"), "") << "left behind";
  EXPECT_TRUE(WindowRig::SettleUntil([this] { return !Graph().HasFocus(); }));
  Graph().SetFocus();
  Key(WXK_TAB, true);
  EXPECT_EQ(Figure("posx_val"), "1.000");
}

TEST_F(EditorWindow, EveryControlReachesTheEditorAndShowsIt) {
  const struct {
    const char* name;
    std::function<void()> act;
    CurveDefinition wanted;  // of which flags, count and type are compared, and the points named
    CurvePoint second;
  } rows[] = {
      {"more points", [this] { SetPoints(5); }, {0, 0, 5, 1, {}}, {0.25, 0.9}},
      {"quartic raises the count",
       [this] { ChooseIn(*editor, "line_interp", 3); },
       {0, 0, 5, 4, {}},
       {0.25, 0.9}},
      {"fixed", [this] { CheckIn(*editor, "fixedpos", true); }, {1, 0, 4, 1, {}}, {0.25, 0.9}},
      {"symmetric", [this] { CheckIn(*editor, "symmetry", true); }, {0, 1, 4, 1, {}}, {0.25, 0.9}},
      {"normalized", [this] { PressIn(*editor, "regularize"); }, {0, 0, 4, 1, {}}, {0.25, 1}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Open();
    row.act();
    ExpectShown();
    EXPECT_TRUE(CanApply());
    EXPECT_EQ(Edited().CorreFixed, row.wanted.CorreFixed);
    EXPECT_EQ(Edited().CorreSymmetry, row.wanted.CorreSymmetry);
    EXPECT_EQ(Edited().CorrePointNum, row.wanted.CorrePointNum);
    EXPECT_EQ(Edited().CorreInterp, row.wanted.CorreInterp);
    EXPECT_NEAR(Edited().CorreDataPts[1].X, row.second.X, 1e-9);
    EXPECT_NEAR(Edited().CorreDataPts[1].Y, row.second.Y, 1e-9);
    editor->Destroy();
    WindowRig::Settle();
  }
}

TEST_F(EditorWindow, CountsBelowTheTypesFewestAreNotOffered) {
  Live().CorrePointNum = 5;
  Live().CorreDataPts = {{{0, 0.8}, {0.25, 0.9}, {0.5, 0.95}, {0.75, 0.9}, {1, 0.8}}};
  Open();
  auto& count = ControlOf<wxSpinCtrl>(*editor, "point_num");
  EXPECT_EQ(count.GetMin(), 2);
  ChooseIn(*editor, "line_interp", 3);
  EXPECT_EQ(count.GetMin(), 5);
  SetPoints(3);
  EXPECT_EQ(Edited().CorrePointNum, 5);
  ExpectShown();
}

TEST_F(EditorWindow, EachWayOutAppliesOrNot) {
  const struct {
    const char* name;
    std::function<void(LSSwedit&)> leave;
    bool changed;
    bool applies;
  } rows[] = {
      {"OK", [](LSSwedit& w) { PressIn(w, "OKButton"); }, true, true},
      {"OK without a change", [](LSSwedit& w) { PressIn(w, "OKButton"); }, false, false},
      {"Cancel", [](LSSwedit& w) { PressIn(w, "CancelButton"); }, true, false},
      {"close box", [](LSSwedit& w) { w.Close(); }, true, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    applied = 0;
    Live() = FourPoints();
    Create();
    bool left = false;
    const ModalScript script("LSSwedit", [&](wxDialog&) {
      if (row.changed) CheckIn(*editor, "fixedpos", true);
      row.leave(*editor);
      left = !editor->IsModal() || !editor->IsShown();
    });
    editor->ShowModal();
    EXPECT_TRUE(left);
    EXPECT_EQ(applied, row.applies ? 1 : 0);
    EXPECT_EQ(Live().CorreFixed, row.applies ? 1 : 0);
    editor->Destroy();
    WindowRig::Settle();
  }
}

TEST_F(EditorWindow, ShapeFilesGoOutAndComeBack) {
  Open();
  shape_file = rig.temp / "valley";
  PressIn(*editor, "exportbutton");
  ASSERT_TRUE(fs::exists(rig.temp / "valley.wls"));
  shape_file = rig.temp / "valley.wls";
  ChooseIn(*editor, "line_interp", 2);
  SetPoints(9);
  PressIn(*editor, "importbutton");
  EXPECT_EQ(Edited(), FourPoints());
  ExpectShown();

  shape_file = rig.temp.Write("broken.wls", "nothing of ours\r\n");
  PressIn(*editor, "importbutton");
  EXPECT_EQ(rig.display.Texts(), std::vector<std::string>{"The file format is corrupted."});
  EXPECT_EQ(Edited(), FourPoints());
  shape_file.clear();
  PressIn(*editor, "importbutton");
  PressIn(*editor, "exportbutton");
  EXPECT_EQ(rig.display.messages.size(), 1U) << "cancelled dialogs say nothing";
}

TEST_F(EditorWindow, ShapeDialogSeedsTheCurve) {
  const struct {
    const char* name;
    int entry;
    const char* button;  // "" is the close box
    int points;          // 0: the curve stays
    int type;
  } rows[] = {
      {"arch", 0, "OKButton", 3, kQuadratic},
      {"line", 1, "OKButton", 2, kStraightLine},
      {"triangle", 2, "OKButton", 3, kStraightLine},
      {"cancelled", 2, "CancelButton", 0, 0},
      {"closed", 2, "", 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Live() = FourPoints();
    Open();
    const ModalScript script("LSSshape", [&row](wxDialog& dialog) {
      auto& list = ControlOf<wxChoice>(dialog, "Combo1");
      EXPECT_EQ(list.GetSelection(), 0);
      EXPECT_EQ(list.GetCount(), 3U);
      list.SetSelection(row.entry);
      if (*row.button != '\0') {
        PressIn(dialog, row.button);
      } else {
        dialog.Close();
      }
    });
    PressIn(*editor, "initselect");
    EXPECT_EQ(CanApply(), row.points != 0);
    EXPECT_EQ(Edited().CorrePointNum, row.points == 0 ? 4 : row.points);
    EXPECT_EQ(Edited().CorreInterp, row.points == 0 ? kStraightLine : row.type);
    ExpectShown();
    editor->Destroy();
    WindowRig::Settle();
  }
}

TEST(EditorFromMain, EditsTheShownGroupsAxisAndCountsAsAChange) {
  WindowRig rig;
  rig.global.Correction.ScreenType = kOtherScreens;
  rig.dialogs = CreateMainDialogs({rig.global,
                                   rig.files,
                                   rig.commands,
                                   rig.messages,
                                   rig.display,
                                   rig.busy,
                                   {},
                                   {},
                                   rig.temp.Path(),
                                   rig.temp.Path(),
                                   {}});
  rig.Open();
  for (const int group : {0, 1}) {
    SCOPED_TRACE(group);
    rig.SelectGroup(group);
    const CurveDefinition before = rig.global.Correction.Curves[AxisOfGroup(group)];
    const ModalScript script("LSSwedit", [](wxDialog& dialog) {
      CheckIn(dialog, "fixedpos", false);
      PressIn(dialog, "OKButton");
    });
    rig.Press("corre_edit");
    EXPECT_NE(rig.global.Correction.Curves[AxisOfGroup(group)], before);
  }
  EXPECT_TRUE(rig.window->Controller().HasUnsavedChanges());
}

}  // namespace
}  // namespace warpline
