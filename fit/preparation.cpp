#include "fit/preparation.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace warpline {
namespace {

constexpr double kUsualShare = 0.5;    // of the photograph's width, that the picture fills
constexpr double kMostShare = 0.65;    // beyond that a lens's faults tell
constexpr double kLeastStray = 0.002;  // of the height; what is less does no harm
constexpr double kMostMisfit = 0.03;   // of the height: that is no picture of these marks

NamedText No(std::string_view name) {
  return {name, {}, {}};
}

// The box around the marks in the photograph.
Sides BoxOf(const Marks& marks) {
  Sides box{marks[0].X, marks[0].Y, marks[0].X, marks[0].Y};
  for (const Mark& mark : marks) {
    box = {std::min(box.Left, mark.X), std::min(box.Top, mark.Y), std::max(box.Right, mark.X),
           std::max(box.Bottom, mark.Y)};
  }
  return box;
}

Lens CameraOf(const FitInput& input, const Sides& box) {
  if (input.Photo) return LensWithoutFault(*input.Photo);
  const double width = (box.Right - box.Left) / kUsualShare;
  return {{(box.Left + box.Right) / 2, (box.Top + box.Bottom) / 2},
          std::hypot(width, 0.75 * width) / 2,
          0};
}

bool Inside(const Sides& box, PhotoSize photo) {
  return box.Left >= 0 && box.Top >= 0 && box.Right <= photo.Width && box.Bottom <= photo.Height;
}

template <typename Value>
std::vector<Value> KeptOf(const std::vector<Value>& values, const std::vector<bool>& kept) {
  std::vector<Value> left;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (kept[i]) left.push_back(values[i]);
  }
  return left;
}

// Two marks, each where the other belongs.
bool Exchanged(const Surface& surface, const PlaneLine& places, const PlaneLine& landed,
               const std::vector<bool>& kept) {
  constexpr double kNear = 0.3;  // of the distance between both
  for (std::size_t a = 0; a < places.size(); ++a) {
    for (std::size_t b = 0; b < a && !kept[a]; ++b) {
      if (kept[b]) continue;
      const PlanePoint at_a = surface.At(places[a].X, places[a].Y);
      const PlanePoint at_b = surface.At(places[b].X, places[b].Y);
      const double near = kNear * DistanceOf(at_a, at_b);
      if (DistanceOf(landed[a], at_b) < near && DistanceOf(landed[b], at_a) < near) return true;
    }
  }
  return false;
}

// The marks on their way from the panel to the frame.
struct Marked {
  PlaneLine Places;    // shares of the panel
  PlaneLine Straight;  // in a photograph by a lens without fault
  PlaneLine Landed;    // in the frame, before the wanted corners turn it
  double Aspect;
  MarkLines Lines;

  // The projective map of the panel, one unit high, into the photograph; and Landed by it.
  std::optional<Homography> Frame(const std::vector<bool>& kept) {
    PlaneLine panel;
    for (const PlanePoint& place : Places) panel.push_back({place.X * Aspect, place.Y});
    auto frame = Homography::Through(KeptOf(panel, kept), KeptOf(Straight, kept));
    if (!frame) return std::nullopt;
    const Homography back = frame->Inverse();
    Landed.clear();
    for (const PlanePoint& point : Straight) Landed.push_back(back(point));
    return frame;
  }
};

Marked MarkedOf(const FitInput& input, const MarkGrid& grid, const Lens& camera) {
  Marked marked{{},
                {},
                {},
                static_cast<double>(input.Panel.Width) / input.Panel.Height,
                {grid.Columns, grid.Rows}};
  for (const Mark& mark : input.Seen) {
    marked.Places.push_back({mark.U, mark.V});
    marked.Straight.push_back(camera.PlaceOf({mark.X, mark.Y}));
  }
  return marked;
}

