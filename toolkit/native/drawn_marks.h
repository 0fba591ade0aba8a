#pragma once

// A theme's arrow of a list and its marks of option buttons are pictures, and the first of them
// costs a program a fifth of its start: every folder of icons is gone through, and a library for
// pictures is loaded.

namespace warpline {

// From now on these marks are drawn, in the theme's colours. Needs a display; to be called before
// the first control is made.
void DrawMarks();

}  // namespace warpline
