#include "app/picture_control.h"

#include <algorithm>
#include <array>
#include <optional>
#include <system_error>
#include <utility>

#include "app/plain_caption.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "model/parameter_groups.h"
#include "picture/named_pictures.h"
#include "picture/photograph.h"
#include "platform/files.h"

namespace warpline {
namespace {

// What the pictures are called, in the order of their keys.
constexpr std::array kPictureTexts{
    ToolText::kPictureCard,    ToolText::kPictureGrid,  ToolText::kPictureCheckerboard,
    ToolText::kPictureCircles, ToolText::kPictureWhite, ToolText::kPictureMarks,
    ToolText::kPictureOwn,
};
constexpr std::size_t kOwnPicture = kPictureTexts.size() - 1;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char letter : text) {
    if (letter == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += letter;
    }
  }
  return lines;
}

}  // namespace

PictureControl::PictureControl(const Engine& engine, MainController& controller,
                               std::function<void(std::string_view)> run, Clock clock)
    : engine_(engine), controller_(controller), run_(std::move(run)), clock_(std::move(clock)) {}

void PictureControl::Begin(PictureDisplay display) {
  display_ = display;
  if (!CanShow(picture_)) picture_ = 0;
  wanted_ = picture_;
  KeepRow();
  Show(Page::kStart);
}

bool PictureControl::CanShow(std::size_t picture) const {
  return picture == kOwnPicture || display_.Scale == 100 || !NamedPictures()[picture].pixel_exact;
}

RgbImage PictureControl::Picture() const {
  if (picture_ == kOwnPicture) return FittedPicture(own_, display_.Pixels);
  return NamedPictures()[picture_].draw(display_.Pixels);
}

PictureControl::Choice PictureControl::ChoosePicture(int number) {
  const auto index = static_cast<std::size_t>(number - 1);
  if (index > kOwnPicture) return Choice::kRefused;
  if (index == kOwnPicture && (own_.Width == 0 || picture_ == index)) return Choice::kFileWanted;
  wanted_ = index;
  if (!CanShow(index)) {
    Show(Page::kRefused);
    return Choice::kRefused;
  }
  picture_ = index;
  Show(Page::kPicture);
  return Choice::kTaken;
}

void PictureControl::ChooseMarks() {
  const auto marks = std::ranges::find(kPictureTexts, ToolText::kPictureMarks);
  ChoosePicture(static_cast<int>(marks - kPictureTexts.begin()) + 1);
}

bool PictureControl::TakeOwnPicture(const std::filesystem::path& file) {
  std::string bytes;
  if (const std::error_code error = ReadWholeFile(file, bytes)) {
    engine_.messages.ShowSystemError(SystemErrorText(error) + "\n" + Utf8Of(file));
    return false;
  }
  NamedText reason;
  std::optional<RgbImage> image = ImageOfPhotograph(bytes, reason);
  if (!image) {
    engine_.messages.ShowSystemError(TextOf(engine_.global, reason) + "\n" + Utf8Of(file));
    return false;
  }
  own_ = std::move(*image);
  picture_ = wanted_ = kOwnPicture;
  Show(Page::kPicture);
  return true;
}

void PictureControl::Step(int steps, int large_steps) {
  const SliderSetup setup = SetUpSlider(engine_.global.Correction, controller_.Group(), row_);
  const int wanted = setup.value + steps + large_steps * setup.large_step;
  const int value = std::clamp(wanted, setup.low, setup.high);
  if (setup.enabled && value != setup.value) controller_.MoveSlider(row_, value);
  Show(Page::kRow);
}

void PictureControl::Release(int key_code, bool shift_alone) {
  if (page_ == Page::kRow) Show(Page::kRow);
  if (key_code != 0) {
    controller_.ReleaseKey(key_code, shift_alone);
  } else if (!shift_alone) {
    controller_.ReleasePageKey();
  }
}

void PictureControl::NextRow() {
  row_ = (row_ + 1) % kSliderCount;
  KeepRow();
  Show(Page::kRow);
}

void PictureControl::SelectGroup(int group) {
  controller_.SelectGroup(group);
  row_ = 0;
  KeepRow();
  Show(Page::kRow);
}

