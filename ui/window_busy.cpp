#include "ui/window_busy.h"

#include <wx/evtloop.h>

namespace warpline {
namespace {

bool IsUsable(const wxWindow* control) {
  return control != nullptr && control->IsEnabled() && control->IsShownOnScreen();
}

// GTK looks for the tab stops anew after something was enabled, and leaves a panel out for good
// whose controls cannot be used at that moment. So it has to look once more when they can.
void RenewTabStops(const wxWindow& panel) {
  bool renewed = false;
  for (wxWindow* child : panel.GetChildren()) {
    if (child->IsTopLevel()) continue;
    if (!child->GetChildren().empty()) {
      RenewTabStops(*child);
    } else if (!renewed && child->IsThisEnabled() && child->AcceptsFocusFromKeyboard()) {
      child->Disable();
      child->Enable();
      renewed = true;
    }
  }
}

}  // namespace

void WindowBusy::BeginBusy() {
  if (depth_++ > 0) return;
  hourglass_ = std::make_unique<wxBusyCursor>();
  focus_ = wxWindow::FindFocus();
  if (!focus_ && window_) focus_ = window_->IsActive() ? silent_ : last_;
  if (window_) window_->Disable();
}

void WindowBusy::EndBusy() {
  if (depth_ > 1) {
    --depth_;
    return;
  }
  ProcessPendingEvents();
  depth_ = 0;
  hourglass_.reset();
  if (!window_) return;
  window_->Enable();
  RenewTabStops(*window_);
  if (!IsUsable(focus_) && focus_) focus_ = silent_;
  if (IsUsable(focus_)) focus_->SetFocus();
}

void WindowBusy::ProcessPendingEvents() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (loop != nullptr && !loop->IsYielding()) loop->YieldFor(wxEVT_CATEGORY_ALL);
}

}  // namespace warpline
