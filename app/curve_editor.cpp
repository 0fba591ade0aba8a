#include "app/curve_editor.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "app/fault_report.h"
#include "core/tool_texts.h"
#include "model/curve.h"
#include "model/profile.h"

namespace warpline {
namespace {

constexpr int kGrabReach = 4;  // graph units around a point, in both directions
constexpr int kCurveSamples = 501;
constexpr double kSampleStep = 0.002;
constexpr double kLargestSpread = 0.25;
// With an even number of points, how near the two innermost may come to the centre of a symmetric
// curve.
constexpr int kLeftOfCentre = 235;
constexpr int kRightOfCentre = 265;
constexpr int kCentre = 250;

const InterpolationEntry& EntryAt(int entry) {
  if (entry < 0 || entry >= static_cast<int>(kInterpolationEntries.size())) {
    throw Fault(FaultCode::kIndexOutOfRange);
  }
  return kInterpolationEntries[static_cast<std::size_t>(entry)];
}

int NeighbourDistance(const CurveDefinition& curve) {
  return EntryAt(curve.CorreInterp - 1).neighbour_distance;
}

CurvePoint& PointAt(CurveDefinition& curve, int index) {
  return curve.CorreDataPts.at(static_cast<std::size_t>(index));
}

const CurvePoint& PointAt(const CurveDefinition& curve, int index) {
  return curve.CorreDataPts.at(static_cast<std::size_t>(index));
}

int LastPoint(const CurveDefinition& curve) {
  return curve.CorrePointNum - 1;
}

bool IsSymmetric(const CurveDefinition& curve) {
  return curve.CorreSymmetry != 0;
}

bool HasMiddlePoint(const CurveDefinition& curve) {
  return curve.CorrePointNum % 2 != 0;
}

bool MovesSideways(const CurveDefinition& curve, int s) {
  const int last = LastPoint(curve);
  if (s == 0 || s == last || curve.CorreFixed != 0) return false;
  return !(IsSymmetric(curve) && HasMiddlePoint(curve) && s == last / 2);
}

void MoveUpright(CurveDefinition& curve, int s, double y) {
  const double height = std::clamp(y, kLowestPointY, kHighestPointY);
  PointAt(curve, s).Y = height;
  if (IsSymmetric(curve)) PointAt(curve, LastPoint(curve) - s).Y = height;
}

CoordinateBounds SidewaysBounds(const CurveDefinition& curve, int s) {
  const int distance = NeighbourDistance(curve);
  int lower = GraphPositionOf(PointAt(curve, s - 1)).x + distance;
  int upper = GraphPositionOf(PointAt(curve, s + 1)).x - distance;
  if (IsSymmetric(curve) && !HasMiddlePoint(curve)) {
    const int left_of_centre = LastPoint(curve) / 2;
    if (s == left_of_centre) upper = kLeftOfCentre;
    if (s == left_of_centre + 1) lower = kRightOfCentre;
  }
  return {GraphX(lower), GraphX(upper)};
}

void MoveSideways(CurveDefinition& curve, int s, double x) {
  if (!MovesSideways(curve, s)) return;
  const CoordinateBounds bounds = SidewaysBounds(curve, s);
  const double place = std::min(std::max(x, bounds.lowest), bounds.highest);
  PointAt(curve, s).X = place;
  if (IsSymmetric(curve)) PointAt(curve, LastPoint(curve) - s).X = 1 - place;
}

// Each point is put onto the curve as the points before it have left it, so the curve is prepared
// anew for every one.
void SpreadPoints(CurveDefinition& curve, int count) {
  curve.CorrePointNum = NarrowTo<std::int16_t>(count);
  const int last = LastPoint(curve);
  for (int i = 0; i <= last; ++i) PointAt(curve, i).X = static_cast<double>(i) / last;
  for (int i = 0; i <= last; ++i) {
    CurvePoint& point = PointAt(curve, i);
    point.Y =
        std::clamp(EvaluateCurve(PrepareCurve(curve), point.X), kLowestPointY, kHighestPointY);
  }
  if (!IsSymmetric(curve)) return;
  for (int i = 0; i <= last / 2; ++i) PointAt(curve, last - i).Y = PointAt(curve, i).Y;
}

void ChangePoints(CurveDefinition& curve, int entry, int count) {
  const InterpolationEntry& limits = EntryAt(entry);
  SpreadPoints(curve, std::clamp(count, limits.fewest_points, limits.most_points));
  curve.CorreInterp = NarrowTo<std::int16_t>(entry + 1);
}

// Mirroring a left half that reaches beyond the centre would let X descend: then its points are
// held as far from the centre and from each other as dragging would hold them.
void PullBehindCentre(CurveDefinition& curve) {
  const int innermost = curve.CorrePointNum / 2 - 1;
  if (innermost < 1 || PointAt(curve, innermost).X < 0.5) return;
  const int distance = NeighbourDistance(curve);
  int limit = HasMiddlePoint(curve) ? kCentre - distance : kLeftOfCentre;
  for (int i = innermost; i > 0; --i, limit -= distance) {
    PointAt(curve, i).X = std::min(PointAt(curve, i).X, GraphX(limit));
  }
}

void MakeSymmetric(CurveDefinition& curve) {
  PullBehindCentre(curve);
  const int last = LastPoint(curve);
  for (int i = 0; i < curve.CorrePointNum / 2; ++i) {
    const CurvePoint& point = PointAt(curve, i);
    PointAt(curve, last - i) = {1 - point.X, point.Y};
  }
  if (HasMiddlePoint(curve)) PointAt(curve, last / 2).X = 0.5;
}

void Mirror(CurveDefinition& curve) {
  const auto begin = curve.CorreDataPts.begin();
  const auto end = begin + curve.CorrePointNum;
  std::reverse(begin, end);
  std::for_each(begin, end, [](CurvePoint& point) { point.X = 1 - point.X; });
}

double LargestOf(const std::vector<double>& samples) {
  return std::max(0.0, *std::max_element(samples.begin(), samples.end()));
}

double SmallestOf(const std::vector<double>& samples) {
  return std::min(1.0, *std::min_element(samples.begin(), samples.end()));
}

std::vector<double> NormalizedSamples(const CurveDefinition& curve) {
  std::vector<double> samples = SampleCurve(curve, kCurveSamples);
  const double spread = LargestOf(samples) - SmallestOf(samples);
  if (spread > kLargestSpread) {
    for (double& sample : samples) sample *= kLargestSpread / spread;
  }
  const double lift = 1.0 - LargestOf(samples);
  for (double& sample : samples) sample += lift;
  return samples;
}

void TakeNormalizedHeights(CurveDefinition& curve) {
  const std::vector<double> samples = NormalizedSamples(curve);
  for (int k = 0; k < curve.CorrePointNum; ++k) {
    CurvePoint& point = PointAt(curve, k);
    const int index = RoundTo<int>(point.X / kSampleStep);
    if (index < 0 || index >= kCurveSamples) throw Fault(FaultCode::kIndexOutOfRange);
    point.Y = samples[static_cast<std::size_t>(index)];
  }
}

}  // namespace

CurveEditor::CurveEditor(const LSSglobal& global, Axis axis, LSSfile& files,
                         const Messages& messages, Clock clock)
    : axis_(axis),
      files_(files),
      messages_(messages),
      curve_(global.Correction.Curves[axis]),
      confirmed_(curve_),
      applied_(curve_),
      grabbed_(curve_),
      clock_(std::move(clock)),
      history_(curve_) {}

// Works on a copy, which replaces the record only when no fault ended the work.
template <typename Work>
bool CurveEditor::Change(Work work) {
  CurveDefinition next = curve_;
  const bool done = ReportingFaults(messages_, [&] {
    work(next);
    return true;
  });
  if (!done) return false;
  changed_ = changed_ || next != curve_;
  curve_ = next;
  return true;
}

// A drag that is under way is a step before it.
template <typename Work>
bool CurveEditor::Edit(Work work, int gesture) {
  NoteStep();
  if (!Change(work)) return false;
  NoteStep(gesture);
  return true;
}

// For work after which a point's number means another point.
template <typename Work>
bool CurveEditor::Rebuild(Work work) {
  NoteStep();
  if (!Change(work)) return false;
  Deselect();
  NoteStep();
  return true;
}

void CurveEditor::Deselect() {
  dragging_ = false;
  selected_.reset();
  history_.EndGesture();
}

void CurveEditor::NoteStep(int gesture) {
  history_.Note(curve_, {selected_}, gesture, clock_());
}

void CurveEditor::GoTo(const CurveDefinition& curve, std::optional<int> point) {
  curve_ = curve;
  selected_ = point;
  changed_ = curve_ != applied_;
}

bool CurveEditor::Undo() {
  if (dragging_ || !CanUndo()) return false;
  const std::optional<int> point = history_.Undoable()->point;
  GoTo(history_.Undo(), point);
  return true;
}

bool CurveEditor::Redo() {
  if (dragging_ || !CanRedo()) return false;
  const std::optional<int> point = history_.Redoable()->point;
  GoTo(history_.Redo(), point);
  return true;
}

int CurveEditor::FewestPoints() const {
  return std::min<int>(EntryAt(InterpolationIndex()).fewest_points, curve_.CorrePointNum);
}

void CurveEditor::Press(int x, int y) {
  selected_ = PointUnder(x, y);
  dragging_ = selected_.has_value();
  grabbed_ = curve_;
  grabbed_changed_ = changed_;
  history_.EndGesture();
}

void CurveEditor::Release() {
  dragging_ = false;
  NoteStep();
}

std::optional<int> CurveEditor::PointUnder(int x, int y) const {
  const std::vector<GraphPosition> positions = GraphPositions();
  const auto hit = std::find_if(positions.begin(), positions.end(), [x, y](GraphPosition point) {
    return std::abs(point.x - x) <= kGrabReach && std::abs(point.y - y) <= kGrabReach;
  });
  if (hit == positions.end()) return std::nullopt;
  return static_cast<int>(hit - positions.begin());
}

void CurveEditor::Drag(int x, int y) {
  if (!dragging_) return;
  Change([this, x, y](CurveDefinition& curve) {
    MoveUpright(curve, *selected_, GraphY(y));
    MoveSideways(curve, *selected_, GraphX(x));
  });
}

void CurveEditor::CancelDrag() {
  if (!dragging_) return;
  dragging_ = false;
  curve_ = grabbed_;
  changed_ = grabbed_changed_;
  NoteStep();
}

bool CurveEditor::SelectNext() {
  const int next = selected_ ? *selected_ + 1 : 0;
  Deselect();
  if (next > LastPoint(curve_)) return false;
  selected_ = next;
  return true;
}

bool CurveEditor::SelectPrevious() {
  const int previous = selected_.value_or(curve_.CorrePointNum) - 1;
  Deselect();
  if (previous < 0) return false;
  selected_ = previous;
  return true;
}

void CurveEditor::MoveSelected(int dx, int dy) {
  if (!selected_) return;
  const auto move = [this, dx, dy](CurveDefinition& curve) {
    const GraphPosition position = GraphPositionOf(PointAt(curve, *selected_));
    if (dy != 0) MoveUpright(curve, *selected_, GraphY(position.y + dy));
    if (dx != 0) MoveSideways(curve, *selected_, GraphX(position.x + dx));
  };
  dragging_ ? Change(move) : Edit(move, 1 + *selected_);
}

void CurveEditor::SetSelectedX(double x) {
  if (!selected_) return;
  Edit([this, x](CurveDefinition& curve) { MoveSideways(curve, *selected_, x); });
}

void CurveEditor::SetSelectedY(double y) {
  if (!selected_) return;
  Edit([this, y](CurveDefinition& curve) { MoveUpright(curve, *selected_, y); });
}

std::optional<CoordinateBounds> CurveEditor::BoundsOfX() const {
  if (!selected_ || !MovesSideways(curve_, *selected_)) return std::nullopt;
  return SidewaysBounds(curve_, *selected_);
}

std::optional<CoordinateBounds> CurveEditor::BoundsOfY() const {
  if (!selected_) return std::nullopt;
  return CoordinateBounds{kLowestPointY, kHighestPointY};
}

bool CurveEditor::SetPointCount(int count) {
  return Rebuild(
      [this, count](CurveDefinition& curve) { ChangePoints(curve, InterpolationIndex(), count); });
}

bool CurveEditor::SetInterpolation(int entry) {
  if (entry == InterpolationIndex()) return true;
  return Rebuild(
      [entry](CurveDefinition& curve) { ChangePoints(curve, entry, curve.CorrePointNum); });
}

void CurveEditor::SetFixed(bool fixed) {
  Edit([fixed](CurveDefinition& curve) { curve.CorreFixed = fixed ? 1 : 0; });
}

bool CurveEditor::SetSymmetry(bool symmetric) {
  return Edit([symmetric](CurveDefinition& curve) {
    curve.CorreSymmetry = symmetric ? 1 : 0;
    if (symmetric) MakeSymmetric(curve);
  });
}

bool CurveEditor::Reverse() {
  return Rebuild(Mirror);
}

bool CurveEditor::Normalize() {
  if (!Edit(TakeNormalizedHeights)) return false;
  changed_ = true;
  return true;
}

bool CurveEditor::Seed(int shape) {
  if (shape == kNoShape) return true;
  return Rebuild([shape](CurveDefinition& curve) { ResetCurveDefinition(curve, shape); });
}

void CurveEditor::Apply(LSSglobal& global) {
  global.Correction.Curves[axis_] = curve_;
  confirmed_ = curve_;
  applied_ = curve_;
  changed_ = false;
  history_.EndGesture();
}

bool CurveEditor::ApplyForNow(LSSglobal& global) {
  if (!changed_ || dragging_ || Sampled().faulty) return false;
  global.Correction.Curves[axis_] = curve_;
  applied_ = curve_;
  changed_ = false;
  return true;
}

bool CurveEditor::TakeBack(LSSglobal& global) const {
  CurveDefinition& live = global.Correction.Curves[axis_];
  if (live == confirmed_) return false;
  live = confirmed_;
  return true;
}

bool CurveEditor::Import(const std::filesystem::path& path) {
  bool accepted = false;
  NoteStep();
  const bool finished = Change([&](CurveDefinition& curve) {
    accepted = files_.OpenDataFile(path, kTypeWls);
    if (accepted) curve = files_.Staging().Correction.Curves[kHorizontal];
  });
  if (!finished || !accepted) return false;
  Deselect();
  NoteStep();
  if (Sampled().faulty) messages_.ShowText(ToolText::kCurveFaulty, MessageIcon::kWarning);
  return true;
}

bool CurveEditor::Export(const std::filesystem::path& path) {
  files_.Staging().Correction.Curves[kHorizontal] = curve_;
  bool saved = false;
  Change([&](CurveDefinition&) { saved = files_.SaveDataFile(path, kTypeWls, files_.Staging()); });
  return saved;
}

std::vector<GraphPosition> CurveEditor::GraphPositions() const {
  std::vector<GraphPosition> positions;
  for (int i = 0; i <= LastPoint(curve_); ++i) {
    positions.push_back(GraphPositionOf(PointAt(curve_, i)));
  }
  return positions;
}

SampledCurve CurveEditor::Sampled() const {
  try {
    return {SampleCurve(curve_, kCurveSamples), false};
  } catch (const Fault&) {
    return {{}, true};
  }
}

PointReadOut CurveEditor::ReadOut() const {
  if (!selected_) return {};
  const CurvePoint& point = PointAt(curve_, *selected_);
  return {CoordinateText(point.X, 3), CoordinateText(point.Y, 3)};
}

}  // namespace warpline
