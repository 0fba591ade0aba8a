#include "app/photo_marks.h"

#include <cmath>
#include <optional>

#include "picture/marks_picture.h"

namespace warpline {
namespace {

constexpr int kLastColumn = kMarkColumns - 1;
constexpr int kLastRow = kMarkRows - 1;
constexpr std::size_t kMarks = std::size_t{kMarkColumns} * kMarkRows;

PlanePoint OnPanel(std::size_t mark) {
  return {MarkU(static_cast<int>(mark % kMarkColumns)),
          MarkV(static_cast<int>(mark / kMarkColumns))};
}

std::size_t IndexOf(const Mark& mark) {
  const double step_u = MarkU(1) - MarkU(0);
  const double step_v = MarkV(1) - MarkV(0);
  const auto column = static_cast<std::size_t>(std::lround((mark.U - MarkU(0)) / step_u));
  const auto row = static_cast<std::size_t>(std::lround((mark.V - MarkV(0)) / step_v));
  return row * kMarkColumns + column;
}

bool IsCorner(std::size_t mark) {
  const std::size_t column = mark % kMarkColumns;
  const std::size_t row = mark / kMarkColumns;
  return (column == 0 || column == kLastColumn) && (row == 0 || row == kLastRow);
}

// What marks that hold the others make of the panel: a projective map, and beside it what each of
// them lies off, which counts the more the nearer it is.
class Sketch {
 public:
  static std::optional<Sketch> Through(PlaneLine panel, PlaneLine photo) {
    const std::optional<Homography> map = Homography::Through(panel, photo);
    if (!map) return std::nullopt;
    Sketch sketch;
    sketch.map_ = *map;
    for (std::size_t i = 0; i < panel.size(); ++i) {
      const PlanePoint at = (*map)(panel[i]);
      sketch.off_.push_back({photo[i].X - at.X, photo[i].Y - at.Y});
    }
    sketch.panel_ = std::move(panel);
    return sketch;
  }

  PlanePoint At(PlanePoint place) const {
    constexpr double kNear = 1e-9;
    PlanePoint at = map_(place);
    PlanePoint off;
    double weights = 0;
    for (std::size_t i = 0; i < panel_.size(); ++i) {
      const double distance = DistanceOf(place, panel_[i]);
      const double weight = 1 / (distance * distance + kNear);
      off.X += weight * off_[i].X;
      off.Y += weight * off_[i].Y;
      weights += weight;
    }
    return {at.X + off.X / weights, at.Y + off.Y / weights};
  }

 private:
  Homography map_;
  PlaneLine panel_;
  PlaneLine off_;
};

}  // namespace

PlanePoint Turned(PlanePoint place, bool right, PhotoSize photo) {
  return right ? PlanePoint{photo.Height - place.Y, place.X}
               : PlanePoint{place.Y, photo.Width - place.X};
}

PhotoMarks::PhotoMarks(const FoundMarks& found, PhotoSize photo) : marks_(kMarks) {
  for (std::size_t i = 0; i < kMarks; ++i) {
    const PlanePoint at = OnPanel(i);
    marks_[i].At = {photo.Width * (0.25 + at.X / 2), photo.Height * (0.25 + at.Y / 2)};
  }
  for (const Mark& mark : found.Missing) marks_[IndexOf(mark)].At = {mark.X, mark.Y};
  for (const Mark& mark : found.Found) {
    marks_[IndexOf(mark)] = {{mark.X, mark.Y},
                             found.Refusal ? MarkState::kExpected : MarkState::kFound};
  }
}

void PhotoMarks::Set(std::size_t mark, PlanePoint at) {
  PlaneLine panel;
  PlaneLine before;
  PlaneLine behind;
  const auto holds = [&](std::size_t i) {
    return i == mark || IsCorner(i) || marks_[i].State != MarkState::kExpected;
  };
  for (std::size_t i = 0; i < kMarks; ++i) {
    if (!holds(i)) continue;
    panel.push_back(OnPanel(i));
    before.push_back(marks_[i].At);
    behind.push_back(i == mark ? at : marks_[i].At);
  }
  const std::optional<Sketch> was = Sketch::Through(panel, before);
  const std::optional<Sketch> is = Sketch::Through(panel, behind);
  for (std::size_t i = 0; was && is && i < kMarks; ++i) {
    if (holds(i)) continue;
    const PlanePoint from = was->At(OnPanel(i));
    const PlanePoint to = is->At(OnPanel(i));
    marks_[i].At.X += to.X - from.X;
    marks_[i].At.Y += to.Y - from.Y;
  }
  marks_[mark] = {at, MarkState::kByHand};
}

void PhotoMarks::Unset(std::size_t mark) {
  marks_[mark].State = MarkState::kExpected;
}

void PhotoMarks::Take(const FoundMarks& around) {
  for (const Mark& mark : around.Found) {
    marks_[IndexOf(mark)] = {{mark.X, mark.Y}, MarkState::kFound};
  }
  for (const Mark& mark : around.Missing) {
    PhotoMark& known = marks_[IndexOf(mark)];
    if (known.State == MarkState::kExpected) known.At = {mark.X, mark.Y};
  }
}

void PhotoMarks::Turn(bool right, PhotoSize photo) {
  for (PhotoMark& mark : marks_) mark.At = Turned(mark.At, right, photo);
}

Marks PhotoMarks::Counting() const {
  const Marks all = Places();
  Marks counting;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (marks_[i].State != MarkState::kExpected) counting.push_back(all[i]);
  }
  return counting;
}

Marks PhotoMarks::Places() const {
  Marks all;
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    const PlanePoint on_panel = OnPanel(i);
    all.push_back({on_panel.X, on_panel.Y, marks_[i].At.X, marks_[i].At.Y});
  }
  return all;
}

}  // namespace warpline
