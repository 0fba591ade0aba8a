#pragma once

#include <optional>
#include <vector>

#include "fit/fit_input.h"
#include "fit/mark_grid.h"
#include "fit/residuals.h"

namespace warpline {

// What the marks tell, before anything is fitted to it.
struct Preparation {
  FitTask Task;
  MarkGrid Grid;
  std::vector<bool> Kept;      // of each mark: it does not lie quite elsewhere than the others say
  std::vector<double> Misfit;  // pixels of the photograph
  double EdgeError = 0;        // standard error of the panel's edges, percent of the height
  std::optional<double> LensTerm;
  double LensBound = 0;   // percent of the height
  double MarksBound = 0;  // percent of the height
  std::vector<NamedText> Warnings;
};

// Nothing, and the reason, as FitCorrection.
std::optional<Preparation> PrepareFit(const FitInput& input, NamedText& reason);

// Percent of the height by which edges are more or less straight than they seem, if the lens that
// is taken for faultless is the worst of the usual ones: what is straight in the photograph may be
// bent in reality, and the other way round.
double LensErrorOf(const FitTask& task, const SeenAt& seen);

// The rectangle's corners in the photograph.
PhotoCorners CornersOf(const View& view, const Sides& sides);

}  // namespace warpline
