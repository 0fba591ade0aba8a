#include "fit/search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/parameters.h"
#include "fit/least_squares.h"
#include "model/registers.h"

namespace warpline {
namespace {

struct Pair {
  std::array<ShapedAxis, kAxisCount> Axes;

  explicit Pair(const FamilyPair& families)
      : Axes{ShapedAxis(families[kHorizontal]), ShapedAxis(families[kVertical])} {}
};

using Shapes = std::array<AxisShape, kAxisCount>;

void Append(const AxisShape& shape, Orientation orientation, bool centre_stays,
            std::vector<Bounded>& point) {
  constexpr double kSmallest = 0.52;  // what a line's scale can still say
  constexpr double kLargest = 1.4;
  const bool fixed = shape.Values.size() == 2;
  for (const double value : shape.Values) {
    point.push_back({value, fixed ? -4.0 : kSmallest, fixed ? 4.0 : kLargest});
  }
  const double k = shape.OpticalCentre;
  point.push_back({k, centre_stays ? k : LowestCentre(orientation),
                   centre_stays ? k : HighestCentre(orientation)});
  point.push_back({shape.Shift, -0.49, 0.49});
}

Shapes ShapesOf(const Pair& pair, std::span<const double> point) {
  Shapes shapes;
  std::size_t at = 0;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const std::size_t count = pair.Axes[axis].ValueCount();
    const auto values = point.subspan(at, count);
    shapes[axis] = {{values.begin(), values.end()}, point[at + count], point[at + count + 1]};
    at += count + 2;
  }
  return shapes;
}

DrawnLines DrawnBy(const Pair& pair, const Shapes& shapes) {
  return {pair.Axes[kHorizontal].Draw(shapes[kHorizontal]),
          pair.Axes[kVertical].Draw(shapes[kVertical])};
}

double SquaresOf(const FitTask& task, const Pair& pair, const Shapes& shapes) {
  std::vector<double> residuals;
  FillResiduals(task, DrawnBy(pair, shapes), 0, residuals);
  double sum = 0;
  for (const double residual : residuals) sum += residual * residual;
  return sum;
}

struct Refinement {
  int MostSteps;
  double Worst = 0;  // as FillResiduals takes it
  bool CentresStay = false;
};

Shapes Refined(const FitTask& task, const Pair& pair, const Shapes& start,
               const Refinement& refinement) {
  std::vector<Bounded> point;
  for (const Axis axis : {kHorizontal, kVertical}) {
    Append(start[axis], task.Orientations[axis], refinement.CentresStay, point);
  }
  const auto residuals = [&](std::span<const double> at, std::vector<double>& values) {
    FillResiduals(task, DrawnBy(pair, ShapesOf(pair, at)), refinement.Worst, values);
  };
  return ShapesOf(pair, LeastSquares(residuals, point, refinement.MostSteps));
}

// How far the worst edge is off, in shares of the height; 0 where that does not matter any more.
double WorstEdgeOf(const FitTask& task, const DrawnLines& lines) {
  constexpr double kNoMatter = 0.2;  // percent
  const SeenAt seen = [&](PlanePoint picture) {
    return task.Seen.FrameOf(LandingOf(lines, task.Panel, picture));
  };
  const Straightness off = StraightnessOf(seen, task.Wanted);
  const double worst = task.Wanted ? off.Place : off.Edges;
  return worst > kNoMatter ? worst / 100 : 0;
}

// Where the search may begin. A line that bends towards the optical centre can be made by one on
// either side of the panel: on all sides.
std::vector<Shapes> EvenStarts(const Pair& pair) {
  constexpr double kAside = 1;
  constexpr double kInside = 0.97;  // nothing leaves the panel yet
  std::vector<Shapes> starts;
  for (const double h : {-kAside, kAside}) {
    for (const double v : {-kAside, kAside}) {
      starts.push_back({pair.Axes[kHorizontal].Even(kInside), pair.Axes[kVertical].Even(kInside)});
      starts.back()[kHorizontal].OpticalCentre = h;
      starts.back()[kVertical].OpticalCentre = v;
    }
  }
  return starts;
}

Shapes SmoothBest(const FitTask& task, const Pair& pair, const std::vector<Shapes>& starts) {
  constexpr int kFirstSteps = 10;
  constexpr int kLastSteps = 20;
  Shapes best;
  double least = std::numeric_limits<double>::infinity();
  for (const Shapes& start : starts) {
    const Shapes end = Refined(task, pair, start, {kFirstSteps});
    const double squares = SquaresOf(task, pair, end);
    if (squares < least) {
      least = squares;
      best = end;
    }
  }
  return Refined(task, pair, best, {kLastSteps});
}

// What counts is the worst edge: from where all edges are about straight to where it is.
Shapes Sharpened(const FitTask& task, const Pair& pair, Shapes shapes) {
  constexpr int kRounds = 3;
  constexpr int kSteps = 20;
  for (int round = 0; round < kRounds; ++round) {
    const double worst = WorstEdgeOf(task, DrawnBy(pair, shapes));
    if (worst == 0) break;
    shapes = Refined(task, pair, shapes, {kSteps, worst});
  }
  return shapes;
}

// The optical centre has the coarsest steps: what is lost by rounding it, the others make up for.
Candidate Encoded(const FitTask& task, const Pair& pair, Shapes shapes, double worst,
                  std::int16_t screen_type) {
  constexpr int kSteps = 8;
  for (AxisShape& shape : shapes) {
    shape.OpticalCentre = std::nearbyint(shape.OpticalCentre * 32) / 32;
  }
  shapes = Refined(task, pair, shapes, {kSteps, worst, true});
  CorrectionData correction;
  correction.ScreenType = screen_type;
  for (const Axis axis : {kHorizontal, kVertical}) {
    pair.Axes[axis].Encode(shapes[axis], task.Orientations[axis], correction, axis);
  }
  return JudgeCorrection(task, correction);
}

struct Move {
  ParameterField Field;
  int Step;
  bool Scales = false;  // the shape of the lines stays
};

constexpr Move kMoves[] = {
    {ParameterField::kDistortion, 1},      {ParameterField::kDistortion, 2},
    {ParameterField::kOptical, 1},         {ParameterField::kOptical, 2},
    {ParameterField::kAmplitude, 1, true}, {ParameterField::kPosition, 16, true},
    {ParameterField::kPosition, 64, true}, {ParameterField::kPosition, 256, true},
};

// False when the parameter is at its bound.
bool MoveBy(CorrectionData& correction, Axis axis, ParameterField field, int step) {
  AxisParameters& parameters = correction.Axes[axis];
  const ParameterRow& row = RowOfParameter(field);
  const Range range = WindowRange(field, correction.Projection[axis]);
  const std::int32_t value = row.load(parameters) + step;
  if (!range.Holds(value)) return false;
  row.store(parameters, value);
  return true;
}

// Whole steps of the parameters, as long as the registers make a better picture of one.
Candidate Polished(const FitTask& task, Candidate best, int most_rounds) {
  const bool free_curves = best.Correction.ScreenType == kOtherScreens;
  bool better = true;
  for (int round = 0; round < most_rounds && better; ++round) {
    better = false;
    for (const Axis axis : {kHorizontal, kVertical}) {
      for (const Move& move : kMoves) {
        if (free_curves && !move.Scales) continue;
        for (const int step : {move.Step, -move.Step}) {
          CorrectionData next = best.Correction;
          if (!MoveBy(next, axis, move.Field, step)) continue;
          const Candidate candidate = JudgeCorrection(task, next);
          if (candidate.Score >= best.Score) continue;
          best = candidate;
          better = true;
        }
      }
    }
  }
  return best;
}

// All edges about straight, unless the worst one gains by being the one that counts: seen after a
// first round of whole steps, which takes back most of what rounding did.
Candidate BestEncoded(const FitTask& task, const Pair& pair, const Shapes& shapes,
                      std::int16_t screen_type) {
  const auto encoded = [&](const Shapes& smooth, double worst) {
    return Polished(task, Encoded(task, pair, smooth, worst, screen_type), 1);
  };
  const Candidate even = encoded(shapes, 0);
  if (WorstEdgeOf(task, DrawnBy(pair, shapes)) == 0) return even;
  const Shapes sharpened = Sharpened(task, pair, shapes);
  const Candidate sharp = encoded(sharpened, WorstEdgeOf(task, DrawnBy(pair, sharpened)));
  constexpr double kWorth = 0.01;  // percent
  return sharp.Score + kWorth < even.Score ? sharp : even;
}

// An axis that adds next to nothing stays as a reset leaves it.
Candidate WithoutNeedless(const FitTask& task, Candidate best) {
  constexpr double kNothing = 0.02;  // percent
  for (const Axis axis : {kHorizontal, kVertical}) {
    CorrectionData next = best.Correction;
    next.Projection[axis] = task.Orientations[axis].value_or(0);
    CorrectionData fresh = next;
    ResetToScreenType(fresh);
    next.Axes[axis] = fresh.Axes[axis];
    next.Curves[axis] = fresh.Curves[axis];
    const Candidate candidate = JudgeCorrection(task, next);
    if (candidate.Score < best.Score + kNothing) best = candidate;
  }
  return best;
}

}  // namespace