// Fills in the view but for the wanted corners.
bool SeeMarks(const FitInput& input, Preparation& prepared, NamedText& reason) {
  View& view = prepared.Task.Seen;
  Marked marked = MarkedOf(input, prepared.Grid, view.Camera);
  std::vector<bool>& kept = prepared.Kept;
  kept.assign(input.Seen.size(), true);
  reason = No("FitMarksCrossed");
  if (!marked.Frame(kept)) return false;
  FitSurfaceWithoutStrays(marked.Places, marked.Landed, marked.Lines, kLeastStray, kept);
  const std::optional<Homography> frame = marked.Frame(kept);
  if (!frame) return false;
  const SurfaceFit fit =
      FitSurface(marked.Places, marked.Landed, kept, marked.Lines, Strays::kNone);
  const std::vector<double> misfits = KeptOf(fit.Misfit, kept);
  if (std::ranges::max(misfits) > kMostMisfit) {
    const NamedText fault = OrderFault(input.Seen, prepared.Grid, kept);
    if (!fault.Name.empty()) reason = fault;
    return false;
  }
  const NamedText fault = OrderFault(input.Seen, prepared.Grid, kept);
  if (!fault.Name.empty()) reason = fault;
  if (!fault.Name.empty() || Exchanged(fit.Shape, marked.Places, marked.Landed, kept)) return false;
  view.Aspect = marked.Aspect;
  view.Landed = fit.Shape;
  view.ToPhoto = *frame;
  prepared.EdgeError = 100 * fit.EdgeError;
  const double scale =
      DistanceOf((*frame)({0.5 * marked.Aspect, 0}), (*frame)({0.5 * marked.Aspect, 1}));
  for (const double misfit : fit.Misfit) prepared.Misfit.push_back(misfit * scale);
  return true;
}

// The wanted rectangle becomes the frame.
bool TurnToCorners(const PhotoCorners& corners, FitTask& task) {
  View& view = task.Seen;
  PlaneLine straight;
  for (const PlanePoint& corner : corners) straight.push_back(view.Camera.PlaceOf(corner));
  for (std::size_t i = 0; i < 4; ++i) {
    const PlanePoint& a = straight[i];
    const PlanePoint& b = straight[(i + 1) % 4];
    const PlanePoint& c = straight[(i + 2) % 4];
    if (!((b.X - a.X) * (c.Y - a.Y) - (c.X - a.X) * (b.Y - a.Y) > 0)) return false;
  }
  task.Wanted = Sides{0, 0, view.Aspect, 1};
  const PlaneLine upright{{0, 0}, {view.Aspect, 0}, {view.Aspect, 1}, {0, 1}};
  const std::optional<Homography> frame = Homography::Through(upright, straight);
  if (!frame) return false;
  view.Turned = frame->Inverse().After(view.ToPhoto);
  view.ToPhoto = *frame;
  return true;
}

// Whether the panel's light ends within the wanted rectangle.
bool LeavesLight(const FitTask& task) {
  constexpr int kParts = 32;
  constexpr double kOutside = 0.01;
  for (std::size_t i = 0; task.Wanted && i < kPictureEdges; ++i) {
    for (int part = 0; part <= kParts; ++part) {
      const PlanePoint at =
          task.Seen.FrameOf(kPictureLines[i].Point(static_cast<double>(part) / kParts));
      const Sides& wanted = *task.Wanted;
      if (std::min({at.X - wanted.Left, wanted.Right - at.X, at.Y - wanted.Top,
                    wanted.Bottom - at.Y}) > kOutside) {
        return true;
      }
    }
  }
  return false;
}

// Of the wanted rectangle, or else of the largest one.
double LensBoundOf(const FitTask& task) {
  const Sides& sides = task.Wanted ? *task.Wanted : task.Largest;
  return LensErrorOf(task, [&](PlanePoint picture) {
    return PlanePoint{sides.Left + picture.X * (sides.Right - sides.Left),
                      sides.Top + picture.Y * sides.Height()};
  });
}

