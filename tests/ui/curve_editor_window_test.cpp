#include "tests/ui/window_rig.h"
#include "ui/LSSwedit.h"

// The curve editor's window and the shape dialog: what reaches the editor, and what the controls
// show of it.

namespace warpline {
namespace {

CurveDefinition FourPoints() {
  CurveDefinition curve;
  curve.CorreFixed = 0;
  curve.CorrePointNum = 4;
  curve.CorreDataPts = {{{0, 0.8}, {0.25, 0.9}, {0.75, 0.85}, {1, 0.8}}};
  return curve;
}

class EditorWindow : public testing::Test {
 protected:
  EditorWindow() {
    rig.global.Correction.ScreenType = kOtherScreens;
    rig.global.Settings.TestPattern = 0;
    rig.Open();
  }

  void Create() {
    Live() = FourPoints();
    editor = new LSSwedit(
        rig.window, kVertical,
        {rig.engine, rig.busy, rig.Choosers(), rig.temp.Path(), [this](bool) { ++applied; }});
  }
  void Destroy() {
    editor->Destroy();
    Settle();
  }

  void Open() {
    Create();
    editor->Show();
    SettleUntil([this] { return Graph().IsShownOnScreen(); });
  }

  WaveGraph& Graph() { return ControlOf<WaveGraph>(*editor, "WaveGraph"); }
  CurveDefinition& Live() { return rig.global.Correction.Curves[kVertical]; }
  const CurveDefinition& Edited() const { return editor->Editor().Curve(); }
  std::string Figures() { return TextOf(*editor, "posx_val") + " " + TextOf(*editor, "posy_val"); }
  bool CanApply() { return ControlOf(*editor, "applybutton").IsEnabled(); }
  wxPoint OnScreen(GraphPosition at) { return Graph().ClientToScreen(Graph().PixelOf(at)); }

  std::string FiguresAfter(std::initializer_list<int> keys, int modifiers = 0) {
    for (const int key : keys) SendKey(Graph(), wxEVT_KEY_DOWN, key, modifiers);
    return Figures();
  }

