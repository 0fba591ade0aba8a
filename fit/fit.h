#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/correction.h"
#include "core/texts.h"
#include "fit/fit_input.h"
#include "fit/plane.h"
#include "fit/view.h"

// From a photograph of marks to the correction that makes the picture straight, seen from where the
// photograph was taken. Nothing here is random: the same input gives the same fit.

namespace warpline {

struct FitResult {
  std::int16_t ScreenType = 0;
  CorrectionData Correction;  // a reset one of that type where nothing is gained for sure
  Straightness Before;        // without a correction
  Straightness After;         // with it, by its registers
  double PixelsBefore = 0;    // Before.Edges in pixels of the panel
  double PixelsAfter = 0;
  double Area = 1;  // share of the largest rectangle that fits into the panel's light
  std::array<PlaneLine, kPictureEdges> Edges;  // foretold in the photograph, as kPictureLines are
  NamedText Note;                              // why it is no better, no name when it is good
};

// A mark and how far it lies from where the others put it.
struct MarkMisfit {
  std::size_t Index = 0;  // in FitInput::Seen
  int Column = 0;         // from 1, of the grid
  int Row = 0;
  double Pixels = 0;     // of the photograph
  bool Dropped = false;  // it lies so far away that it did not count
};

struct FitReport {
  std::vector<FitResult> Results;  // by screen type
  std::size_t Chosen = 0;          // index of the best
  PhotoCorners Corners{};          // the wanted rectangle, in the photograph
  std::array<PlaneLine, kPictureEdges> EdgesBefore;
  std::optional<double> LensTerm;  // K1; nothing: unknown
  double LensBound = 0;   // percent of the height: what a lens within kUsualLensTerm may hide when
                          // it is unknown
  double MarksBound = 0;  // percent of the height: what the figures may be off by the marks alone
  std::vector<MarkMisfit> Worst;  // the three worst ones, those dropped first
  std::vector<NamedText> Warnings;
};

// Nothing, and the reason, when the marks cannot be right: no grid, too few, crossed, mirrored,
// outside the photograph, or corners that are no rectangle.
std::optional<FitReport> FitCorrection(const FitInput& input, NamedText& reason);

// The rectangle to begin with when corners are to be set by hand: the largest upright one that lies
// inside the panel's light. Nothing, and the reason, as above.
std::optional<PhotoCorners> LargestRectangle(const FitInput& input, NamedText& reason);

}  // namespace warpline
