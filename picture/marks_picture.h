#pragma once

#include <array>

#include "picture/picture.h"

// The picture that is photographed to find out where the screen puts what the panel shows: marks on
// dark grey, and a line along the panel's edge that tells whether all of the panel is seen.
//
// A mark is a chequer of two white and two black squares; its place is where the four meet, the
// white ones above to the left and below to the right. The cells in the corners, each between four
// marks, hold dots: one at the upper left, then clockwise two, three and four.

namespace warpline {

inline constexpr int kMarkColumns = 9;
inline constexpr int kMarkRows = 7;
inline constexpr double kMarkInset = 0.02;  // of the panel's size, from its edge to the first mark
inline constexpr double kMarkSquare = 0.014;  // of the panel's height, a square's side

// Where the marks of a column or row lie, as a share of the panel's width or height from its left
// or top edge; columns 0..kMarkColumns - 1, rows 0..kMarkRows - 1.
constexpr double MarkU(int column) {
  return kMarkInset + (1 - 2 * kMarkInset) * column / (kMarkColumns - 1);
}
constexpr double MarkV(int row) {
  return kMarkInset + (1 - 2 * kMarkInset) * row / (kMarkRows - 1);
}

// The places of dots in a cell, as shares of its width and height from its left and top. A corner
// with n dots has them at the first n places.
inline constexpr std::array<std::array<double, 2>, 4> kDotPlaces{
    {{0.35, 0.35}, {0.65, 0.35}, {0.65, 0.65}, {0.35, 0.65}}};
inline constexpr double kDotSize = 0.12;  // of the cell's width and height

RgbImage MarksPicture(PanelSize panel);

}  // namespace warpline