// Percent of the height that the foretold edges may be off, by how far an outer mark lies from
// where the others put it. The worst one counts: a wall may fall off at one corner alone.
double MarksBoundOf(const Preparation& prepared, const Marks& seen) {
  constexpr double kSafety = 1.5;  // times the misfit; a picture reaches farther out than its marks
  const View& view = prepared.Task.Seen;
  double most = 0;
  for (std::size_t i = 0; i < seen.size(); ++i) {
    if (!prepared.Kept[i] || !IsOuter({seen[i].U, seen[i].V})) continue;
    most = std::max(most, prepared.Misfit[i]);
  }
  return 100 * kSafety * most / DistanceOf(view.PhotoOf({0.5, 0}), view.PhotoOf({0.5, 1}));
}

void Warn(const FitInput& input, const Sides& box, Preparation& prepared) {
  if (input.Photo && box.Right - box.Left > kMostShare * input.Photo->Width) {
    prepared.Warnings.push_back(No("FitPictureWide"));
  }
  if (!input.StraightLines.empty() && !prepared.LensTerm) {
    prepared.Warnings.push_back(No("FitLinesTellNothing"));
  }
  if (LeavesLight(prepared.Task)) prepared.Warnings.push_back(No("FitCornersOutside"));
}

}  // namespace

std::optional<Preparation> PrepareFit(const FitInput& input, NamedText& reason) {
  Preparation prepared;
  std::optional<MarkGrid> grid = MarkGridOf(input.Seen, reason);
  if (!grid) return std::nullopt;
  prepared.Grid = std::move(*grid);
  const Sides box = BoxOf(input.Seen);
  if (input.Photo && !Inside(box, *input.Photo)) {
    reason = No("FitMarksOutside");
    return std::nullopt;
  }
  FitTask& task = prepared.Task;
  task.Panel = input.Panel;
  task.Orientations = input.Projection;
  task.Seen.Camera = CameraOf(input, box);
  prepared.LensTerm = LensTermOf(input.StraightLines, task.Seen.Camera);
  task.Seen.Camera.K1 = prepared.LensTerm.value_or(0);
  if (!SeeMarks(input, prepared, reason)) return std::nullopt;
  if (input.Corners && !TurnToCorners(*input.Corners, task)) {
    reason = No("FitCornersWrong");
    return std::nullopt;
  }
  task.Largest = LargestInside(task.Seen);
  if (!(task.Largest.Area() > 0)) {
    reason = No("FitMarksCrossed");
    return std::nullopt;
  }
  if (!prepared.LensTerm) prepared.LensBound = LensBoundOf(task);
  prepared.MarksBound = MarksBoundOf(prepared, input.Seen);
  Warn(input, box, prepared);
  return prepared;
}

double LensErrorOf(const FitTask& task, const SeenAt& seen) {
  const View& view = task.Seen;
  const Homography back = view.ToPhoto.Inverse();
  const double told = StraightnessOf(seen, std::nullopt).Edges;
  double error = 0;
  for (const double k1 : {-kUsualLensTerm, kUsualLensTerm}) {
    Lens lens = view.Camera;
    lens.K1 = k1;
    const SeenAt bent = [&](PlanePoint picture) {
      return back(lens.PlaceOf(view.Camera.Shown(view.ToPhoto(seen(picture)))));
    };
    error = std::max(error, std::abs(StraightnessOf(bent, std::nullopt).Edges - told));
  }
  return error;
}

PhotoCorners CornersOf(const View& view, const Sides& sides) {
  const auto at = [&](double x, double y) { return view.Camera.Shown(view.ToPhoto({x, y})); };
  return {at(sides.Left, sides.Top), at(sides.Right, sides.Top), at(sides.Right, sides.Bottom),
          at(sides.Left, sides.Bottom)};
}

}  // namespace warpline
