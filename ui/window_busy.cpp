#include "ui/window_busy.h"

#include <wx/evtloop.h>

namespace warpline {

void WindowBusy::BeginBusy() {
  if (depth_++ > 0) return;
  hourglass_ = std::make_unique<wxBusyCursor>();
  focus_ = wxWindow::FindFocus();
  if (!focus_ && window_ && window_->IsActive()) focus_ = silent_;
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
  if (focus_ && focus_->IsEnabled() && focus_->IsShownOnScreen()) focus_->SetFocus();
}

void WindowBusy::ProcessPendingEvents() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (loop != nullptr && !loop->IsYielding()) loop->YieldFor(wxEVT_CATEGORY_ALL);
}

}  // namespace warpline
