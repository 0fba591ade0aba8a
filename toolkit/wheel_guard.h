#pragma once

#include <wx/eventfilter.h>

// The mouse wheel changes no control that the pointer only passes over.

namespace warpline {

// While it lives, lists, number boxes, sliders and option buttons without the focus are not told of
// the wheel.
class WheelGuard : public wxEventFilter {
 public:
  WheelGuard();
  ~WheelGuard() override;
  WheelGuard(const WheelGuard&) = delete;
  WheelGuard& operator=(const WheelGuard&) = delete;

  int FilterEvent(wxEvent& event) override;
};

}  // namespace warpline
