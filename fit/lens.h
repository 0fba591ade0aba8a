#pragma once

#include <optional>
#include <span>

#include "fit/plane.h"

// The camera's lens: one radial term about the middle of the photograph. What a lens without fault
// would show at a distance r from the middle, it shows at r * (1 + K1 * (r / Radius)^2).

namespace warpline {

struct PhotoSize {
  int Width = 4000;  // pixels
  int Height = 3000;

  bool operator==(const PhotoSize&) const = default;
};

inline constexpr double kMostLensTerm = 0.3;  // K1, either way

// What a main camera without wide angle stays within, when nothing is known of it.
inline constexpr double kUsualLensTerm = 0.02;

struct Lens {
  PlanePoint Middle;  // pixels
  double Radius = 1;  // half the photograph's diagonal, pixels
  double K1 = 0;      // -kMostLensTerm..kMostLensTerm

  // Where the lens shows what belongs to a place, and back.
  PlanePoint Shown(PlanePoint place) const;
  PlanePoint PlaceOf(PlanePoint shown) const;
};

Lens LensWithoutFault(PhotoSize photo);

// K1 from lines that are straight in reality, laid over the photograph: three points or more each,
// from one end to the other. Nothing when they do not tell it to 0.01 with points off by half a
// pixel, as do lines through the middle of the photograph.
std::optional<double> LensTermOf(std::span<const PlaneLine> lines, const Lens& lens);

}  // namespace warpline
