#include "fit/photo_advice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <numeric>
#include <string>

namespace warpline {
namespace {

using Eigen::Vector2d;

constexpr double kBurntOut = 252;  // light, 0..255
constexpr double kVeryDark = 60;
constexpr double kTooDark = 25;
constexpr double kWidePicture = 0.65;    // of the photograph's width
constexpr std::size_t kMostMissing = 6;  // a tenth of the marks
constexpr double kSoftEdge = 0.4;        // of a square's side, where marks are missing
constexpr double kBlurredEdge = 0.55;    // in any case
constexpr double kLeastPhotoPixels = 1;  // a panel pixel
constexpr double kShareToWarnOf = 0.25;  // of the marks

std::size_t FoundOf(const PhotoFindings& findings) {
  return static_cast<std::size_t>(
      std::ranges::count_if(findings.Looks, [](const auto& look) { return look.has_value(); }));
}

using Measure = std::function<double(std::size_t mark, const ChequerLook& look)>;

// Of the marks that were found; 0 without any.
double MedianOf(const PhotoFindings& findings, const Measure& measure) {
  std::vector<double> values;
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    if (findings.Looks[i]) values.push_back(measure(i, *findings.Looks[i]));
  }
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

std::size_t CountOf(const PhotoFindings& findings,
                    const std::function<bool(const ChequerLook&)>& test) {
  return static_cast<std::size_t>(
      std::ranges::count_if(findings.Looks, [&](const auto& look) { return look && test(*look); }));
}

// Photograph pixels a panel pixel around a mark, each way, on the average of both directions.
double ScaleAt(const PhotoFindings& findings, std::size_t mark) {
  const auto [across, down] = StepsAt(findings.Places, mark);
  const double pixels = std::abs(across.x() * down.y() - across.y() * down.x());
  return std::sqrt(pixels / ((MarkU(1) - MarkU(0)) * findings.Panel.Width) /
                   ((MarkV(1) - MarkV(0)) * findings.Panel.Height));
}

bool IsOutside(const PhotoFindings& findings, std::size_t mark) {
  const Vector2d& place = *findings.Places[mark];
  return place.x() < 0 || place.y() < 0 || place.x() > findings.Photo.Width ||
         place.y() > findings.Photo.Height;
}

// Of the whole picture, as a share of the photograph's width.
double WidthOf(const PhotoFindings& findings) {
  const auto [left, right] = std::ranges::minmax_element(
      findings.Places, {}, [](const auto& place) { return place->x(); });
  return ((*right)->x() - (*left)->x()) / (1 - 2 * kMarkInset) / findings.Photo.Width;
}

std::string Text(const char* format, double number) {
  char text[32];
  std::snprintf(text, sizeof text, format, number);
  return text;
}

// The light that a share of the pixels does not reach.
int Quantile(const std::array<std::size_t, 256>& histogram, double share) {
  double left = share * static_cast<double>(
                            std::accumulate(histogram.begin(), histogram.end(), std::size_t{0}));
  for (int light = 0; light < 255; ++light) {
    left -= static_cast<double>(histogram[static_cast<std::size_t>(light)]);
    if (left < 0) return light;
  }
  return 255;
}

struct Lights {
  int dark = 0;
  int bright = 0;
  double burnt_out = 0;  // share of the pixels
  int step = 0;          // that hardly any two neighbours exceed
};

Lights LightsOf(const GreyImage& image) {
  std::array<std::size_t, 256> light{};
  std::array<std::size_t, 256> step{};
  for (int y = 0; y < image.Height; ++y) {
    const std::uint8_t* const row = image.Row(y);
    for (int x = 0; x + 1 < image.Width; ++x) {
      ++light[row[x]];
      ++step[static_cast<std::size_t>(std::abs(row[x + 1] - row[x]))];
    }
  }
  double burnt_out = 0;
  double all = 0;
  for (std::size_t i = 0; i < light.size(); ++i) {
    all += static_cast<double>(light[i]);
    if (static_cast<double>(i) >= kBurntOut) burnt_out += static_cast<double>(light[i]);
  }
  return {Quantile(light, 0.01), Quantile(light, 0.998), burnt_out / std::max(all, 1.0),
          Quantile(step, 0.9995)};
}

}  // namespace

std::vector<NamedText> WarningsAbout(const PhotoFindings& findings) {
  std::vector<NamedText> warnings;
  const double most = kShareToWarnOf * static_cast<double>(FoundOf(findings));
  const auto burnt_out =
      CountOf(findings, [](const ChequerLook& look) { return look.Bright >= kBurntOut; });
  const auto dark =
      CountOf(findings, [](const ChequerLook& look) { return look.Bright < kVeryDark; });
  const std::size_t missing = kMarkCount - FoundOf(findings);
  const double width = WidthOf(findings);
  if (missing > 0) warnings.push_back({"PhotoMarksMissing", {std::to_string(missing)}});
  if (width > kWidePicture) warnings.push_back({"PhotoFilled", {Text("%.0f", 100 * width)}});
  if (static_cast<double>(burnt_out) > most) {
    warnings.push_back({"PhotoMarksBurnt", {std::to_string(burnt_out)}});
  }
  if (static_cast<double>(dark) > most) {
    warnings.push_back({"PhotoMarksDark", {std::to_string(dark)}});
  }
  return warnings;
}

std::optional<NamedText> RefusalOf(const PhotoFindings& findings) {
  std::size_t outside = 0;
  for (std::size_t i = 0; i < kMarkCount; ++i) {
    if (!findings.Looks[i] && IsOutside(findings, i)) ++outside;
  }
  const auto side = [&](std::size_t mark) {
    return ScaleAt(findings, mark) * kMarkSquare * findings.Panel.Height;
  };
  const double blur = MedianOf(
      findings, [&](std::size_t mark, const auto& look) { return look.EdgeWidth / side(mark); });
  const double scale =
      MedianOf(findings, [&](std::size_t mark, const auto&) { return ScaleAt(findings, mark); });
  if (findings.Mirrored) return NamedText{"PhotoMirrored"};
  if (outside > kMostMissing) return NamedText{"PhotoPartly"};
  const bool many_missing = kMarkCount - FoundOf(findings) > kMostMissing;
  if (blur > (many_missing ? kSoftEdge : kBlurredEdge)) return NamedText{"PhotoBlurred"};
  if (MedianOf(findings, [](std::size_t, const auto& look) { return look.Bright; }) < kTooDark) {
    return NamedText{"PhotoDark"};
  }
  if (scale < kLeastPhotoPixels) return NamedText{"PhotoCoarse", {Text("%.2f", scale)}};
  if (FoundOf(findings) < kMarkCount / 2) {
    return NamedText{"PhotoFewMarks", {std::to_string(FoundOf(findings))}};
  }
  return std::nullopt;
}

NamedText ReasonForNoMarks(const GreyImage& image, bool part_seen) {
  constexpr double kMuchBurntOut = 0.1;  // of the photograph
  constexpr double kSharpStep = 0.15;    // of the range of light
  const Lights lights = LightsOf(image);
  if (lights.bright < kVeryDark) return {"PhotoDark"};
  if (lights.burnt_out > kMuchBurntOut) return {"PhotoBurnt"};
  if (part_seen) return {"PhotoPartly"};
  if (lights.step < kSharpStep * (lights.bright - lights.dark)) return {"PhotoBlurred"};
  return {"PhotoNoMarks"};
}

}  // namespace warpline
