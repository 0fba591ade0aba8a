#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/curve_graph.h"
#include "app/value_history.h"
#include "core/LSSglobal.h"
#include "core/correction.h"
#include "core/messages.h"
#include "files/LSSfile.h"

// The curve editor without its window. It edits a copy of one axis's curve; the live curve changes
// on Apply, and at each change while the user wants to see them at once. The window forwards what
// the user did and then sets its controls and its graph from here again.

namespace warpline {

// An entry of the interpolation list; the stored type is the entry's position plus 1.
struct InterpolationEntry {
  int text;                // message number
  int fewest_points;       // what a requested point count is raised to
  int most_points;         // and lowered to
  int neighbour_distance;  // graph units that dragging keeps between two points
};
inline constexpr std::array<InterpolationEntry, 5> kInterpolationEntries{{
    {kMsgStraightLine, 2, 16, 15},
    {kMsgQuadratic, 3, 16, 30},
    {kMsgCubic, 4, 16, 30},
    {kMsgQuartic, 5, 16, 30},
    {kMsgBSpline, 4, 16, 15},
}};

// What the shape dialog reports when it was cancelled.
inline constexpr int kNoShape = 65535;

// The curve for drawing: 501 samples over X = 0..1, or none when it cannot be evaluated.
struct SampledCurve {
  std::vector<double> samples;
  bool faulty = false;
};

// The lowest and the highest value that a coordinate may have. Where they cross, the higher one
// counts.
struct CoordinateBounds {
  double lowest = 0;
  double highest = 0;

  bool operator==(const CoordinateBounds&) const = default;
};

// A point's coordinates in figures, both empty when no point is chosen.
struct PointReadOut {
  std::string x;
  std::string y;
};

struct CurveStep {
  std::optional<int> point;  // the chosen one, where the step left its number to it
};
using CurveHistory = ValueHistory<CurveDefinition, CurveStep>;

class CurveEditor {
 public:
  using Clock = std::function<CurveHistory::Time()>;

  // Starts with the axis's live curve. files and messages must outlive this object.
  CurveEditor(const LSSglobal& global, Axis axis, LSSfile& files, const Messages& messages,
              Clock clock = std::chrono::steady_clock::now);

  // What the controls show: check boxes, point count, interpolation and points are all those of
  // this record.
  const CurveDefinition& Curve() const { return curve_; }
  Axis EditedAxis() const { return axis_; }
  int InterpolationIndex() const { return curve_.CorreInterp - 1; }

  // The lowest point count to offer: the interpolation's fewest, less when an imported curve has
  // less.
  int FewestPoints() const;

  // Whether there are changes that were not applied yet (the Apply button).
  bool Changed() const { return changed_; }

  // The pointer in graph units. Press grabs the first point within 4 units, and chooses none when
  // there is none; Drag moves the grabbed point within its bounds; Release lets it go, still
  // chosen.
  void Press(int x, int y);
  void Drag(int x, int y);
  void Release();
  bool Dragging() const { return dragging_; }

  // Ends the drag with the record as it was when the point was grabbed.
  void CancelDrag();

  // The point that Press would grab there.
  std::optional<int> PointUnder(int x, int y) const;

  // The point grabbed last or chosen by key (0..CorrePointNum - 1): the one to highlight.
  std::optional<int> SelectedPoint() const { return selected_; }

  // Chooses the next or the previous point; the first or the last when none was chosen. False, with
  // none chosen, when there is no further one: the keyboard focus may then go on.
  bool SelectNext();
  bool SelectPrevious();

  // Moves the chosen point by graph units (y grows downwards) under the bounds of dragging. A
  // direction with 0 keeps its coordinate as it is.
  void MoveSelected(int dx, int dy);

  // The key was let go. What MoveSelected does to a point is one step, as long as no rest between
  // two keys reaches CurveHistory::kLongestRest.
  void ReleaseKey() { history_.Rest(clock_()); }

  // Puts the chosen point to exact coordinates, held to the bounds of dragging. Without a chosen
  // point, or with an X that cannot change, they do nothing.
  void SetSelectedX(double x);
  void SetSelectedY(double y);

  // The bounds of the chosen point's coordinates; none for one that cannot change.
  std::optional<CoordinateBounds> BoundsOfX() const;
  std::optional<CoordinateBounds> BoundsOfY() const;

  // The commands below return false, with the record as it was, after a fault of the arithmetic
  // (already shown).

  // Holds the count to the limits of the interpolation, spreads the points evenly and puts them
  // onto the curve.
  bool SetPointCount(int count);

  // The entry (0..4) of the interpolation list. Points are spread as by SetPointCount, evaluated by
  // the former interpolation. The entry in force changes nothing.
  bool SetInterpolation(int entry);

  void SetFixed(bool fixed);

  // On: the right half becomes the mirrored left half at once. Points of the left half that lie
  // beyond the centre are first pulled back to it, so that X keeps ascending.
  bool SetSymmetry(bool symmetric);

  // Mirrors the curve left to right.
  bool Reverse();

  // Scales the curve to a spread of at most 0.25 and lifts its top to 1.0; the points take its
  // heights.
  bool Normalize();

  // Replaces the curve by an initial shape; kNoShape changes nothing.
  bool Seed(int shape);

  // Back and forth through the records since the start: a whole drag is one step, a run of keys
  // too, and each call that changes the record otherwise. The point that the step moved is chosen
  // then. False, without a change, when there is no step, and in the middle of a drag.
  bool CanUndo() const { return history_.CanUndo(); }
  bool CanRedo() const { return history_.CanRedo(); }
  bool Undo();
  bool Redo();

  // Copies the record into the live curve of the edited axis.
  void Apply(LSSglobal& global);

  // The same, while the user may still take it back. Does nothing, and returns false, without a
  // change, in the middle of a drag, and for a curve that cannot be computed.
  bool ApplyForNow(LSSglobal& global);

  // Puts the live curve back to what Apply left, or to what it was at first. False when it is that.
  bool TakeBack(LSSglobal& global) const;

  // Shape files. Import replaces the record by the file's, flags included and whatever its point
  // count; a refused file changes nothing. Failures are shown by the file layer; a shape that
  // cannot be computed is taken and told.
  bool Import(const std::filesystem::path& path);
  bool Export(const std::filesystem::path& path);

  // For drawing: the points in use in graph units, the curve, the chosen point's coordinates with
  // three decimals.
  std::vector<GraphPosition> GraphPositions() const;
  SampledCurve Sampled() const;
  PointReadOut ReadOut() const;

 private:
  template <typename Work>
  bool Change(Work work);
  template <typename Work>
  bool Edit(Work work, int gesture = 0);
  template <typename Work>
  bool Rebuild(Work work);
  void Deselect();
  void NoteStep(int gesture = 0);
  void GoTo(const CurveDefinition& curve, std::optional<int> point);

  Axis axis_;
  LSSfile& files_;
  const Messages& messages_;
  CurveDefinition curve_;
  CurveDefinition confirmed_;  // what the live curve was at first, or what Apply left
  CurveDefinition applied_;    // what the live curve is, for good or for now
  CurveDefinition grabbed_;    // the record when the drag began
  bool grabbed_changed_ = false;
  std::optional<int> selected_;
  bool dragging_ = false;  // the chosen point is grabbed
  bool changed_ = false;
  Clock clock_;
  CurveHistory history_;
};

}  // namespace warpline
