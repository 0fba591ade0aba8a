#include "bench/fit/random_cameras.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

#include "bench/fit/dice.h"
#include "bench/fit/measured_fit.h"
#include "bench/fit/slow_search.h"

namespace warpline {
namespace {

constexpr const char* kAnyAxis[] = {"top", "middle", "bottom"};  // by LensAxis

WallScene AnyScene(Dice& dice) {
  WallScene scene{};
  scene.Wall.Shape = static_cast<WallShape>(dice.Below(kWallShapeCount));
  scene.Wall.Distance = dice.Between(3, 6);
  scene.Wall.Curvature = dice.Between(-0.25, 0.25);
  scene.Wall.Axis = static_cast<LensAxis>(dice.Below(3));
  scene.Panel = kPanels[dice.Below(3)];
  scene.Seen.X = dice.Between(-4, 4);
  scene.Seen.Y = scene.Middle() + dice.Between(-2, 2);
  scene.Seen.Z = scene.Wall.Distance - dice.Between(3, 9);
  scene.Seen.Filled = dice.Between(0.35, 0.6);
  scene.Seen.Roll = dice.Between(-5, 5);
  scene.Seen.Photo = {4000, 3000};
  return scene;
}

// Whether the photograph shows all of the picture, and no part of it so flatly that the wall may
// hide it.
bool ShowsAll(const WallScene& scene) {
  constexpr int kColumns = 9;
  constexpr int kRows = 7;
  constexpr double kFlattest = 0.1;  // area of a part, by the largest one's
  const auto view = CameraView::Of(scene.Wall, scene.Panel, scene.Seen);
  std::vector<std::array<double, 2>> at;
  for (int i = 0; view && i < kColumns * kRows; ++i) {
    const auto place = view->PhotoPosition(scene.Panel.Width * (i % kColumns) / (kColumns - 1.0),
                                           scene.Panel.Height * (i / kColumns) / (kRows - 1.0));
    if (!place || (*place)[0] < 0 || (*place)[0] > scene.Seen.Photo.Width || (*place)[1] < 0 ||
        (*place)[1] > scene.Seen.Photo.Height) {
      return false;
    }
    at.push_back(*place);
  }
  double least = 1e9;
  double most = 0;
  for (std::size_t i = 0; i + kColumns < at.size(); ++i) {
    if (i % kColumns == kColumns - 1) continue;
    const auto& [x, y] = at[i];
    const double area = (at[i + 1][0] - x) * (at[i + kColumns][1] - y) -
                        (at[i + 1][1] - y) * (at[i + kColumns][0] - x);
    least = std::min(least, area);
    most = std::max(most, area);
  }
  return view && least > kFlattest * most;
}

WallScene NextScene(Dice& dice) {
  WallScene scene;
  do {
    scene = AnyScene(dice);
  } while (!ShowsAll(scene));
  return scene;
}

struct Sums {
  int Worse = 0;  // than no correction
  int NotAsTold = 0;
  int Above = 0;   // the target
  int Beaten = 0;  // above it, but not with what the slower search finds
  int Refused = 0;
  double Seconds = 0;  // the most
};

void Print(int number, const WallScene& scene, const MeasuredFit& fit) {
  std::printf("%6d %-8s %5.2f %9.3f %-6s %5d %6.2f %6.2f %6.2f %7.3f %7.3f %7.3f %7.3f %5.2f",
              number, kShapes[static_cast<int>(scene.Wall.Shape)], scene.Wall.Distance,
              scene.Wall.Curvature, kAnyAxis[static_cast<int>(scene.Wall.Axis)], scene.Panel.Width,
              scene.Seen.X, scene.Seen.Y, scene.Seen.Z, fit.Before, fit.Allowed(), fit.After,
              fit.Told, fit.Chosen.Area);
}

// Prints the camera when something is to be said about it.
void Add(int number, const WallScene& scene, const MeasuredFit& fit, Sums& sums) {
  const bool above = fit.After > fit.Allowed();
  sums.Seconds = std::max(sums.Seconds, fit.Seconds);
  sums.Worse += fit.IsWorse() ? 1 : 0;
  sums.NotAsTold += fit.KeepsItsWord() ? 0 : 1;
  sums.Above += above ? 1 : 0;
  if (!above && !fit.IsWorse() && fit.KeepsItsWord()) return;
  Print(number, scene, fit);
  if (above) {
    const Candidate slow = SlowBest(fit.Input, fit.Chosen.Correction);
    const bool beaten = slow.Off.Edges <= fit.Allowed() && slow.Area >= kKeptArea;
    sums.Beaten += beaten ? 1 : 0;
    std::printf(" %7.3f %5.2f%s", slow.Off.Edges, slow.Area, beaten ? " BEATEN" : "");
  }
  if (fit.IsWorse()) std::printf(" WORSE");
  if (!fit.KeepsItsWord()) std::printf(" NOT AS TOLD");
  std::printf("\n");
  std::fflush(stdout);
}

}  // namespace

int RunRandomCameras(int count, unsigned seed) {
  std::printf(
      "Cameras that stay above the target, beside what a slower search reaches by the same "
      "registers.\n"
      "%6s %-8s %5s %9s %-6s %5s %6s %6s %6s %7s %7s %7s %7s %5s %7s %5s\n",
      "camera", "wall", "at", "curvature", "axis", "panel", "x", "y", "z", "before", "target",
      "after", "told", "area", "slower", "area");
  Dice dice(seed);
  Sums sums;
  for (int i = 1; i <= count; ++i) {
    const WallScene scene = NextScene(dice);
    const auto fit = MeasureFit(scene, {});
    if (fit) Add(i, scene, *fit, sums);
    sums.Refused += fit ? 0 : 1;
  }
  std::printf(
      "%d cameras: %d above the target, %d of them below it by the slower search; %d worse than no "
      "correction,\n%d not as told, %d without a fit; %.2f s of processor time at most\n",
      count, sums.Above, sums.Beaten, sums.Worse, sums.NotAsTold, sums.Refused, sums.Seconds);
  return sums.Beaten + sums.Worse + sums.NotAsTold + sums.Refused;
}

}  // namespace warpline
