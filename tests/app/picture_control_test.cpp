#include "app/picture_control.h"

#include <algorithm>

#include "model/parameter_groups.h"
#include "picture/named_pictures.h"
#include "tests/app/controller_rig.h"

// The keys on the test picture, and what stands over it.

namespace warpline {
namespace {

struct PictureRig : ControllerRig {
  // What the overlay says, in one line.
  std::string Says() const {
    const PictureOverlay overlay = control.Overlay();
    std::string text = overlay.heading + "|" + overlay.line;
    for (const std::string& note : overlay.notes) text += "|" + note;
    return text;
  }
  bool SaysFirst(const std::string& text) const { return Says().starts_with(text); }

  PictureControl::Time now{};
  std::vector<std::string> commands_run;
  PictureControl control{engine, controller,
                         [this](std::string_view name) {
                           commands_run.emplace_back(name);
                           if (name == "storebutton") controller.Store();
                           if (name == "menu_edit_undo") controller.Undo();
                           if (name == "menu_edit_redo") controller.Redo();
                         },
                         [this] { return now; }};
};

TEST(PictureControl, ItsKeysMoveAndSendAsTheSlidersDo) {
  PictureRig rig;
  rig.control.Begin({{1024, 768}, 100});
  rig.control.Step(1, 0);
  EXPECT_TRUE(rig.SaysFirst("Correct Vertical Distortion|Bottom  1%|")) << "Top cannot be moved";
  rig.control.Release(kKeyUp, true);
  rig.ExpectApplied(false);
  rig.control.Step(0, -2);
  rig.control.Release(0, false);
  rig.ExpectApplied(true);
  EXPECT_EQ(rig.V().Distortion, -19);
  rig.control.NextRow();
  rig.control.Step(-40, 0);
  EXPECT_TRUE(rig.SaysFirst("Correct Vertical Distortion|Top  -64|")) << "held to its range";
  rig.control.Release(kKeyLeft, false);
  rig.ExpectApplied(true);
  rig.control.Undo();
  rig.control.Undo();
  EXPECT_TRUE(rig.SaysFirst("Correct Vertical Distortion|Bottom  0%|"))
      << "Top is out of use again";
  rig.control.Redo();
  EXPECT_EQ(rig.V().Distortion, -19);
  rig.control.SelectGroup(kGroupPosition);
  rig.control.NextRow();
  rig.control.Step(0, 1);
  EXPECT_EQ(rig.V().Position, 128);
}

TEST(PictureControl, StoresWhenItWasConfirmed) {
  PictureRig rig;
  rig.control.Begin({{1024, 768}, 100});
  rig.control.Confirm();
  EXPECT_FALSE(rig.control.Escape()) << "there was no question";
  rig.control.AskToStore();
  rig.now += std::chrono::hours(1);
  EXPECT_EQ(rig.Says(), "Store this correction in the projector?|Enter: store   Esc: back");
  EXPECT_EQ(rig.control.Opacity(), 1);
  EXPECT_TRUE(rig.control.Escape());
  rig.control.Confirm();
  EXPECT_TRUE(rig.commands_run.empty());
  rig.controller.Apply();
  rig.Frames();
  rig.control.AskToStore();
  rig.control.Confirm();
  EXPECT_EQ(rig.commands_run, Texts{"storebutton"});
  const Texts sent = rig.Commands();
  EXPECT_EQ(std::ranges::count(sent, "01DF 12"), 1);
}

TEST(PictureControl, ShowsThePictureOfAFile) {
  PictureRig rig;
  rig.control.Begin({{320, 640}, 100});
  const auto file = rig.temp.Write("own.png", *PngOf(NamedPictures()[4].draw({640, 320})));
  EXPECT_EQ(rig.control.ChoosePicture(7), PictureControl::Choice::kFileWanted);
  EXPECT_FALSE(rig.control.TakeOwnPicture(rig.temp.Write("a.txt", "none")));
  EXPECT_FALSE(rig.control.TakeOwnPicture(rig.temp / "none.png"));
  EXPECT_EQ(rig.display.messages.size(), 2U);
  EXPECT_TRUE(rig.SaysFirst("1|"));
  ASSERT_TRUE(rig.control.TakeOwnPicture(file));
  const RgbImage image = rig.control.Picture();
  for (const auto& [y, level] : {std::pair{238, 0}, {241, 255}, {398, 255}, {401, 0}}) {
    EXPECT_EQ(image.At(160, y)[0], level) << y;
  }
  EXPECT_EQ(rig.control.ChoosePicture(7), PictureControl::Choice::kFileWanted) << "another one";
}

TEST(PictureControl, TheOverlaySaysWhatIsOffAndFades) {
  PictureRig rig;
  rig.control.Begin({{1024, 768}, 150});
  EXPECT_EQ(rig.Says(),
            "1|Test card|not pixel for pixel: display scaled 150 %|"
            "H: all keys   Esc: end");
  rig.controller.Apply();
  rig.control.ChoosePicture(2);
  EXPECT_EQ(rig.Says(),
            "2|Grid with numbered lines|not pixel for pixel: display scaled 150 %|"
            "This display has 1024 x 768 pixels, the panel 16 x 12.");
  rig.control.ChoosePicture(9);
  EXPECT_TRUE(rig.SaysFirst("2|")) << "there is no such picture";
  rig.control.ChoosePicture(6);
  EXPECT_TRUE(rig.SaysFirst("6|Marks for a photograph|Shown pixel for pixel only.|"));
  EXPECT_EQ(rig.control.Picture().Pixels, NamedPictures()[1].draw({1024, 768}).Pixels);
  const std::pair<int, double> opacities[] = {{1999, 1}, {2200, 0.5}, {2400, 0}, {9000, 0}};
  for (const auto& [milliseconds, opacity] : opacities) {
    rig.now = PictureControl::Time(std::chrono::milliseconds(milliseconds));
    EXPECT_DOUBLE_EQ(rig.control.Opacity(), opacity) << milliseconds;
  }
  for (int i = 1; i <= kOverlayPlaceCount; ++i) {
    rig.control.MoveOverlay();
    EXPECT_EQ(rig.control.Place() == OverlayPlace::kMiddle, i == kOverlayPlaceCount);
  }
  EXPECT_EQ(rig.control.Opacity(), 1);
}

}  // namespace
}  // namespace warpline
