#include "sim/camera_options.h"

#include <string_view>

#include "core/conversions.h"

namespace warpline::sim {
namespace {

constexpr double kFarthest = 100;  // metres
constexpr int kLeastPhotoSide = 320;
constexpr int kMostPhotoSide = 10'000;

bool ReadPlace(std::string_view text, Camera& camera) {
  const std::size_t first = text.find(',');
  const std::size_t last = text.rfind(',');
  return first != last && ReadReal(text.substr(0, first), -kFarthest, kFarthest, camera.X) &&
         ReadReal(text.substr(first + 1, last - first - 1), -kFarthest, kFarthest, camera.Y) &&
         ReadReal(text.substr(last + 1), -kFarthest, kFarthest, camera.Z);
}

bool ReadSize(std::string_view text, PanelSize& size) {
  const std::size_t cross = text.find_first_of("xX");
  if (cross == std::string_view::npos) return false;
  const auto width = WholeNumber(text.substr(0, cross), kLeastPhotoSide, kMostPhotoSide);
  const auto height = WholeNumber(text.substr(cross + 1), kLeastPhotoSide, kMostPhotoSide);
  if (width && height) size = {*width, *height};
  return width && height;
}

struct RealRow {
  const char* option;
  std::string CameraWords::*word;
  double Camera::*number;
  double least;
  double most;
};

constexpr RealRow kReals[] = {
    {"--camera-k1", &CameraWords::K1, &Camera::K1, kLeastRadialTerm, kMostRadialTerm},
    {"--camera-roll", &CameraWords::Roll, &Camera::Roll, -180, 180},
    {"--room", &CameraWords::Room, &Camera::Room, 0, 10},
};

// A panel 1024 pixels wide has more than one pixel of it for each of its own on the usual walls.
constexpr PanelSize kUsualPhoto{2400, 1800};

}  // namespace

std::optional<Camera> CameraOf(const CameraWords& words, const Wall& wall, PanelSize panel,
                               NamedText& reason) {
  Camera camera{.Photo = kUsualPhoto};
  for (const RealRow& row : kReals) {
    const std::string& word = words.*row.word;
    if (word.empty() || ReadReal(word, row.least, row.most, camera.*row.number)) continue;
    reason = {"BadReal", {row.option, ShortestText(row.least), ShortestText(row.most)}};
    return std::nullopt;
  }
  if (!words.Photo.empty() && !ReadSize(words.Photo, camera.Photo)) {
    reason = {"BadPhotoSize", {std::to_string(kLeastPhotoSide), std::to_string(kMostPhotoSide)}};
    return std::nullopt;
  }
  if (!ReadPlace(words.Place, camera) || !CameraView::Of(wall, panel, camera)) {
    reason = {"BadCamera"};
    return std::nullopt;
  }
  return camera;
}

}  // namespace warpline::sim
