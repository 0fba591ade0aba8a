#pragma once

#include <Eigen/Core>
#include <optional>
#include <vector>

#include "fit/grey_image.h"

// Places of an image where four squares meet of which two are light and two are dark, as in the
// middle of a chequer.

namespace warpline {

// A place that looks like one.
struct SaddlePoint {
  Eigen::Vector2d Place;  // to a pixel
  Eigen::Vector2d Light;  // unit vector from it into a light square, either one
  double Strength = 0;
  double Bright = 0;  // light of the squares around it, 0..255
  double Dark = 0;
};

// The strongest ones, at most so many, the strongest first. The sides of their squares must be
// about 5 to 12 pixels long.
std::vector<SaddlePoint> FindSaddlePoints(const GreyImage& image, std::size_t most);

// The two directions of a chequer's edges, each as long as a square's side, and its middle.
struct Chequer {
  Eigen::Vector2d Place;
  Eigen::Vector2d Across;  // the light squares lie before and behind both
  Eigen::Vector2d Down;
};

// What is to be known of a chequer that was found.
struct ChequerLook {
  double Bright = 0;  // light of the squares, 0..255
  double Dark = 0;
  double EdgeWidth = 0;  // pixels, over which light turns to dark
};

// Moves the chequer's place to a fraction of a pixel: there all edges around it meet. Nothing when
// there is no chequer within half a square.
std::optional<ChequerLook> RefineChequer(const GreyImage& image, Chequer& chequer);

}  // namespace warpline
