#include "toolkit/displays.h"

#include <wx/display.h>

#include "toolkit/native/full_screen.h"

namespace warpline {

std::vector<DisplayPlace> Displays() {
  std::vector<DisplayPlace> displays;
  for (unsigned number = 0; number < wxDisplay::GetCount(); ++number) {
    const wxDisplay display(number);
    const wxRect area = display.GetGeometry();
    const wxString name = display.GetName();
    displays.push_back(
        {number, name.empty() ? ConnectorName(number) : name, area, PixelsOf(number, display)});
  }
  return displays;
}

}  // namespace warpline
