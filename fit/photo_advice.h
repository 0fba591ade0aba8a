#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/register_set.h"
#include "core/texts.h"
#include "fit/placed_marks.h"
#include "fit/saddle_points.h"

// What is to be said about a photograph of marks, each as a sentence that says what to do.

namespace warpline {

using MarkLooks = std::array<std::optional<ChequerLook>, kMarkCount>;  // of those that were found

struct PhotoFindings {
  PanelSize Photo;
  PanelSize Panel;
  MarkPlaces Places;  // all of them
  MarkLooks Looks;
  bool Mirrored = false;
};

std::vector<NamedText> WarningsAbout(const PhotoFindings& findings);
std::optional<NamedText> RefusalOf(const PhotoFindings& findings);

// Why no marks are known in an image; part_seen: it seems to show some, without the corners.
NamedText ReasonForNoMarks(const GreyImage& image, bool part_seen);

}  // namespace warpline
