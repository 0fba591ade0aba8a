#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include <memory>

#include "tests/ui/window_rig.h"
#include "ui/layout.h"
#include "ui/preview_painter.h"

// The preview window: when it is there, how large, and that what it is given is painted where it
// belongs.

namespace warpline {
namespace {

LSSview& ViewOf(const WindowRig& rig) {
  return rig.Find<LSSview>("LSSview");
}

TEST(PreviewWindow, FollowsTheTestPatternBox) {
  WindowRig rig;
  rig.Open();
  EXPECT_TRUE(ViewOf(rig).IsShown());
  rig.Check("testpattern", false);
  EXPECT_FALSE(ViewOf(rig).IsShown());
  EXPECT_EQ(rig.global.Settings.TestPattern, 0);
  rig.Check("testpattern", true);
  EXPECT_TRUE(ViewOf(rig).IsShown());
  ViewOf(rig).Close();
  WindowRig::Settle();
  EXPECT_FALSE(ViewOf(rig).IsShown());
  EXPECT_FALSE(rig.Find<wxCheckBox>("testpattern").GetValue());
  EXPECT_EQ(rig.global.Settings.TestPattern, 0);
}

TEST(PreviewWindow, HidesWhileTheMainWindowIsMinimised) {
  WindowRig rig;
  rig.Open();
  for (const bool pattern : {true, false}) {
    rig.Check("testpattern", pattern);
    wxIconizeEvent minimise(rig.window->GetId(), true);
    rig.window->ProcessWindowEvent(minimise);
    EXPECT_FALSE(ViewOf(rig).IsShown());
    wxIconizeEvent restore(rig.window->GetId(), false);
    rig.window->ProcessWindowEvent(restore);
    EXPECT_EQ(ViewOf(rig).IsShown(), pattern);
  }
}

TEST(PreviewWindow, DisplayMenuSetsTheSize) {
  WindowRig rig;
  rig.Open();
  EXPECT_TRUE(rig.Checked("menu_disp_regular"));
  const struct {
    const char* item;
    wxSize size;
  } rows[] = {{"menu_disp_magnification", {960, 720}},
              {"menu_disp_small", {400, 300}},
              {"menu_disp_regular", {640, 480}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.item);
    rig.Pick(row.item);
    EXPECT_TRUE(WindowRig::SettleUntil(
        [&] { return ViewOf(rig).GetClientSize() == ViewOf(rig).FromDIP(row.size); }));
    EXPECT_TRUE(rig.Checked(row.item));
  }
}

TEST(PreviewWindow, LetterAWithoutModifiersSwitchesTheAuxiliaryLines) {
  WindowRig rig;
  rig.Open();
  const auto press = [&](int key, bool control) {
    wxKeyEvent event(wxEVT_CHAR_HOOK);
    event.m_keyCode = key;
    event.SetControlDown(control);
    ViewOf(rig).ProcessWindowEvent(event);
    return ViewOf(rig).AuxLinesShown();
  };
  EXPECT_FALSE(ViewOf(rig).AuxLinesShown());
  EXPECT_TRUE(press('A', false));
  EXPECT_TRUE(press('A', true));
  EXPECT_TRUE(press('B', false));
  EXPECT_FALSE(press('A', false));
}

// What a drawing leaves on a black ground of that size.
wxImage Painted(const PreviewDrawing& drawing, const wxSize& size) {
  wxBitmap bitmap(size);
  wxMemoryDC dc(bitmap);
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  {
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
    PaintPreview(*context, drawing, size.x, size.y);
  }
  dc.SelectObject(wxNullBitmap);
  return bitmap.ConvertToImage();
}

bool IsLit(const wxImage& image, int x, int y, const PreviewColour& colour) {
  const auto is_close = [](int seen, int wanted) { return wanted == 0 ? seen < 60 : seen > 100; };
  return is_close(image.GetRed(x, y), colour.red) && is_close(image.GetGreen(x, y), colour.green) &&
         is_close(image.GetBlue(x, y), colour.blue);
}

// A client area that is wider than 4:3: the model panel lies in its middle, 1.5 pixels a unit.
TEST(PreviewWindow, PaintsEveryShapeInPlaceAndColour) {
  const PreviewDrawing drawing{
      PreviewPolyline{kPreviewYellow, {{100, 100}, {100, 300}, {300, 300}}},
      PreviewLine{kPreviewGreen, {400, 0}, {400, 600}},
      PreviewBox{kPreviewCyan, {500, 100}, 200, 100},
      PreviewEllipse{kPreviewBlue, {600, 400}, 100, 50},
  };
  const wxImage image = Painted(drawing, wxSize(1600, 900));
  const struct {
    const char* name;
    double x;
    double y;
    PreviewColour colour;
  } lit[] = {
      {"polyline, first leg", 100, 200, kPreviewYellow},
      {"polyline, second leg", 200, 300, kPreviewYellow},
      {"line", 400, 50, kPreviewGreen},
      {"box, left", 500, 150, kPreviewCyan},
      {"box, bottom", 600, 200, kPreviewCyan},
      {"ellipse, right", 700, 400, kPreviewBlue},
      {"ellipse, top", 600, 350, kPreviewBlue},
      {"nothing filled", 600, 150, {0, 0, 0}},
      {"polyline stays open", 200, 200, {0, 0, 0}},
  };
  for (const auto& row : lit) {
    const int x = static_cast<int>(200 + 1.5 * row.x);
    const int y = static_cast<int>(1.5 * row.y);
    EXPECT_TRUE(IsLit(image, x, y, row.colour)) << row.name;
  }
}

TEST(Layout, WindowsAreHeldInsideTheScreen) {
  const wxRect area(0, 40, 1600, 1160);
  const wxSize size(600, 400);
  const struct {
    wxPoint wanted;
    wxPoint held;
  } rows[] = {{{100, 100}, {100, 100}},
              {{-5000, 20}, {0, 40}},
              {{1500, 900}, {1000, 800}},
              {{1000, 800}, {1000, 800}}};
  for (const auto& row : rows) EXPECT_EQ(HeldInside(area, row.wanted, size), row.held);
  EXPECT_EQ(HeldInside(area, {50, 50}, wxSize(2000, 400)), wxPoint(0, 50));
}

TEST(Layout, LongTextsAreWrappedInBothLanguages) {
  WindowRig rig;
  const LSSmain& window = rig.Open();
  constexpr int kDescription = 61;
  for (const int identifier : {kDescription, kDescription + kEnglishOffset}) {
    const wxString text = WxText(CatalogueText(identifier));
    const int width = window.GetTextExtent(text).x / 4;
    wxString lines = WrappedText(window, text, width);
    EXPECT_GT(lines.Freq('\n'), 2);
    EXPECT_LE(window.GetTextExtent(lines.BeforeFirst('\n')).x, width);
    EXPECT_FALSE(lines.Contains(WxText("\n。")));
    wxString joined = lines;
    joined.Replace("\n", identifier == kDescription ? "" : " ");
    EXPECT_EQ(joined, text) << "nothing is lost";
  }
}

TEST(MainWindow, StartsInsideTheScreen) {
  WindowRig rig;
  rig.global.Settings.DialogPosX = -30000;
  rig.global.Settings.DialogPosY = 25000;
  rig.Open();
  const wxRect screen = UsableScreen({});
  EXPECT_TRUE(WindowRig::SettleUntil([&] { return screen.Contains(rig.window->GetScreenRect()); }));
}

}  // namespace
}  // namespace warpline
