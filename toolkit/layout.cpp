#include "toolkit/layout.h"

#include <wx/display.h>

#include <algorithm>
#include <array>
#include <vector>

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

// A window that comes to a screen of another scale changes its size with the move. Only the second
// one knows it.
void CentreOverParent(wxTopLevelWindow& window) {
  const wxWindow* parent = window.GetParent();
  const wxRect screen = UsableScreen((parent == nullptr ? &window : parent)->GetPosition());
  for (int move = 0; move < 2; ++move) {
    window.CentreOnParent();
    window.SetPosition(HeldInside(screen, window.GetPosition(), window.GetSize()));
  }
}

void PutAt(wxTopLevelWindow& window, const wxRect& place) {
  window.SetPosition(place.GetPosition());
  window.SetSize(place);
}

namespace {

// A place where there is one at all is also at an edge of the screen or of one of the others, both
// across and down; the favoured ones come first.
std::vector<wxPoint> PlacesToTry(const wxRect& screen, std::span<const wxRect> others,
                                 const wxSize& size, int gap) {
  std::vector<int> across{screen.x, screen.x + screen.width - size.x};
  std::vector<int> down{screen.y, screen.y + screen.height - size.y};
  for (const wxRect& other : others) {
    across.insert(across.end(), {other.x + other.width + gap, other.x - gap - size.x});
    down.insert(down.end(), {other.y + other.height + gap, other.y - gap - size.y});
  }
  std::vector<wxPoint> places;
  if (!others.empty()) {
    const wxRect& first = others.front();
    const wxPoint at = HeldInside(screen, first.GetPosition(), size);
    places = {{first.x + first.width + gap, at.y},
              {at.x, first.y + first.height + gap},
              {first.x - gap - size.x, at.y},
              {at.x, first.y - gap - size.y}};
  }
  for (const int y : down) {
    for (const int x : across) places.emplace_back(x, y);
  }
  return places;
}

}  // namespace

std::optional<wxPoint> FreePlace(const wxRect& screen, std::span<const wxRect> others,
                                 const wxSize& size, int gap) {
  for (const wxPoint& place : PlacesToTry(screen, others, size, gap)) {
    const wxRect taken(place, size);
    const bool covers = std::any_of(others.begin(), others.end(), [&taken](const wxRect& other) {
      return taken.Intersects(other);
    });
    if (screen.Contains(taken) && !covers) return place;
  }
  return std::nullopt;
}

wxPoint LeastCoveringCorner(const wxRect& screen, const wxRect& other, const wxSize& size) {
  const auto covered = [&](const wxPoint& place) {
    const wxRect both = wxRect(place, size).Intersect(other);
    return static_cast<double>(both.width) * both.height;
  };
  const wxPoint low = screen.GetPosition();
  const wxPoint high = HeldInside(screen, screen.GetBottomRight(), size);
  const std::array<wxPoint, 4> corners{high, {low.x, high.y}, {high.x, low.y}, low};
  return *std::min_element(corners.begin(), corners.end(), [&](const wxPoint& a, const wxPoint& b) {
    return covered(a) < covered(b);
  });
}

namespace {

bool IsWide(wxUniChar c) {
  return c >= 0x3000;
}

bool IsClosingMark(wxUniChar c) {
  return wxString::FromUTF8("、。，．・：；？！）」』】〉》ー)").Contains(c);
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
    if (c == '\n') {
      wrapped += line;
      line.clear();
      continue;
    }
    if (c == ' ' || window.GetTextExtent(line).x <= width) continue;
    const std::size_t end = BreakBefore(line);
    wrapped += line.Left(end).Trim() + "\n";
    line = line.Mid(end);
  }
  return wrapped + line;
}

}  // namespace warpline