Candidate JudgeCorrection(const FitTask& task, const CorrectionData& correction) {
  constexpr double kGridShare = 0.15;  // beside the edges, which catch the eye
  constexpr double kAreaShare = 1;     // percent, for a picture of no size
  constexpr double kOutside = 30;      // times the share that leaves the panel
  constexpr double kUnnoticed = 0.3;   // pixels that may
  constexpr double kMostArea = 10;     // a larger picture is torn apart
  const DrawnLines lines = DrawnLinesOf(BuildRegisters(correction, task.Panel), task.Panel);
  double outside = 0;
  const SeenAt seen = [&](PlanePoint picture) {
    const PlanePoint landing = LandingOf(lines, task.Panel, picture);
    outside = std::max({outside, -landing.X, landing.X - 1, -landing.Y, landing.Y - 1});
    return task.Seen.FrameOf(landing);
  };
  Sides around;
  Candidate candidate{correction, StraightnessOf(seen, task.Wanted, &around)};
  candidate.Height = around.Height();
  const double area = around.Area() / task.Largest.Area();
  candidate.Area = area;
  candidate.Unfit = kOutside * 100 * std::max(0.0, outside - kUnnoticed / task.Panel.Width);
  if (!task.Wanted) candidate.Unfit += 100 * std::max(0.0, kLeastArea - area);
  // Where a line of the picture lands may run away; its place, then, is nowhere or no number.
  if (!(area < kMostArea)) candidate.Unfit = std::numeric_limits<double>::infinity();
  const Straightness& off = candidate.Off;
  candidate.Score = (task.Wanted ? off.Place : off.Edges + kAreaShare * (1 - area)) +
                    kGridShare * off.Grid + candidate.Unfit;
  return candidate;
}

DrawnLines StraighteningLines(const FitTask& task) {
  const Pair pair(FamiliesOf(kOtherScreens).front());
  return DrawnBy(pair, Sharpened(task, pair, SmoothBest(task, pair, EvenStarts(pair))));
}

Candidate BestCorrection(const FitTask& task, std::int16_t screen_type, const DrawnLines& near) {
  constexpr int kMostRounds = 12;
  const bool free_curves = screen_type == kOtherScreens;
  std::optional<Candidate> best;
  for (const FamilyPair& families : FamiliesOf(screen_type)) {
    const Pair pair(families);
    std::vector<Shapes> starts;
    if (!free_curves) starts = EvenStarts(pair);
    starts.push_back({pair.Axes[kHorizontal].Nearest(near[kHorizontal]),
                      pair.Axes[kVertical].Nearest(near[kVertical])});
    const Shapes shapes = SmoothBest(task, pair, starts);
    const Candidate candidate = WithoutNeedless(
        task, Polished(task, BestEncoded(task, pair, shapes, screen_type), kMostRounds));
    if (!best || candidate.Score < best->Score) best = candidate;
  }
  return *best;
}

}  // namespace warpline
