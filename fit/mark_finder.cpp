#include "fit/mark_finder.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "fit/photo_advice.h"
#include "fit/placed_marks.h"
#include "fit/saddle_grid.h"
#include "fit/saddle_points.h"
#include "picture/rows.h"

namespace warpline {
namespace {

using Eigen::Vector2d;

constexpr std::size_t kMostPoints = 1500;
constexpr int kSmallestSide = 400;  // of an image in which marks are sought, the longer one

// The photograph, and it again, half as large each time.
std::vector<GreyImage> PyramidOf(const RgbImage& photo) {
  std::vector<GreyImage> pyramid{GreyOf(photo)};
  while (std::max(pyramid.back().Width, pyramid.back().Height) >= 2 * kSmallestSide &&
         std::min(pyramid.back().Width, pyramid.back().Height) >= 4) {
    pyramid.push_back(Halved(pyramid.back()));
  }
  return pyramid;
}

// From the smallest image on, since that is soon done; places are those of the largest. The marks'
// squares are of the size that is looked for in one of them.
// part_seen becomes true when there is a grid that marks without their corners may be.
std::optional<PlacedMarks> FindRoughly(const std::vector<GreyImage>& pyramid, bool& part_seen) {
  std::optional<PlacedMarks> best;
  for (std::size_t level = pyramid.size(); level-- > 0;) {
    const GreyImage& image = pyramid[level];
    const SaddleGrid grid = FindSaddleGrid(FindSaddlePoints(image, kMostPoints));
    part_seen = part_seen || IsPartOfMarks(grid);
    std::optional<PlacedMarks> placed = PlaceMarks(image, grid);
    if (!placed || (best && placed->Count <= best->Count)) continue;
    for (std::optional<Vector2d>& place : placed->Places) {
      if (place) *place *= static_cast<double>(std::size_t{1} << level);
    }
    best = placed;
    if (best->Count == static_cast<int>(kMarkCount) && best->Corners == 4) break;
  }
  return best;
}

class Refiner {
 public:
  Refiner(const GreyImage& image, PanelSize panel)
      : image_(image),
        across_(kMarkSquare * panel.Height / ((MarkU(1) - MarkU(0)) * panel.Width)),
        down_(kMarkSquare / (MarkV(1) - MarkV(0))) {}

  // Looks at the wanted marks of places that are all there; those that are no marks lose theirs.
  void Refine(const std::vector<std::size_t>& wanted, MarkPlaces& places, MarkLooks& looks) const {
    const MarkPlaces all = places;
    ForEachRow(static_cast<int>(wanted.size()), [&](int i) {
      const std::size_t mark = wanted[static_cast<std::size_t>(i)];
      const auto [across, down] = StepsAt(all, mark);
      Chequer chequer{*all[mark], across * across_, down * down_};
      looks[mark] = RefineChequer(image_, chequer);
      places[mark].reset();
      if (looks[mark]) places[mark] = chequer.Place;
    });
  }

 private:
  const GreyImage& image_;
  double across_;  // a square's side, as a share of a step
  double down_;
};

std::vector<std::size_t> MarksThat(const MarkPlaces& places, bool are_there) {
  std::vector<std::size_t> marks;
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    if (places[i].has_value() == are_there) marks.push_back(i);
  }
  return marks;
}

// First those that were seen, then the others where these foretell them.
MarkLooks Refine(const GreyImage& image, PanelSize panel, MarkPlaces& places) {
  const Refiner refiner(image, panel);
  MarkLooks looks;
  for (const bool seen : {true, false}) {
    const std::vector<std::size_t> wanted = MarksThat(places, seen);
    MarkPlaces all = Completed(places);
    if (std::ranges::any_of(all, [](const auto& place) { return !place.has_value(); })) break;
    refiner.Refine(wanted, all, looks);
    for (const std::size_t mark : wanted) places[mark] = all[mark];
  }
  places = Completed(places);
  return looks;
}

Mark MarkAt(std::size_t mark, const Vector2d& place) {
  return {MarkU(static_cast<int>(mark) % kMarkColumns),
          MarkV(static_cast<int>(mark) / kMarkColumns), place.x(), place.y()};
}

// What is known of places that are all there.
FoundMarks Told(const PhotoFindings& findings) {
  FoundMarks found;
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    (findings.Looks[i] ? found.Found : found.Missing).push_back(MarkAt(i, *findings.Places[i]));
  }
  found.Warnings = WarningsAbout(findings);
  found.Refusal = RefusalOf(findings);
  return found;
}

}  // namespace

FoundMarks FindMarks(const RgbImage& photo, PanelSize panel) {
  const std::vector<GreyImage> pyramid = PyramidOf(photo);
  bool part_seen = false;
  const std::optional<PlacedMarks> rough = FindRoughly(pyramid, part_seen);
  PhotoFindings findings{{photo.Width, photo.Height}, panel, {}, {}, false};
  if (rough) {
    findings.Mirrored = rough->Mirrored;
    findings.Places = rough->Places;
    findings.Looks = Refine(pyramid.front(), panel, findings.Places);
  }
  if (MarksThat(findings.Places, false).empty()) return Told(findings);
  FoundMarks none;
  none.Refusal = ReasonForNoMarks(pyramid[std::min<std::size_t>(1, pyramid.size() - 1)], part_seen);
  return none;
}

FoundMarks FindMarksNear(const RgbImage& photo, PanelSize panel, const Marks& around) {
  const GreyImage image = GreyOf(photo);
  const Refiner refiner(image, panel);
  PhotoFindings findings{{photo.Width, photo.Height}, panel, {}, {}, false};
  MarkPlaces found;
  std::size_t before = 0;
  do {
    before = MarksThat(found, true).size();
    const std::vector<std::size_t> wanted = MarksThat(found, false);
    findings.Places = Completed(found);
    for (std::size_t i = 0; i < kMarkCount; ++i) {
      if (!findings.Places[i]) findings.Places[i] = Vector2d(around[i].X, around[i].Y);
    }
    MarkPlaces refined = findings.Places;
    refiner.Refine(wanted, refined, findings.Looks);
    for (const std::size_t mark : wanted) found[mark] = refined[mark];
  } while (MarksThat(found, true).size() > before);
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    if (found[i]) findings.Places[i] = found[i];
  }
  return Told(findings);
}

}  // namespace warpline
