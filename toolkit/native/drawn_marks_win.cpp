#include "toolkit/native/drawn_marks.h"

namespace warpline {

// They are drawn by themselves.
void DrawMarks() {}

}  // namespace warpline
