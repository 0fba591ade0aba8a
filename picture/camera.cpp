#include "picture/camera.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>
#include <vector>

#include "picture/rows.h"

namespace warpline {
namespace {

using Vector = std::array<double, 3>;

constexpr double kLeastDistance = 0.1;  // metres, from the camera to what it looks at
constexpr double kWhiteLight = 0.85;    // of the most that the photograph shows
constexpr double kCornerLoss = 0.35;    // of the light, in the photograph's corners
constexpr double kRoomSlope = 0.75;     // of the room's light, from its lighter side to the other
constexpr double kNoise = 2;            // standard deviation, of 255
constexpr int kBand = 16;               // rows

double Dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(const Vector& a, const Vector& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Minus(const Vector& a, const Vector& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Vector Mixed(const Vector& a, double of_a, const Vector& b, double of_b) {
  return {a[0] * of_a + b[0] * of_b, a[1] * of_a + b[1] * of_b, a[2] * of_a + b[2] * of_b};
}

Vector Scaled(const Vector& a, double factor) {
  return Mixed(a, factor, a, 0);
}

// By how much less than seen something is off the middle; seen in half diagonals.
double Straightened(double seen, double k1) {
  constexpr int kSteps = 5;
  if (seen <= 0 || k1 == 0) return 1;
  double r = seen;
  for (int i = 0; i < kSteps; ++i) r -= (r * (1 + k1 * r * r) - seen) / (1 + 3 * k1 * r * r);
  return r / seen;
}

// Noise of about a normal distribution for the three colours of a pixel.
std::array<double, 3> NoiseAt(std::uint64_t pixel) {
  static constexpr double kSpread = 104.5;  // of the sum of two bytes
  std::uint64_t bits = (pixel + 1) * 0x9E3779B97F4A7C15U;
  bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9U;
  bits = (bits ^ bits >> 27) * 0x94D049BB133111EBU;
  std::array<double, 3> noise{};
  for (double& part : noise) {
    part = (static_cast<double>((bits & 255) + (bits >> 8 & 255)) - 255) * (kNoise / kSpread);
    bits >>= 16;
  }
  return noise;
}

// What is seen at the corners of a row's pixels.
struct Seen {
  bool wall = false;
  std::array<double, 2> at{};  // panel position
};
using SeenRow = std::vector<Seen>;

SeenRow RowOf(const CameraView& view, const Camera& camera, double distance, int y) {
  SeenRow row(static_cast<std::size_t>(camera.Photo.Width) + 1);
  double depth = distance;
  for (std::size_t x = 0; x < row.size(); ++x) {
    if (x == 0 || !row[x - 1].wall) depth = distance;
    const auto at = view.PanelPosition(static_cast<double>(x), y, depth);
    if (at) row[x] = {true, *at};
  }
  return row;
}

// The panel's light within a pixel, 0..255 for each colour.
class PixelLight {
 public:
  PixelLight(const RgbImage& picture, const SeenRow& above, const SeenRow& below)
      : picture_(picture), above_(above), below_(below) {}

  bool HasWall(std::size_t x) const {
    return above_[x].wall && above_[x + 1].wall && below_[x].wall && below_[x + 1].wall;
  }

  void Add(std::size_t x, double weight, double (&sum)[3]) const {
    if (Misses(x)) return;
    const int samples = Samples(x);
    const double each = weight / (samples * samples);
    for (int j = 0; j < samples; ++j) {
      for (int i = 0; i < samples; ++i) {
        const double u = Between(x, 0, (i + 0.5) / samples, (j + 0.5) / samples);
        const double v = Between(x, 1, (i + 0.5) / samples, (j + 0.5) / samples);
        if (u < 0 || v < 0 || u > picture_.Width || v > picture_.Height) continue;
        AddSample(picture_, u, v, each, sum);
      }
    }
  }

 private:
  double Between(std::size_t x, std::size_t part, double across, double down) const {
    return (above_[x].at[part] * (1 - across) + above_[x + 1].at[part] * across) * (1 - down) +
           (below_[x].at[part] * (1 - across) + below_[x + 1].at[part] * across) * down;
  }

  bool Misses(std::size_t x) const {
    const auto outside = [&](std::size_t part, double end) {
      const auto [least, most] = std::minmax(
          {above_[x].at[part], above_[x + 1].at[part], below_[x].at[part], below_[x + 1].at[part]});
      return most < 0 || least > end;
    };
    return outside(0, picture_.Width) || outside(1, picture_.Height);
  }

  // Each way; so many that no pixel of the panel is left out, within reason.
  int Samples(std::size_t x) const {
    const double across =
        std::hypot(above_[x + 1].at[0] - above_[x].at[0], above_[x + 1].at[1] - above_[x].at[1]);
    const double down =
        std::hypot(below_[x].at[0] - above_[x].at[0], below_[x].at[1] - above_[x].at[1]);
    return static_cast<int>(std::clamp(std::ceil(std::max(across, down)), 2.0, 4.0));
  }

  const RgbImage& picture_;
  const SeenRow& above_;
  const SeenRow& below_;
};

void DrawRow(RgbImage& photo, int y, const PixelLight& light, const Camera& camera) {
  std::uint8_t* pixel = photo.Pixels.data() + (photo.At(0, y) - photo.Pixels.data());
  const double half = std::hypot(photo.Width, photo.Height) / 2;
  const double down = y + 0.5 - photo.Height / 2.0;
  for (int x = 0; x < photo.Width; ++x, pixel += 3) {
    const double across = x + 0.5 - photo.Width / 2.0;
    const double off = (across * across + down * down) / (half * half);
    double sum[3]{};
    if (light.HasWall(static_cast<std::size_t>(x))) {
      const double room = 255 * camera.Room * (1 - kRoomSlope * (x + 0.5) / photo.Width);
      std::ranges::fill(sum, room);
      light.Add(static_cast<std::size_t>(x), kWhiteLight, sum);
    }
    const auto index = static_cast<std::uint64_t>(y) * static_cast<std::uint64_t>(photo.Width) +
                       static_cast<std::uint64_t>(x);
    const std::array<double, 3> noise = NoiseAt(index);
    for (std::size_t i = 0; i < 3; ++i) {
      const double value = sum[i] * (1 - kCornerLoss * off) + noise[i] + 0.5;
      pixel[i] = static_cast<std::uint8_t>(std::clamp(value, 0.0, 255.0));
    }
  }
}

}  // namespace

Camera AudienceCamera(const Wall& wall, PanelSize panel) {
  Camera camera{.Z = -wall.Distance, .Photo = {2400, 1800}};
  if (const auto middle = WallPlaceOf(wall, panel, panel.Width / 2.0, panel.Height / 2.0)) {
    camera.Y = (*middle)[1];
  }
  return camera;
}

Camera FittedInto(Camera camera, PanelSize size) {
  const double width = camera.Photo.Width;
  const double height = camera.Photo.Height;
  const double scale = std::min(size.Width / width, size.Height / height);
  camera.Photo = {std::max(2, static_cast<int>(width * scale)),
                  std::max(2, static_cast<int>(height * scale))};
  return camera;
}

std::optional<CameraView> CameraView::Of(const Wall& wall, PanelSize panel, const Camera& camera) {
  CameraView view(wall, panel, camera);
  const auto target = WallPlaceOf(wall, panel, panel.Width / 2.0, panel.Height / 2.0);
  if (!target) return std::nullopt;
  const Vector ahead = Minus(*target, {camera.X, camera.Y, camera.Z});
  const double distance = std::sqrt(Dot(ahead, ahead));
  const Vector across = Cross({0, 1, 0}, ahead);
  const double level = std::sqrt(Dot(across, across));
  const double behind = WallDepth(wall, camera.X, camera.Y);
  if (distance < kLeastDistance || level < kLeastDistance || ahead[2] <= 0 ||
      (behind > 0 && camera.Z >= behind)) {
    return std::nullopt;
  }
  const Vector forward = Scaled(ahead, 1 / distance);
  const Vector right = Scaled(across, 1 / level);
  const Vector down = Cross(forward, right);
  const double roll = camera.Roll * std::numbers::pi / 180;
  view.axes_ = {Mixed(right, std::cos(roll), down, std::sin(roll)),
                Mixed(down, std::cos(roll), right, -std::sin(roll)), forward};
  const double pixels = std::min<double>(
      camera.Photo.Width, static_cast<double>(camera.Photo.Height) * panel.Width / panel.Height);
  view.focal_ = camera.Filled * pixels * distance * kThrowRatio / (*target)[2];
  view.half_diagonal_ = std::hypot(camera.Photo.Width, camera.Photo.Height) / 2;
  return view;
}

std::optional<std::array<double, 2>> CameraView::PhotoPosition(double column, double row) const {
  const auto place = WallPlaceOf(wall_, panel_, column, row);
  if (!place) return std::nullopt;
  const Vector from_here = Minus(*place, {camera_.X, camera_.Y, camera_.Z});
  const double ahead = Dot(from_here, axes_[2]);
  if (ahead <= 0) return std::nullopt;
  const double x = Dot(from_here, axes_[0]) / ahead * focal_;
  const double y = Dot(from_here, axes_[1]) / ahead * focal_;
  const double r = std::hypot(x, y) / half_diagonal_;
  const double bent = 1 + camera_.K1 * r * r;
  return std::array{camera_.Photo.Width / 2.0 + x * bent, camera_.Photo.Height / 2.0 + y * bent};
}

std::optional<std::array<double, 2>> CameraView::PanelPosition(double x, double y,
                                                               double& depth) const {
  constexpr int kSteps = 30;
  constexpr double kSettled = 1e-7;  // metres
  const double across = x - camera_.Photo.Width / 2.0;
  const double down = y - camera_.Photo.Height / 2.0;
  const double straight = Straightened(std::hypot(across, down) / half_diagonal_, camera_.K1);
  const Vector ray =
      Mixed(Mixed(axes_[0], across * straight, axes_[1], down * straight), 1, axes_[2], focal_);
  if (ray[2] <= 0) return std::nullopt;
  const double dx = ray[0] / ray[2];
  const double dy = ray[1] / ray[2];
  // How far the ray is still before the wall at some depth; the root is found by secants.
  const auto before = [&](double z) {
    const double found =
        WallDepth(wall_, camera_.X + dx * (z - camera_.Z), camera_.Y + dy * (z - camera_.Z));
    return found > 0 ? found - z : std::nan("");
  };
  double former = depth;
  double former_gap = before(former);
  double z = former + former_gap;
  for (int i = 0; i < kSteps; ++i) {
    const double gap = before(z);
    if (std::isnan(gap) || z <= camera_.Z) return std::nullopt;
    if (std::abs(gap) < kSettled) {
      depth = z;
      return PanelPositionThrough(wall_, panel_, camera_.X + dx * (z - camera_.Z),
                                  camera_.Y + dy * (z - camera_.Z), z);
    }
    const double slope = (gap - former_gap) / (z - former);
    former = std::exchange(z, z - (slope == 0 ? -gap : gap / slope));
    former_gap = gap;
  }
  return std::nullopt;
}

RgbImage PhotographOf(const RgbImage& panel_picture, const Wall& wall, const Camera& camera) {
  RgbImage photo = BlackImage(camera.Photo);
  const auto view = CameraView::Of(wall, {panel_picture.Width, panel_picture.Height}, camera);
  if (!view) return photo;
  const int bands = (photo.Height + kBand - 1) / kBand;
  ForEachRow(bands, [&](int band) {
    SeenRow below = RowOf(*view, camera, wall.Distance, band * kBand);
    for (int y = band * kBand; y < std::min((band + 1) * kBand, photo.Height); ++y) {
      const SeenRow above = std::exchange(below, RowOf(*view, camera, wall.Distance, y + 1));
      DrawRow(photo, y, PixelLight(panel_picture, above, below), camera);
    }
  });
  return photo;
}

}  // namespace warpline
