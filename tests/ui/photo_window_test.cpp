#include <wx/dialog.h>
#include <wx/listctrl.h>

#include "picture/camera.h"
#include "picture/marks_picture.h"
#include "picture/photograph.h"
#include "tests/ui/window_rig.h"

// Straightening from a photograph, by its window.

namespace warpline {
namespace {

struct PhotoRig : WindowRig {
  PhotoRig() {
    global.Settings.AutoApply = 1;
    displays = {{0, "one", {0, 0, 640, 480}, {640, 480}}};
    Open();
    Pick("menu_opt_photo");
  }

  wxDialog& Photo() const { return Find<wxDialog>("LSSphoto"); }
  bool IsOpen() const { return wxWindow::FindWindowByName("LSSphoto", window) != nullptr; }
  std::string Says(const std::string& label) const {
    return Find<wxStaticText>(label).GetLabelText().utf8_string();
  }
  void OpenPhoto(const fs::path& file) {
    choices = {file};
    PressIn(Photo(), "photo_open");
  }
  fs::path GoodPhoto() const {
    const Camera camera{.X = 0.5, .Photo = {2400, 1800}};
    const RgbImage photo =
        PhotographOf(MarksPicture(kDefaultPanelSize), *WallOf("cylinder:4:-0.25:bottom"), camera);
    return temp.Write("photo.jpg", JpegOf(photo, 75).value());
  }
  void Key(int key, int modifiers = 0) const {
    SendKey(Find("photo_canvas"), wxEVT_KEY_DOWN, key, modifiers);
  }
};

TEST(PhotoWindow, TakesTheCorrectionOfAPhotographOver) {
  PhotoRig rig;
  EXPECT_FALSE(rig.Enabled("OKButton"));
  EXPECT_EQ(rig.SentBy([&] { PressIn(rig.Photo(), "photo_clear"); }), kInitializeWords);
  EXPECT_TRUE(rig.Shown("picture_window"));
  SendKey(rig.Find("picture_canvas"), wxEVT_KEY_DOWN, WXK_ESCAPE);
  EXPECT_FALSE(rig.Shown("picture_window"));

  rig.OpenPhoto(rig.temp.Write("broken.jpg", "no photograph"));
  EXPECT_EQ(rig.Says("photo_said").substr(0, 41), "This file is no photograph that can be re");
  rig.OpenPhoto(rig.GoodPhoto());
  EXPECT_EQ(rig.Says("photo_said"), "2400 x 1800 pixels. Marks that count: 63 of 63.");
  auto& results = rig.Find<wxListCtrl>("photo_results");
  ASSERT_EQ(results.GetItemCount(), 6);
  EXPECT_EQ(results.GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED), 0);
  results.SetItemState(kOtherScreens, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
  Settle();
  const std::string sent = rig.SentBy([&] { PressIn(rig.Photo(), "OKButton"); });
  EXPECT_EQ(sent, kApplyWords);
  EXPECT_TRUE(SettleUntil([&] { return !rig.IsOpen(); }));
  EXPECT_EQ(rig.Screen(), kOtherScreens);
  EXPECT_NE(rig.global.Correction.Axes[kVertical].Distortion, 0);
  EXPECT_EQ(rig.Pick("menu_edit_undo"), kApplyWords);
  EXPECT_EQ(rig.global.Correction.Axes[kVertical].Distortion, 0);
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(PhotoWindow, KeysMoveWhatLiesOverThePhotograph) {
  PhotoRig rig;
  rig.OpenPhoto(rig.GoodPhoto());
  rig.Key(WXK_TAB);
  EXPECT_EQ(rig.Says("photo_handle").substr(0, 31), "Mark in column 1, row 1, found:");
  rig.Key(WXK_LEFT, wxMOD_CONTROL);
  rig.Key(WXK_LEFT, wxMOD_CONTROL);
  EXPECT_TRUE(SettleUntil([&] {
    return rig.Says("photo_result").find("column 1, row 1 lies") != std::string::npos;
  })) << "the fit comes when the keys rest";
  rig.Key(WXK_DELETE);
  EXPECT_EQ(rig.Says("photo_handle").substr(0, 34), "Mark in column 1, row 1, expected:");
  rig.Key(WXK_PAGEDOWN);
  rig.Key(WXK_DOWN);
  EXPECT_TRUE(rig.Enabled("photo_largest"));
  for (int i = 0; i < 3; ++i) rig.Key(WXK_INSERT);
  EXPECT_EQ(rig.Says("photo_handle").substr(0, 16), "Line 1, point 3:");
  wxKeyEvent escape(wxEVT_CHAR_HOOK);
  escape.m_keyCode = WXK_ESCAPE;
  Handle(rig.Find("photo_canvas"), escape);
  EXPECT_TRUE(rig.IsOpen()) << "it has ended the line alone";
  const CorrectionData before = rig.global.Correction;
  PressIn(rig.Photo(), "CancelButton");
  EXPECT_TRUE(SettleUntil([&] { return !rig.IsOpen(); }));
  EXPECT_EQ(rig.global.Correction, before);
}

}  // namespace
}  // namespace warpline
