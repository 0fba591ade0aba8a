#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/correction.h"
#include "core/register_set.h"
#include "fit/lens.h"
#include "fit/marks.h"
#include "fit/plane.h"

// What a fit begins with.

namespace warpline {

using PhotoCorners = std::array<PlanePoint, 4>;  // from the upper left one on, as the clock goes

struct FitInput {
  Marks Seen;       // thrown by the panel with no correction on
  PanelSize Panel;  // 16..2048 each way
  // Nothing: the picture is taken to lie in its middle and to be half as wide.
  std::optional<PhotoSize> Photo;
  // The frame that the picture is to fill. Nothing: wherever it is straight, at most as large as
  // fits into the panel's light and at least kLeastArea of that.
  std::optional<PhotoCorners> Corners;
  std::vector<PlaneLine> StraightLines;  // as LensTermOf takes them, over the photograph
  std::array<std::optional<std::int16_t>, kAxisCount> Projection{};  // flags that are to stay
  std::optional<std::int16_t> ScreenType;                            // one type, 0..5; nothing: all
};

}  // namespace warpline
