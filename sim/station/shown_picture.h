#pragma once

#include "picture/picture.h"
#include "sim/device/projector.h"

// What the projector's window shows of its panel.

namespace warpline::sim {

struct ShownPicture {
  RgbImage Image;
  int RowsAtLimit = 0;  // lines whose second difference is at its limit
  int ColumnsAtLimit = 0;
};

// The source (of the panel's size) through the working set; black unless the projector is on. With
// marks, lines at the limit of their differences carry a bright tick at both ends, those behind one
// a dim tick.
ShownPicture PanelAsShown(const RgbImage& source, const RegisterSet& working, Power power,
                          bool marks);

}  // namespace warpline::sim
