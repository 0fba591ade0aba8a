#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

#include "core/correction.h"
#include "model/parameter_groups.h"

// The program's pictures, drawn from embedded SVG texts at whatever size the screen asks for.

namespace warpline {

// The picture of what a parameter does to the projected picture. symmetric chooses between the two
// pictures of the linearity correction and means nothing for the other fields.
wxBitmapBundle IconOf(SliderTarget target, bool symmetric);

// Takes the room of such a picture, on displays of other scales too.
wxBitmapBundle EmptyIcon();

// The program's own picture; size is the edge length in DIP.
wxBitmapBundle ProgramPicture(int size);
wxIconBundle ProgramIcons();

}  // namespace warpline
