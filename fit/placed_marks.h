#pragma once

#include <Eigen/Core>
#include <array>
#include <cstddef>
#include <optional>

#include "fit/grey_image.h"
#include "fit/saddle_grid.h"
#include "picture/marks_picture.h"

namespace warpline {

inline constexpr std::size_t kMarkCount = std::size_t{kMarkColumns} * kMarkRows;

constexpr std::size_t MarkIndex(int column, int row) {
  return static_cast<std::size_t>(row) * kMarkColumns + static_cast<std::size_t>(column);
}

// A place for each mark, row by row; none for those that are missing.
using MarkPlaces = std::array<std::optional<Eigen::Vector2d>, kMarkCount>;

struct PlacedMarks {
  MarkPlaces Places;
  int Count = 0;    // of places
  int Corners = 0;  // whose dots were read
  bool Mirrored = false;
};

// Which mark each point of a grid is, by the dots in the corners of the image that it was found in.
// Nothing when they do not tell it.
std::optional<PlacedMarks> PlaceMarks(const GreyImage& image, const SaddleGrid& grid);

// Whether a grid is no larger than that of the marks, and hardly a point is missing in it.
bool IsPartOfMarks(const SaddleGrid& grid);

// Where missing marks would be, by those around them; at least a few in each direction are there.
MarkPlaces Completed(MarkPlaces places);

// The steps at a mark to the next column and to the next row, of places that are all there.
std::array<Eigen::Vector2d, 2> StepsAt(const MarkPlaces& places, std::size_t mark);

}  // namespace warpline
