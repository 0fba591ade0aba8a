#pragma once

#include <span>
#include <string_view>

#include "picture/picture.h"

// The pictures that are put on a projector to adjust it by.

namespace warpline {

struct NamedPicture {
  std::string_view name;  // the command line's word for it
  RgbImage (*draw)(PanelSize panel);
  bool pixel_exact = false;  // of no use but pixel for pixel
};

// In the order of the keys that choose them: the first one by 1.
std::span<const NamedPicture> NamedPictures();

// The picture as large as it fits in the panel, in its middle; black around it. Picture and panel
// are at least 2 pixels each way.
RgbImage FittedPicture(const RgbImage& picture, PanelSize panel);

}  // namespace warpline
