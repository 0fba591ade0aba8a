#pragma once

#include <optional>

#include "fit/fit.h"
#include "tests/support/wall_photograph.h"

// A picture on a wall, fitted from an exact photograph of its marks and measured on the wall again.

namespace warpline {

inline constexpr double kKeptArea = 0.8;  // the least share of the largest rectangle

inline constexpr PanelSize kPanels[] = {{1024, 768}, {1280, 800}, {1920, 1200}};
inline constexpr const char* kShapes[] = {"flat",   "cylinder", "bow",
                                          "sphere", "corner",   "ceiling"};  // by WallShape

enum class Lines { kNone, kLaid };

// What is true of a photograph beside where the camera stands.
struct Condition {
  double NoisePixels = 0;  // standard deviation of the marks
  double K1 = 0;
  Lines Laid = Lines::kLaid;
};

struct MeasuredFit {
  Condition Given;
  FitInput Input;
  FitResult Chosen;
  double Before = 0;  // percent of the height by which the worst edge is off straight on the wall
  double After = 0;
  double Told = 0;        // what the fit says of After
  double Outside = 0;     // pixels of the panel by which the picture leaves it
  double LensBound = 0;   // percent of the height, as FitReport says
  double MarksBound = 0;  // likewise
  double Seconds = 0;     // of processor time

  double Allowed() const;  // the most that After is to be
  double AllowedDisagreement() const;
  bool IsWorse() const;  // than no correction, so that it shows
  bool KeepsItsWord() const;
  bool Reaches() const;  // all that a fit is to reach
};

// Whether the picture's corners are lit: some light of a lens far off the picture's middle passes
// a round wall by.
bool IsLit(const WallScene& scene);

// Nothing, and the reason is printed, when there is no fit.
std::optional<MeasuredFit> MeasureFit(WallScene scene, const Condition& condition);

}  // namespace warpline
