#pragma once

#include <wx/bitmap.h>
#include <wx/gdicmn.h>
#include <wx/geometry.h>
#include <wx/string.h>

#include "app/photo_session.h"

class wxGraphicsContext;

// The photograph with all that lies over it.

namespace warpline {

// Where the photograph lies in an area, as large as it fits, in the area's middle.
struct PhotoPlacement {
  double scale = 1;  // of the area's units a pixel of the photograph
  double left = 0;
  double top = 0;

  wxPoint2DDouble ToArea(PlanePoint at) const { return {left + at.X * scale, top + at.Y * scale}; }
  PlanePoint ToPhoto(wxPoint at) const { return {(at.x - left) / scale, (at.y - top) / scale}; }
};

PhotoPlacement PlacePhoto(PhotoSize photo, const wxSize& area);

struct PhotoLook {
  wxSize size;     // of the client area
  double dip = 1;  // units in a device-independent pixel
  wxBitmap photo;  // in the size in which it is shown; none without a photograph
  wxString hint;   // what is said where there is none
  bool focused = false;
  bool loupe = false;  // at the selected handle
};

// Paints everything, the ground included.
void PaintPhoto(wxGraphicsContext& context, const PhotoSession& session, const PhotoLook& look);

}  // namespace warpline
