#pragma once

#include <optional>
#include <string>

#include "core/texts.h"
#include "picture/camera.h"

namespace warpline::sim {

// The words that describe a camera; an empty one stands for the usual.
struct CameraWords {
  std::string Place;  // X,Y,Z
  std::string Photo;  // WIDTHxHEIGHT
  std::string K1;
  std::string Roll;
  std::string Room;
};

// Nothing, and the reason, when a word is no number within its range, or when the camera cannot see
// the middle of the picture from there.
std::optional<Camera> CameraOf(const CameraWords& words, const Wall& wall, PanelSize panel,
                               NamedText& reason);

}  // namespace warpline::sim
