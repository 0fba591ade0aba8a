#include <algorithm>

#include "tests/ui/window_rig.h"
#include "ui/overlay_painter.h"
#include "ui/picture_window.h"

// The test picture on a display, its keys, and the displays that come and go.

namespace warpline {
namespace {

// Two displays side by side on the one that the tests have.
struct PictureRig : WindowRig {
  PictureRig() {
    global.Settings.AutoApply = 1;
    displays = {{0, "left", {0, 0, 640, 480}, {640, 480}},
                {0, "right & wide", {640, 0, 800, 600}, {800, 600}}};
    Open();
  }

  wxMenuItem& DisplayItem(std::size_t number) const {
    return *Item("menu_opt_picture_off").GetMenu()->FindItemByPosition(number);
  }
  PictureWindow& Put(std::size_t number) {
    wxCommandEvent event(wxEVT_MENU, DisplayItem(number).GetId());
    Handle(*window, event);
    return dynamic_cast<PictureWindow&>(Find("picture_window"));
  }
  std::string Key(int key, int modifiers = 0) {
    wxWindow& canvas = Find("picture_canvas");
    return SentBy([&] {
      SendKey(canvas, wxEVT_KEY_DOWN, key, modifiers);
      SendKey(canvas, wxEVT_KEY_UP, key, modifiers);
    });
  }
};

TEST(PictureWindow, ItsKeysAdjustSendAndStore) {
  PictureRig rig;
  rig.Put(1);
  EXPECT_EQ(rig.Key(WXK_UP), kApplyWords);
  EXPECT_EQ(rig.Key(WXK_PAGEDOWN), kApplyWords);
  EXPECT_EQ(rig.V().Distortion, -9);
  EXPECT_EQ(rig.Value("ctrl_bar1"), -9) << "the slider follows";
  EXPECT_EQ(rig.Key('2', wxMOD_CONTROL), "");
  EXPECT_TRUE(rig.Find<wxRadioButton>("ctrl_select1").GetValue());
  rig.Key(WXK_RIGHT);
  rig.Key(WXK_TAB);
  rig.Key(WXK_LEFT);
  EXPECT_EQ(rig.H().Distortion, 1);
  EXPECT_EQ(rig.H().Optical, -31);
  EXPECT_EQ(rig.Key('Z', wxMOD_CONTROL), kApplyWords);
  EXPECT_EQ(rig.H().Optical, -32);
  EXPECT_EQ(rig.Key(WXK_RETURN), "");
  EXPECT_EQ(rig.Key('S'), "");
  EXPECT_EQ(rig.Key(WXK_RETURN), "probe class 21 18");
  rig.Key('S');
  rig.Key(WXK_ESCAPE);
  EXPECT_TRUE(rig.Shown("picture_window")) << "it took the question back alone";
  rig.Key(WXK_ESCAPE);
  EXPECT_FALSE(rig.Shown("picture_window"));
  EXPECT_TRUE(rig.Item("menu_opt_picture_off").IsChecked());
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(PictureWindow, FollowsTheDisplaysThatComeAndGo) {
  PictureRig rig;
  rig.Item("menu_opt_picture_off").Check(false);  // as choosing it does
  rig.Pick("menu_opt_picture_off");
  EXPECT_TRUE(rig.Item("menu_opt_picture_off").IsChecked());
  EXPECT_EQ(rig.DisplayItem(1).GetItemLabelText(), "2 right & wide, 800 x 600, at 640, 0");
  rig.Put(1);
  EXPECT_TRUE(rig.DisplayItem(1).IsChecked());
  rig.displays.pop_back();
  EXPECT_TRUE(SettleUntil([&] { return !rig.Shown("picture_window"); }));
  EXPECT_EQ(rig.Item("menu_opt_picture_off").GetMenu()->GetMenuItemCount(), 2U);
  const auto labels = [&] {
    return std::ranges::count_if(rig.window->GetChildren(), [](const wxWindow* child) {
      return child->GetName() == "display_label" && !child->IsBeingDeleted();
    });
  };
  wxMenuEvent mark(wxEVT_MENU_HIGHLIGHT, rig.DisplayItem(0).GetId());
  Handle(*rig.window, mark);
  EXPECT_EQ(labels(), 1);
  wxMenuEvent leave(wxEVT_MENU_HIGHLIGHT, wxID_NONE);
  Handle(*rig.window, leave);
  EXPECT_EQ(labels(), 0);
}

// A letter of 29 mm on a picture 1 m high is one of 20 minutes of arc from 5 m.
TEST(PictureWindow, TheOverlayIsReadAcrossARoomWhateverIsNoted) {
  PictureRig rig;
  for (const Language language : {Language::kEnglish, Language::kJapanese}) {
    ApplyLanguage(rig.global, language);
    for (const wxSize size : {wxSize(1024, 768), wxSize(1280, 800), wxSize(1920, 1200)}) {
      for (const GroupRow& group : kGroups) {
        const std::string row = TextOf(rig.global, group.slider_captions[0]) + "  -150%";
        const OverlayLayout layout = LayOverlay(
            *rig.window, {TextOf(rig.global, group.caption), row, {std::string(300, 'n')}},
            OverlayPlace::kMiddle, size);
        EXPECT_TRUE(wxRect(size).Contains(layout.area));
        for (const std::size_t line : {0U, 1U}) {
          EXPECT_GE(0.7 * layout.lines.at(line).font.GetPixelSize().y, 0.029 * size.y) << row;
        }
      }
    }
  }
}

}  // namespace
}  // namespace warpline
