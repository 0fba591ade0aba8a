#pragma once

#include <wx/math.h>
#include <wx/slider.h>

#include <algorithm>

namespace warpline {

// Where the middle of a horizontal slider's thumb is when the slider stands at the value, from the
// slider's left edge in its client units.
int ThumbCentre(const wxSlider& slider, int value);

// What both systems' twins share: a thumb of that width in a track from left to right.
inline int ThumbCentre(const wxSlider& slider, int value, int left, int right, int thumb) {
  const double share =
      static_cast<double>(value - slider.GetMin()) / std::max(1, slider.GetMax() - slider.GetMin());
  return left + thumb / 2 + wxRound((right - left - thumb) * share);
}

}  // namespace warpline
