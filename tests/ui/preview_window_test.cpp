#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/graphics.h>
#include <wx/image.h>

#include "tests/ui/window_rig.h"
#include "toolkit/layout.h"
#include "toolkit/window_place.h"
#include "ui/LSSview_painter.h"

// The preview window: when it is there, how large, and that what it is given is painted where it
// belongs.

namespace warpline {
namespace {

using OpenedPreviewWindow = OpenedWindow;

LSSview& ViewOf(const WindowRig& rig) {
  return rig.Find<LSSview>("LSSview");
}

// The pixels of a window on the screen that are green, white or between.
int LitPixels(const wxWindow& window) {
  const wxRect at = window.GetScreenRect();
  wxBitmap bitmap(at.GetSize());
  wxScreenDC screen;
  wxMemoryDC(bitmap).Blit(wxPoint(), at.GetSize(), &screen, at.GetPosition());
  const wxImage image = bitmap.ConvertToImage();
  int lit = 0;
  for (int i = 0; i < at.width * at.height; ++i) lit += image.GetData()[3 * i + 1] > 80 ? 1 : 0;
  return lit;
}

TEST_F(OpenedPreviewWindow, FollowsTheTestPatternBoxAndTheMainWindow) {
  EXPECT_TRUE(ViewOf(rig).IsShown());
  const wxWindow& canvas = rig.Find("preview_canvas");
  EXPECT_TRUE(SettleUntil([&] { return LitPixels(canvas) > 1000; })) << "nothing is painted";
  for (const bool pattern : {false, true}) {
    rig.Check("testpattern", pattern);
    EXPECT_EQ(ViewOf(rig).IsShown(), pattern);
    EXPECT_EQ(rig.global.Settings.TestPattern, pattern ? 1 : 0);
    for (const bool minimised : {true, false}) {
      wxIconizeEvent event(rig.window->GetId(), minimised);
      Handle(*rig.window, event);
      EXPECT_EQ(ViewOf(rig).IsShown(), pattern && !minimised);
    }
  }
  ViewOf(rig).Close();
  Settle();
  EXPECT_FALSE(ViewOf(rig).IsShown());
  EXPECT_FALSE(rig.Find<wxCheckBox>("testpattern").GetValue());
  EXPECT_EQ(rig.global.Settings.TestPattern, 0);
}

TEST_F(OpenedPreviewWindow, DisplayMenuSetsTheSize) {
  EXPECT_TRUE(rig.Item("menu_disp_regular").IsChecked());
  const std::pair<const char*, wxSize> rows[] = {{"menu_disp_magnification", {960, 720}},
                                                 {"menu_disp_small", {400, 300}},
                                                 {"menu_disp_regular", {640, 480}}};
  for (const auto& [item, size] : rows) {
    SCOPED_TRACE(item);
    rig.Pick(item);
    const wxSize wanted = ViewOf(rig).FromDIP(size);
    EXPECT_TRUE(SettleUntil([&] { return ViewOf(rig).GetClientSize() == wanted; }));
    EXPECT_TRUE(rig.Item(item).IsChecked());
  }
}

TEST_F(OpenedPreviewWindow, LetterAWithoutModifiersSwitchesTheAuxiliaryLines) {
  const auto press = [&](int key, int modifiers) {
    SendKey(ViewOf(rig), wxEVT_CHAR_HOOK, key, modifiers);
    return ViewOf(rig).AuxLinesShown();
  };
  EXPECT_FALSE(press('B', 0));
  EXPECT_TRUE(press('A', 0));
  EXPECT_TRUE(press('A', wxMOD_CONTROL));
  EXPECT_FALSE(press('A', 0));
}

// What a drawing leaves on a black ground of that size.
wxImage Painted(const PreviewDrawing& drawing, const wxSize& size) {
  wxBitmap bitmap(size);
  wxMemoryDC dc(bitmap);
  dc.SetBackground(*wxBLACK_BRUSH);
  dc.Clear();
  const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(dc));
  PaintPreview(*context, drawing, size.x, size.y);
  context->Flush();
  return bitmap.ConvertToImage();
}

// The colour of a pixel on a line, as the letters of the channels that are lit.
std::string LitAt(const wxImage& image, int x, int y) {
  std::string lit;
  if (image.GetRed(x, y) > 80) lit += 'r';
  if (image.GetGreen(x, y) > 80) lit += 'g';
  if (image.GetBlue(x, y) > 80) lit += 'b';
  return lit;
}

// A client area that is wider than 4:3: the model panel lies in its middle, 1.5 pixels a unit.
TEST(PreviewWindow, PaintsEveryShapeInPlaceAndColour) {
  const PreviewDrawing drawing{
      PreviewPolyline{kPreviewYellow, {{100, 100}, {100, 300}, {300, 300}}},
      PreviewLine{kPreviewGreen, {400, 0}, {400, 600}},
      PreviewBox{kPreviewCyan, {500, 100}, 200, 100},
      PreviewEllipse{kPreviewBlue, {600, 400}, 100, 50},
      PreviewArea{kPreviewRed, {0, 400}, 400, 200},
  };
  const wxImage image = Painted(drawing, wxSize(1600, 900));
  const struct {
    const char* name;
    int x, y;
    const char* lit;
  } rows[] = {
      {"polyline, first leg", 100, 200, "rg"},
      {"polyline, second leg", 200, 300, "rg"},
      {"line", 400, 50, "g"},
      {"box, left", 500, 150, "gb"},
      {"box, bottom", 600, 200, "gb"},
      {"ellipse, right", 700, 400, "b"},
      {"ellipse, top", 600, 350, "b"},
      {"nothing filled", 600, 150, ""},
      {"area", 200, 500, "r"},
      {"line below the area's edge", 400, 500, "g"},
      {"polyline stays open", 200, 200, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(LitAt(image, 200 + row.x * 3 / 2, row.y * 3 / 2), row.lit) << row.name;
  }
}

TEST(PreviewWindow, FrameAndBandsShowAtZeroDistortion) {
  CorrectionData correction;
  ResetToScreenType(correction);
  const wxImage image = Painted(Redraw(correction, correction.Axes), wxSize(640, 480));
  const wxPoint edges[] = {{0, 200}, {639, 200}, {200, 0}, {200, 479}};
  const wxPoint beside[] = {{1, 200}, {638, 200}, {200, 1}, {200, 478}};
  for (const wxPoint& at : edges) EXPECT_EQ(LitAt(image, at.x, at.y), "gb") << at.x;
  for (const wxPoint& at : beside) EXPECT_EQ(LitAt(image, at.x, at.y), "rg") << at.x;
}

TEST(Layout, WindowsAreHeldInsideTheScreen) {
  const wxRect area(0, 40, 1600, 1160);
  const wxSize size(600, 400);
  EXPECT_EQ(HeldInside(area, {100, 100}, size), wxPoint(100, 100));
  EXPECT_EQ(HeldInside(area, {-5000, 20}, size), wxPoint(0, 40));
  EXPECT_EQ(HeldInside(area, {1500, 900}, size), wxPoint(1000, 800));
  EXPECT_EQ(HeldInside(area, {50, 50}, wxSize(2000, 400)), wxPoint(0, 50));
}

TEST(Layout, WindowsStandFreeOfOthersWhereThereIsRoom) {
  const wxRect screen(0, 0, 1366, 768);
  const wxRect main(390, 20, 710, 380);
  const struct {
    wxRect other;
    wxSize size;
    std::optional<wxPoint> place;
  } rows[] = {{{0, 0, 0, 0}, {260, 300}, wxPoint(1106, 20)},
              {{0, 0, 0, 0}, {400, 330}, wxPoint(390, 406)},
              {{0, 0, 0, 0}, {384, 400}, wxPoint(0, 20)},
              {{390, 400, 710, 100}, {400, 330}, std::nullopt},
              {{0, 400, 800, 368}, {400, 330}, wxPoint(966, 438)},
              {{0, 0, 0, 0}, {640, 480}, std::nullopt}};
  for (const auto& row : rows) {
    const wxRect others[] = {main, row.other};
    EXPECT_EQ(FreePlace(screen, others, row.size, 6), row.place) << row.size.x;
  }
}

TEST(PreviewWindow, CoversNothingAndComesBackAsItWas) {
  const TempFolder folder;
  const WindowPlaces places(folder / "places");
  for (const int run : {0, 1}) {
    WindowRig rig;
    rig.global.Settings.DialogPosX = 900;
    rig.Open();
    EXPECT_FALSE(ViewOf(rig).GetScreenRect().Intersects(rig.window->GetScreenRect()));
    EXPECT_EQ(ViewOf(rig).GetClientSize() == wxSize(500, 380), run == 1);
    ViewOf(rig).SetClientSize(500, 380);
    ViewOf(rig).SetPosition({300, 700});
    ASSERT_TRUE(SettleUntil([&] { return ViewOf(rig).GetPosition() == wxPoint(300, 700); }));
  }
}

TEST_F(OpenedPreviewWindow, DialogsStandOverTheirParentInsideItsScreen) {
  const wxRect screen = UsableScreen(rig.window->GetPosition());
  wxDialog dialog(rig.window, wxID_ANY, "", wxDefaultPosition, {900, 700});
  for (const wxPoint& corner :
       {screen.GetPosition(), screen.GetBottomRight() - wxPoint(200, 200)}) {
    rig.window->SetPosition(corner);
    CentreOverParent(dialog);
    EXPECT_TRUE(screen.Contains(dialog.GetRect()));
  }
}

TEST_F(OpenedPreviewWindow, LongTextsAreWrappedInBothLanguages) {
  const LSSmain& window = *rig.window;
  for (const int language : {0, kEnglishOffset}) {
    const wxString text = WxText(CatalogueText(61 + language));
    for (int parts = 4; parts <= 10; ++parts) {
      const int width = window.GetTextExtent(text).x / parts;
      const wxString lines = WrappedText(window, text, width);
      EXPECT_GT(lines.Freq('\n'), parts - 2);
      EXPECT_LE(window.GetTextExtent(lines.BeforeFirst('\n')).x, width);
      EXPECT_FALSE(lines.Contains(WxText("\n。")) || lines.Contains(WxText("\n、"))) << parts;
      wxString joined = lines;
      joined.Replace("\n", language == 0 ? "" : " ");
      EXPECT_EQ(joined, text) << "nothing is lost";
    }
  }
}

}  // namespace
}  // namespace warpline
