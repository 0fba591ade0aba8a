#pragma once

#include <wx/gdicmn.h>
#include <wx/sizer.h>
#include <wx/string.h>
#include <wx/toplevel.h>
#include <wx/window.h>

#include <optional>
#include <span>

// Distances and flags that all windows share.

namespace warpline {

// The distance between neighbours, and between groups and to the window's edge.
inline int Gap(const wxWindow* window) {
  return window->FromDIP(6);
}
inline int WideGap(const wxWindow* window) {
  return window->FromDIP(12);
}

inline wxSizerFlags AtCentre() {
  return wxSizerFlags().CentreVertical();
}
inline wxSizerFlags Growing() {
  return wxSizerFlags(1).CentreVertical();
}

// The position nearest to the wanted one at which a window of that size lies inside the area; a
// window larger than the area starts at the area's corner.
wxPoint HeldInside(const wxRect& area, wxPoint wanted, const wxSize& size);

// The part of the screen that windows may use: that of the screen that holds the point, or of the
// first one.
wxRect UsableScreen(const wxPoint& point);

// Puts the window into the middle of its parent, inside the parent's screen. On a screen of another
// scale than that of the one where it was, it keeps its size in DIP.
void CentreOverParent(wxTopLevelWindow& window);

// The same for a place and a size in the pixels of that place.
void PutAt(wxTopLevelWindow& window, const wxRect& place);

// A position inside the screen at which a window of that size covers none of the others: beside the
// first of them, below it, before it, above it, with that gap, or anywhere else. Nothing when there
// is none.
std::optional<wxPoint> FreePlace(const wxRect& screen, std::span<const wxRect> others,
                                 const wxSize& size, int gap);

// The corner of the screen in which a window of that size covers least of the other one.
wxPoint LeastCoveringCorner(const wxRect& screen, const wxRect& other, const wxSize& size);

// The text with more line breaks, so that no line is wider than width in the window's font. Lines
// end at blanks, and between any two Japanese characters except before a closing mark.
wxString WrappedText(const wxWindow& window, const wxString& text, int width);

}  // namespace warpline
