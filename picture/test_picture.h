#pragma once

#include <array>
#include <string_view>

#include "picture/picture.h"

// Pictures that a projector is judged by.

namespace warpline {

enum class TestPattern {
  kCard,     // cross-hatch with its pixel numbers, circles, centre cross, corner marks, pixel ruler
  kGrid,     // a line at every 32nd pixel, numbered at every 64th, and a fainter one at every 8th
  kChecker,  // squares of 32 pixels, and within some of them of single pixels
  kWhite,
  kPixels,   // squares of single pixels
  kCircles,  // cross-hatch full of circles
};

// The pattern as it is sent to the projector. But for kChecker and kPixels no part is black, so
// that the picture's edge shows.
RgbImage TestPicture(PanelSize panel, TestPattern pattern = TestPattern::kCard);

// Writes a text of digits, capital letters that occur in the word SIMULATOR, and blanks; a glyph is
// 5 by 7 dots, a dot size by size pixels. What falls outside the image is left out.
void WriteDots(RgbImage& image, std::string_view text, int x, int y, int size,
               std::array<std::uint8_t, 3> colour);

// The word SIMULATOR in the lower left corner.
void StampWord(RgbImage& image);

}  // namespace warpline
