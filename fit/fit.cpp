#include "fit/fit.h"

#include <algorithm>
#include <cmath>

#include "core/conversions.h"
#include "core/parameters.h"
#include "fit/landing.h"
#include "fit/preparation.h"
#include "fit/search.h"
#include "model/registers.h"

namespace warpline {
namespace {

constexpr double kGood = 0.4;      // percent: straighter than most walls are even
constexpr double kSureErrors = 4;  // standard errors of what the marks say, that a gain must exceed
constexpr double kSameAsBest = 0.01;  // percent
constexpr double kNoticed = 0.05;     // percent, of a gain that is not sure
constexpr double kMadeByHand = 0.05;  // percent, that curves of its own must be better by

std::string Hundredths(double value) {
  return ShortestText(std::nearbyint(value * 100) / 100);
}

// Of a bound, which is to hold.
std::string HundredthsAbove(double value) {
  return Hundredths(std::ceil(value * 100) / 100);
}

CorrectionData NoCorrection(const FitInput& input, std::int16_t screen_type) {
  CorrectionData correction;
  correction.ScreenType = screen_type;
  for (const Axis axis : {kHorizontal, kVertical}) {
    correction.Projection[axis] = input.Projection[axis].value_or(0);
  }
  ResetToScreenType(correction);
  return correction;
}

std::array<PlaneLine, kPictureEdges> EdgesOf(const FitTask& task,
                                             const CorrectionData& correction) {
  constexpr int kParts = 32;
  const DrawnLines lines = DrawnLinesOf(BuildRegisters(correction, task.Panel), task.Panel);
  std::array<PlaneLine, kPictureEdges> edges;
  for (std::size_t i = 0; i < kPictureEdges; ++i) {
    for (int part = 0; part <= kParts; ++part) {
      const PlanePoint picture = kPictureLines[i].Point(static_cast<double>(part) / kParts);
      edges[i].push_back(task.Seen.PhotoOf(LandingOf(lines, task.Panel, picture)));
    }
  }
  return edges;
}

// What is compared between screen types, and with no correction at all.
double FigureOf(const FitTask& task, const Straightness& off) {
  return task.Wanted ? off.Place : off.Edges;
}

// How far the middle of a panel's edge lies beside its ends.
double BowOf(const View& view, const PictureLine& edge) {
  const auto across = [&](double along) { return edge.Across(view.FrameOf(edge.Point(along))); };
  return across(0.5) - (across(0) + across(1)) / 2;
}

// The optical centre that would bend both opposite edges straight: lines grow and shrink about it.
double NeededCentre(const View& view, bool upright) {
  const double first = BowOf(view, kPictureLines[upright ? 0 : 1]);
  const double last = BowOf(view, kPictureLines[upright ? 2 : 3]);
  return (first + last) / (last - first);
}

bool Allows(const Orientation& orientation, double centre) {
  constexpr double kTolerance = 0.1;
  return centre >= LowestCentre(orientation) - kTolerance &&
         centre <= HighestCentre(orientation) + kTolerance;
}

// Why the best is no better.
NamedText NoteOn(const FitTask& task, const Candidate& best) {
  const double figure = FigureOf(task, best.Off);
  if (figure <= kGood) return {};
  // Upright edges are made by the rows' sizes, which are the horizontal axis.
  const bool upright = kPictureLines[best.Off.WorstEdge].Upright;
  const Axis axis = upright ? kHorizontal : kVertical;
  const double centre = NeededCentre(task.Seen, upright);
  const int distortion = std::abs(best.Correction.Axes[axis].Distortion);
  std::string_view name = "FitShapeDiffers";
  if (!Allows(std::nullopt, centre)) {
    name = upright ? "FitSidesBendAlike" : "FitEdgesBendAlike";
  } else if (!Allows(task.Orientations[axis], centre)) {
    name = "FitOrientationLimits";
  } else if (distortion >= WindowRange(ParameterField::kDistortion, 0).high) {
    name = "FitBendsTooMuch";
  } else if (best.Correction.ScreenType == kOtherScreens) {
    name = "FitBeyondProjector";
  }
  return {name, {Hundredths(figure)}, {}};
}

// A gain that is no larger than what the marks and the lens leave open may be none: then the
// picture stays as it is.
double LeastGain(const Preparation& prepared) {
  return kSureErrors * prepared.EdgeError + 2 * prepared.LensBound;
}

FitResult ResultFor(const FitInput& input, const Preparation& prepared, const DrawnLines& near,
                    std::int16_t screen_type) {
  const FitTask& task = prepared.Task;
  const Candidate before = JudgeCorrection(task, NoCorrection(input, screen_type));
  Candidate best = BestCorrection(task, screen_type, near);
  FitResult result;
  result.ScreenType = screen_type;
  result.Note = NoteOn(task, best);
  const double least = FigureOf(task, before.Off) - LeastGain(prepared);
  if (FigureOf(task, best.Off) >= least) {
    const std::string left = Hundredths(FigureOf(task, before.Off));
    if (FigureOf(task, before.Off) <= kGood) {
      result.Note = {"FitStraightAlready", {left}, {}};
    } else if (prepared.LensBound > 0) {
      result.Note = {"FitLensMayBeAll", {left, Hundredths(prepared.LensBound)}, {}};
    } else if (result.Note.Name.empty() ||
               FigureOf(task, best.Off) + kNoticed < FigureOf(task, before.Off)) {
      result.Note = {"FitMarksMayBeAll", {left}, {}};
    }
    best = before;
  }
  result.Correction = best.Correction;
  result.Before = before.Off;
  result.After = best.Off;
  result.PixelsBefore = before.Off.Edges * task.Panel.Height / 100;
  result.PixelsAfter = best.Off.Edges * best.Height / before.Height * task.Panel.Height / 100;
  result.Area = best.Area;
  result.Edges = EdgesOf(task, best.Correction);
  return result;
}

std::vector<MarkMisfit> WorstMarks(const Preparation& prepared) {
  constexpr std::size_t kShown = 3;
  std::vector<MarkMisfit> worst;
  for (std::size_t i = 0; i < prepared.Misfit.size(); ++i) {
    worst.push_back({i, prepared.Grid.Column[i] + 1, prepared.Grid.Row[i] + 1, prepared.Misfit[i],
                     !prepared.Kept[i]});
  }
  std::ranges::stable_sort(worst, [](const MarkMisfit& a, const MarkMisfit& b) {
    return a.Dropped != b.Dropped ? a.Dropped : a.Pixels > b.Pixels;
  });
  const auto dropped = static_cast<std::size_t>(std::ranges::count(prepared.Kept, false));
  worst.resize(std::min(worst.size(), std::max(kShown, dropped)));
  return worst;
}

// The least figure; of those as good the first, and rather one whose curves are made already.
std::size_t IndexOfBest(const FitTask& task, const std::vector<FitResult>& results) {
  std::size_t best = 0;
  for (std::size_t i = 1; i < results.size(); ++i) {
    const double margin = results[i].ScreenType == kOtherScreens ? kMadeByHand : kSameAsBest;
    if (FigureOf(task, results[i].After) + margin < FigureOf(task, results[best].After)) best = i;
  }
  return best;
}

// For what is foretold, with the correction and without.
double LensBoundOf(const Preparation& prepared, const FitResult& result) {
  constexpr double kSafety = 1.1;  // for what rounding and other errors add
  const FitTask& task = prepared.Task;
  const DrawnLines lines = DrawnLinesOf(BuildRegisters(result.Correction, task.Panel), task.Panel);
  const double after = LensErrorOf(task, [&](PlanePoint picture) {
    return task.Seen.FrameOf(LandingOf(lines, task.Panel, picture));
  });
  const double before =
      LensErrorOf(task, [&](PlanePoint picture) { return task.Seen.FrameOf(picture); });
  return kSafety * std::max({prepared.LensBound, before, after});
}

void AddWarnings(FitReport& report) {
  for (const MarkMisfit& mark : report.Worst) {
    if (!mark.Dropped) continue;
    report.Warnings.push_back(
        {"FitMarkDropped",
         {std::to_string(mark.Column), std::to_string(mark.Row), Hundredths(mark.Pixels)},
         {}});
  }
  constexpr double kUnsure = 0.15;
  if (report.MarksBound > kUnsure) {
    report.Warnings.push_back({"FitEdgesUnsure", {HundredthsAbove(report.MarksBound)}, {}});
  }
  if (!report.LensTerm) {
    report.Warnings.push_back({"FitLensUnknown", {HundredthsAbove(report.LensBound)}, {}});
  }
}

}  // namespace

std::optional<FitReport> FitCorrection(const FitInput& input, NamedText& reason) {
  std::optional<Preparation> prepared = PrepareFit(input, reason);
  if (!prepared) return std::nullopt;
  FitReport report;
  const DrawnLines near = StraighteningLines(prepared->Task);
  for (const ScreenTypeRow& row : kScreenTypes) {
    if (input.ScreenType && *input.ScreenType != row.type) continue;
    report.Results.push_back(ResultFor(input, *prepared, near, row.type));
  }
  const FitTask& task = prepared->Task;
  report.Chosen = IndexOfBest(task, report.Results);
  report.Corners = CornersOf(task.Seen, task.Wanted.value_or(task.Largest));
  report.EdgesBefore = EdgesOf(task, NoCorrection(input, kOtherScreens));
  report.LensTerm = prepared->LensTerm;
  if (!report.LensTerm) report.LensBound = LensBoundOf(*prepared, report.Results[report.Chosen]);
  report.MarksBound = prepared->MarksBound;
  report.Worst = WorstMarks(*prepared);
  report.Warnings = std::move(prepared->Warnings);
  AddWarnings(report);
  return report;
}

std::optional<PhotoCorners> LargestRectangle(const FitInput& input, NamedText& reason) {
  FitInput without_corners = input;
  without_corners.Corners = std::nullopt;
  const std::optional<Preparation> prepared = PrepareFit(without_corners, reason);
  if (!prepared) return std::nullopt;
  return CornersOf(prepared->Task.Seen, prepared->Task.Largest);
}

}  // namespace warpline
