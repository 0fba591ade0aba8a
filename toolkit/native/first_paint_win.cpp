#include "toolkit/native/first_paint.h"

namespace warpline {

// It is so by itself.
void PaintOnce(wxTopLevelWindow& /*window*/) {}

}  // namespace warpline
