#include "toolkit/native/focus.h"

namespace warpline {

bool HoldsFocus(const wxWindow& control) {
  const wxWindow* focus = wxWindow::FindFocus();
  while (focus != nullptr && focus != &control) focus = focus->GetParent();
  return focus != nullptr;
}

}  // namespace warpline
