#include "bench/fit/measured_fit.h"

#include <cstdio>
#include <ctime>
#include <string>

namespace warpline {
namespace {

constexpr double kTarget = 0.4;          // percent after, with exact marks; or a fifth of before
constexpr double kNoiseAllowance = 0.2;  // more, with marks off by half a pixel
constexpr double kAgreement = 0.15;  // between what is told and what is seen, if no bound is told
constexpr double kWorse = 0.02;      // what does not show
constexpr double kMostOutside = 0.5;
constexpr double kMostSeconds = 1;

FitInput InputFor(const WallScene& scene, const Condition& condition) {
  FitInput input;
  input.Seen = MarksOn(scene, 9, 7, condition.NoisePixels);
  input.Panel = scene.Panel;
  input.Photo = PhotoSize{scene.Seen.Photo.Width, scene.Seen.Photo.Height};
  if (condition.Laid == Lines::kLaid) input.StraightLines = LinesThrough(scene.Seen);
  return input;
}

}  // namespace

double MeasuredFit::Allowed() const {
  return std::max(kTarget, Before / 5) + (Given.NoisePixels > 0 ? kNoiseAllowance : 0);
}

double MeasuredFit::AllowedDisagreement() const {
  return Given.Laid == Lines::kNone ? LensBound : std::max(kAgreement, MarksBound);
}

bool MeasuredFit::IsWorse() const {
  return After > Before + kWorse;
}

bool MeasuredFit::KeepsItsWord() const {
  return std::abs(After - Told) <= AllowedDisagreement();
}

bool MeasuredFit::Reaches() const {
  const bool straight = Given.Laid == Lines::kNone || After <= Allowed();
  return straight && !IsWorse() && KeepsItsWord() && Chosen.Area >= kKeptArea &&
         Outside <= kMostOutside && Seconds <= kMostSeconds;
}

bool IsLit(const WallScene& scene) {
  const auto view = CameraView::Of(scene.Wall, scene.Panel, scene.Seen);
  for (const double x : {0, scene.Panel.Width}) {
    for (const double y : {0, scene.Panel.Height}) {
      if (!view || !view->PhotoPosition(x, y)) return false;
    }
  }
  return true;
}

std::optional<MeasuredFit> MeasureFit(WallScene scene, const Condition& condition) {
  scene.Seen.K1 = condition.K1;
  MeasuredFit fit;
  fit.Given = condition;
  fit.Input = InputFor(scene, condition);
  NamedText reason;
  const std::clock_t begin = std::clock();
  const auto report = FitCorrection(fit.Input, reason);
  fit.Seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  if (!report) {
    std::printf("no fit: %s\n", std::string(reason.Name).c_str());
    return std::nullopt;
  }
  CorrectionData none;
  ResetToScreenType(none);
  fit.Chosen = report->Results[report->Chosen];
  const Homography upright = UprightOf(scene);
  fit.Before = PictureOn(scene, none, upright).OffStraight;
  const SeenPicture after = PictureOn(scene, fit.Chosen.Correction, upright);
  fit.After = after.OffStraight;
  fit.Told = fit.Chosen.After.Edges;
  fit.Outside = after.Outside;
  fit.LensBound = report->LensBound;
  fit.MarksBound = report->MarksBound;
  return fit;
}

}  // namespace warpline
