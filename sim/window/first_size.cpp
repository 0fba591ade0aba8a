#include "sim/window/first_size.h"

#include <algorithm>

namespace warpline::sim {
namespace {

constexpr int kMostWidth = 1180;
constexpr int kMostHeight = 700;
constexpr int kLeastWidth = 420;
constexpr int kLeastHeight = 330;
constexpr int kPreviewHeight = 525;  // the tool's windows, frames included
constexpr int kMainHeight = 420;
constexpr int kMainWidth = 560;
constexpr int kEnough = 440;  // to show everything

}  // namespace

// Below both of the tool's windows, or else below the main window alone.
wxSize FirstSize(const wxSize& screen) {
  const bool below_both = screen.y - kPreviewHeight >= kEnough;
  wxSize size = below_both ? wxSize(kMostWidth, screen.y - kPreviewHeight)
                           : wxSize(kMainWidth, screen.y - kMainHeight);
  size.DecTo(wxSize(kMostWidth, kMostHeight));
  size.IncTo(wxSize(kLeastWidth, kLeastHeight));
  size.DecTo(screen);
  return size;
}

}  // namespace warpline::sim