// No group has two rows that cannot be moved.
void PictureControl::KeepRow() {
  const CorrectionData& correction = engine_.global.Correction;
  if (!SetUpSlider(correction, controller_.Group(), row_).enabled) {
    row_ = (row_ + 1) % kSliderCount;
  }
}

void PictureControl::Undo() {
  run_("menu_edit_undo");
  KeepRow();
  Show(Page::kRow);
}

void PictureControl::Redo() {
  run_("menu_edit_redo");
  KeepRow();
  Show(Page::kRow);
}

void PictureControl::AskToStore() {
  Show(Page::kStore);
}

void PictureControl::Confirm() {
  if (page_ != Page::kStore) return;
  Show(Page::kRow);
  run_("storebutton");
  Show(Page::kRow);
}

void PictureControl::ToggleKeys() {
  Show(page_ == Page::kKeys ? Page::kRow : Page::kKeys);
}

void PictureControl::MoveOverlay() {
  place_ = static_cast<OverlayPlace>((static_cast<int>(place_) + 1) % kOverlayPlaceCount);
  Show(page_);
}

bool PictureControl::Escape() {
  if (page_ != Page::kStore) return false;
  Show(Page::kRow);
  return true;
}

void PictureControl::Show(Page page) {
  page_ = page;
  shown_ = clock_();
}

double PictureControl::Opacity() const {
  if (page_ == Page::kStore || page_ == Page::kKeys) return 1;
  const std::chrono::duration<double> over = clock_() - shown_ - kOverlayStay;
  return std::clamp(1 - over / kOverlayFade, 0.0, 1.0);
}

PictureOverlay PictureControl::Overlay() const {
  const LSSglobal& global = engine_.global;
  if (page_ == Page::kRow) return RowOverlay();
  if (page_ == Page::kKeys) {
    return {TextOf(global, ToolText::kPictureKeysTitle), "",
            LinesOf(TextOf(global, ToolText::kPictureKeys))};
  }
  if (page_ == Page::kStore) {
    return {
        TextOf(global, ToolText::kPictureStore), TextOf(global, ToolText::kPictureStoreKeys), {}};
  }
  return PicturesOverlay();
}

PictureOverlay PictureControl::PicturesOverlay() const {
  const LSSglobal& global = engine_.global;
  PictureOverlay overlay{
      std::to_string(wanted_ + 1), TextOf(global, kPictureTexts.at(wanted_)), {}};
  if (page_ == Page::kRefused) {
    overlay.notes.push_back(TextOf(global, ToolText::kPictureNotExact));
  }
  AddDisplayNotes(overlay.notes);
  if (page_ == Page::kStart) overlay.notes.push_back(TextOf(global, ToolText::kPictureHint));
  return overlay;
}

PictureOverlay PictureControl::RowOverlay() const {
  const LSSglobal& global = engine_.global;
  const GroupRow& group = kGroups.at(static_cast<std::size_t>(controller_.Group()));
  const int caption = group.slider_captions.at(static_cast<std::size_t>(row_));
  PictureOverlay overlay{PlainCaption(global, group.caption),
                         PlainCaption(global, caption) + "  " +
                             SetUpSlider(global.Correction, controller_.Group(), row_).text,
                         {}};
  AddProjectorNotes(overlay.notes);
  AddDisplayNotes(overlay.notes);
  return overlay;
}

void PictureControl::AddProjectorNotes(std::vector<std::string>& notes) const {
  const StatusLine status = controller_.Status();
  notes.push_back(status.shown.empty() ? status.link : status.link + "  " + status.shown);
  if (!status.note.empty()) notes.push_back(status.note);
}

void PictureControl::AddDisplayNotes(std::vector<std::string>& notes) const {
  const LSSglobal& global = engine_.global;
  if (display_.Scale != 100) {
    notes.push_back(
        FilledText(TextOf(global, ToolText::kPictureScaled), {std::to_string(display_.Scale)}));
  }
  const PanelSize& panel = global.Panel;
  if (!global.PanelReported || panel == display_.Pixels) return;
  notes.push_back(
      FilledText(TextOf(global, ToolText::kPicturePanelDiffers),
                 {std::to_string(display_.Pixels.Width), std::to_string(display_.Pixels.Height),
                  std::to_string(panel.Width), std::to_string(panel.Height)}));
}

}  // namespace warpline
