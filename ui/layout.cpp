#include "ui/layout.h"

#include <wx/display.h>

#include <algorithm>

namespace warpline {

wxPoint HeldInside(const wxRect& area, wxPoint wanted, const wxSize& size) {
  const auto held = [](int low, int high, int value) {
    return std::max(low, std::min(value, high));
  };
  wanted.x = held(area.x, area.x + area.width - size.x, wanted.x);
  wanted.y = held(area.y, area.y + area.height - size.y, wanted.y);
  return wanted;
}

wxRect UsableScreen(const wxPoint& point) {
  const int found = wxDisplay::GetFromPoint(point);
  return wxDisplay(static_cast<unsigned>(std::max(found, 0))).GetClientArea();
}

}  // namespace warpline
