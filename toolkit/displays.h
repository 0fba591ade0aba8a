#pragma once

#include <wx/gdicmn.h>
#include <wx/string.h>

#include <vector>

namespace warpline {

struct DisplayPlace {
  unsigned Number = 0;  // as the system counts, from 0
  wxString Name;        // may be empty
  wxRect Area;          // in the toolkit's units
  wxSize Pixels;

  bool operator==(const DisplayPlace&) const = default;
};

// The displays that there are at the moment.
std::vector<DisplayPlace> Displays();

}  // namespace warpline
