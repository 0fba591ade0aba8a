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

namespace {

bool IsWide(wxUniChar c) {
  return c >= 0x3000;
}

bool IsClosingMark(wxUniChar c) {
  return wxString::FromUTF8("、。，．・：；？！）」』】〉》ー").Contains(c);
}

// Where a line that has become too long with its last character ends: behind a blank, or beside a
// Japanese character; at its end when there is no such place.
std::size_t BreakBefore(const wxString& line) {
  for (std::size_t at = line.length() - 1; at > 0; --at) {
    const wxUniChar next = line[at];
    if (line[at - 1] == ' ') return at;
    if ((IsWide(next) || IsWide(line[at - 1])) && !IsClosingMark(next)) return at;
  }
  return line.length();
}

}  // namespace

wxString WrappedText(const wxWindow& window, const wxString& text, int width) {
  wxString wrapped;
  wxString line;
  for (const wxUniChar c : text) {
    line += c;
    if (c == ' ' || window.GetTextExtent(line).x <= width) continue;
    const std::size_t end = BreakBefore(line);
    wrapped += line.Left(end).Trim() + "\n";
    line = line.Mid(end);
  }
  return wrapped + line;
}

}  // namespace warpline
