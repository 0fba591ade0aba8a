#pragma once

#include <optional>
#include <vector>

#include "core/register_set.h"
#include "core/texts.h"
#include "fit/marks.h"
#include "picture/picture.h"

// Finds the marks of picture/marks_picture.h in a photograph.

namespace warpline {

struct FoundMarks {
  Marks Found;    // row by row, each to a fraction of a pixel
  Marks Missing;  // the others, where they are expected; also outside the photograph
  std::vector<NamedText> Warnings;
  std::optional<NamedText> Refusal;  // why the photograph will not do, whatever was found
};

// The photograph shows the marks of a panel of that size, upright or by half or quarter turns or
// anything between. Each mark is either found or missing; none is either where nothing is known of
// them.
FoundMarks FindMarks(const RgbImage& photo, PanelSize panel);

// The same by somebody who says where each of the marks is about, row by row: to half a square, or
// beside others that are. Looks at nothing else, so the photograph may show other things.
FoundMarks FindMarksNear(const RgbImage& photo, PanelSize panel, const Marks& around);

}  // namespace warpline