  void SetPoints(int count) {
    auto& control = ControlOf<wxSpinCtrl>(*editor, "point_num");
    control.SetValue(count);
    wxSpinEvent event(wxEVT_SPINCTRL, control.GetId());
    event.SetPosition(count);
    event.SetEventObject(&control);
    Handle(control, event);
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
  int applied = 0;
};

TEST_F(EditorWindow, MouseDragsAPoint) {
  Open();
  ExpectShown();
  EXPECT_FALSE(CanApply());
  wxUIActionSimulator mouse;
  const auto shows = [this](const char* figures) {
    return SettleUntil([&] { return Figures() == figures; });
  };
  mouse.MouseMove(OnScreen({125, 75}));
  mouse.MouseDown();
  ASSERT_TRUE(SettleUntil([this] { return editor->Editor().Dragging(); }));
  EXPECT_TRUE(shows("0.250 0.900"));
  mouse.MouseMove(OnScreen({150, 60}));
  EXPECT_TRUE(shows("0.300 0.930"));
  mouse.MouseMove(OnScreen({150, 10}));
  EXPECT_TRUE(shows("0.300 1.000"));
  mouse.MouseUp();
  EXPECT_TRUE(SettleUntil([this] { return !editor->Editor().Dragging(); }));
  mouse.MouseMove(OnScreen({140, 100}));
  mouse.MouseClick();
  EXPECT_TRUE(shows(" ")) << "a click beside the point lets go";
  EXPECT_EQ(Live(), FourPoints()) << "before Apply";

  PressIn(*editor, "applybutton");
  CurveDefinition wanted = FourPoints();
  wanted.CorreDataPts[1] = {0.3, 1};
  EXPECT_EQ(Live(), wanted);
  EXPECT_EQ(applied, 1);
  EXPECT_FALSE(CanApply());
}

TEST_F(EditorWindow, EscapeEndsADragAndADoubleClickTypes) {
  Open();
  const auto event = [this](wxEventType type, GraphPosition at) {
    wxMouseEvent mouse(type);
    mouse.SetPosition(Graph().PixelOf(at));
    mouse.m_leftDown = type != wxEVT_LEFT_UP;
    Handle(Graph(), mouse);
  };
  wxUIActionSimulator hand;
  hand.MouseMove(OnScreen({125, 75}));
  hand.MouseDown();
  hand.MouseMove(OnScreen({150, 60}));
  EXPECT_TRUE(SettleUntil([&] { return Figures() == "0.300 0.930"; }));
  SendKey(Graph(), wxEVT_CHAR_HOOK, WXK_ESCAPE);
  hand.MouseUp();
  EXPECT_EQ(Edited(), FourPoints());
  EXPECT_TRUE(editor->IsShown());
  event(wxEVT_LEFT_DCLICK, {125, 75});
  auto& x = ControlOf<wxTextCtrl>(*editor, "posx_val");
  EXPECT_TRUE(SettleUntil([&x] { return x.HasFocus(); }));
  EXPECT_EQ(x.GetStringSelection(), "0.250");
  const std::pair<const char*, const char*> typed[] = {
      {"0,3", "0.300 0.900"}, {"2", "0.720 0.900"}, {"left", "left 0.900"}};
  for (const auto& [text, figures] : typed) {
    x.ChangeValue(text);
    Send(x, wxCommandEvent(wxEVT_TEXT_ENTER));
    EXPECT_EQ(Figures(), figures);
  }
  EXPECT_EQ(ControlOf(*editor, "note").GetLabel(), "Enter a number from 0.030 to 0.720.");
  Graph().SetFocus();
  EXPECT_TRUE(SettleUntil([this] { return Figures() == "0.720 0.900"; }));
}

TEST_F(EditorWindow, EnterTakesThePointCountAndStays) {
  Open();
  auto& count = ControlOf<wxSpinCtrl>(*editor, "point_num");
  count.SetValue("6");
  SendKey(count, wxEVT_CHAR_HOOK, WXK_RETURN);
  EXPECT_EQ(Edited().CorrePointNum, 6);
  EXPECT_TRUE(editor->IsShown());
}

TEST_F(EditorWindow, LiveAppliesEachGestureAndCancelTakesThemBack) {
  Open();
  Graph().SetFocus();
  CheckIn(*editor, "live", true);
  FiguresAfter({WXK_TAB, WXK_UP, WXK_UP});
  EXPECT_EQ(applied, 0) << "the key is held";
  SendKey(Graph(), wxEVT_KEY_UP, WXK_UP);
  EXPECT_EQ(applied, 1);
  EXPECT_EQ(Live(), Edited());
  PressIn(*editor, "reverse");
  EXPECT_EQ(applied, 2);
  EXPECT_EQ(Live(), Edited());
  EXPECT_FALSE(CanApply());
  SetPoints(9);
  SendKey(ControlOf(*editor, "point_num"), wxEVT_CHAR_HOOK, 'Z', wxMOD_CONTROL);
  PressIn(*editor, "undobutton");
  PressIn(*editor, "undobutton");
  EXPECT_EQ(Live(), FourPoints());
  EXPECT_FALSE(ControlOf(*editor, "undobutton").IsEnabled());
  SendKey(Graph(), wxEVT_CHAR_HOOK, 'Z', wxMOD_CONTROL | wxMOD_SHIFT);
  SendKey(Graph(), wxEVT_CHAR_HOOK, 'Y', wxMOD_CONTROL);
  EXPECT_EQ(Edited().CorreDataPts[3].Y, 0.804);
  ExpectShown();
  applied = 2;
  PressIn(*editor, "CancelButton");
  EXPECT_EQ(applied, 3);
  EXPECT_EQ(Live(), FourPoints());
  Destroy();
  rig.global.Settings.AutoApply = 0;
  Open();
  EXPECT_FALSE(ControlOf(*editor, "live").IsEnabled()) << "without Real Time";
}

TEST_F(EditorWindow, KeysChooseAndMovePoints) {
  Open();
  Graph().SetFocus();
  EXPECT_EQ(FiguresAfter({WXK_TAB}), "0.000 0.800");
  EXPECT_EQ(FiguresAfter({WXK_TAB, WXK_RIGHT}), "0.252 0.900");
  EXPECT_EQ(FiguresAfter({WXK_UP}, wxMOD_SHIFT), "0.252 0.920");
  EXPECT_EQ(FiguresAfter({WXK_LEFT}, wxMOD_SHIFT), "0.232 0.920");
  EXPECT_EQ(FiguresAfter({WXK_DOWN}), "0.232 0.918");
  EXPECT_TRUE(CanApply());
  FiguresAfter({WXK_TAB, WXK_TAB});
  EXPECT_TRUE(Graph().HasFocus());
  EXPECT_EQ(FiguresAfter({WXK_TAB}), " ") << "left behind";
  EXPECT_TRUE(SettleUntil([this] { return !Graph().HasFocus(); }));
  Graph().SetFocus();
  EXPECT_EQ(FiguresAfter({WXK_TAB}, wxMOD_SHIFT), "1.000 0.800");
}

TEST_F(EditorWindow, EveryControlReachesTheEditorAndShowsIt) {
  const struct {
    const char* name;
    std::function<void()> act;
    const char* held;
    int fewest;
  } rows[] = {
      {"more points", [this] { SetPoints(5); }, "0 0 5 1 0.25 0.90", 2},
      {"quartic", [this] { ChooseIn(*editor, "line_interp", 3); }, "0 0 5 4 0.25 0.90", 5},
      {"fixed", [this] { CheckIn(*editor, "fixedpos", true); }, "1 0 4 1 0.25 0.90", 2},
      {"symmetric", [this] { CheckIn(*editor, "symmetry", true); }, "0 1 4 1 0.25 0.90", 2},
      {"normalized", [this] { PressIn(*editor, "regularize"); }, "0 0 4 1 0.25 1.00", 2},
      {"reversed", [this] { PressIn(*editor, "reverse"); }, "0 0 4 1 0.25 0.85", 2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Open();
    row.act();
    ExpectShown();
    EXPECT_TRUE(CanApply());
    const CurveDefinition& curve = Edited();
    const CurvePoint second = curve.CorreDataPts.at(1);
    EXPECT_EQ(wxString::Format("%d %d %d %d %.2f %.2f", curve.CorreFixed, curve.CorreSymmetry,
                               curve.CorrePointNum, curve.CorreInterp, second.X, second.Y),
              row.held);
    EXPECT_EQ(ControlOf<wxSpinCtrl>(*editor, "point_num").GetMin(), row.fewest);
    Destroy();
  }
}

TEST_F(EditorWindow, EachWayOutAppliesOrNot) {
  const struct {
    const char* button;  // "" is the close box
    bool changed, applies;
    int typed;  // point count, not confirmed when the dialog is left
  } rows[] = {{"OKButton", true, true, 7},
              {"OKButton", false, false, 4},
              {"CancelButton", true, false, 7},
              {"", true, false, 4}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.button);
    applied = 0;
    Create();
    const ModalScript script("LSSwedit", [&](wxDialog& dialog) {
      if (row.changed) CheckIn(dialog, "fixedpos", true);
      ControlOf<wxSpinCtrl>(dialog, "point_num").SetValue(row.typed);
      *row.button == 0 ? void(dialog.Close()) : PressIn(dialog, row.button);
      EXPECT_FALSE(dialog.IsModal() && dialog.IsShown()) << "left";
    });
    editor->ShowModal();
    EXPECT_EQ(applied, row.applies ? 1 : 0);
    EXPECT_EQ(Live().CorreFixed, row.changed && row.applies ? 1 : 0);
    EXPECT_EQ(Live().CorrePointNum, row.applies ? row.typed : 4);
    Destroy();
  }
}

TEST_F(EditorWindow, ShapeFilesGoOutAndComeBack) {
  Open();
  rig.choices = {rig.temp / "valley", rig.temp / "valley.wls"};
  PressIn(*editor, "exportbutton");
  ChooseIn(*editor, "line_interp", 2);
  SetPoints(9);
  CheckIn(*editor, "symmetry", true);
  CheckIn(*editor, "fixedpos", true);
  PressIn(*editor, "importbutton");
  EXPECT_EQ(Edited(), FourPoints());
  ExpectShown();
  PressIn(*editor, "importbutton");
  PressIn(*editor, "exportbutton");
  EXPECT_TRUE(rig.display.messages.empty()) << "cancelled dialogs say nothing";
}

TEST_F(EditorWindow, ShapeDialogSeedsTheCurve) {
  const struct {
    int entry;
    const char* button;
    int points, type;
  } rows[] = {{0, "OKButton", 3, kQuadratic},
              {1, "OKButton", 2, kStraightLine},
              {2, "OKButton", 3, kStraightLine},
              {2, "CancelButton", 4, kStraightLine}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.entry);
    Open();
    const ModalScript script("LSSshape", [&row](wxDialog& dialog) {
      auto& list = ControlOf<wxChoice>(dialog, "Combo1");
      EXPECT_EQ(list.GetSelection(), 0);
      EXPECT_EQ(list.GetCount(), 3U);
      list.SetSelection(row.entry);
      PressIn(dialog, row.button);
    });
    PressIn(*editor, "initselect");
    EXPECT_EQ(CanApply(), row.points != 4);
    EXPECT_EQ(Edited().CorrePointNum, row.points);
    EXPECT_EQ(Edited().CorreInterp, row.type);
    ExpectShown();
    Destroy();
  }
}

TEST(EditorFromMain, EditsTheShownGroupsAxisAndCountsAsAChange) {
  WindowRig rig;
  rig.Open();
  EXPECT_FALSE(rig.Enabled("corre_edit")) << "the other screen types have fixed curves";
  rig.Choose("scr_select", kOtherScreens);
  for (const int group : {0, 1}) {
    SCOPED_TRACE(group);
    rig.global.Settings.AutoApply = static_cast<std::int16_t>(group);
    rig.SelectGroup(group);
    const CurveDefinition before = rig.global.Correction.Curves[AxisOfGroup(group)];
    const ModalScript script("LSSwedit", [](wxDialog& dialog) {
      CheckIn(dialog, "fixedpos", false);
      PressIn(dialog, "OKButton");
    });
    EXPECT_EQ(rig.Press("corre_edit"), group == 1 ? kApplyWords : "") << "in Real Time";
    EXPECT_NE(rig.global.Correction.Curves[AxisOfGroup(group)], before);
  }
  EXPECT_TRUE(rig.window->Controller().HasUnsavedChanges());
}

}  // namespace
}  // namespace warpline
