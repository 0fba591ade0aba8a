#include "ui/window_busy.h"

#include <wx/evtloop.h>

#include "toolkit/native/focus.h"
#include "ui/window_messages.h"

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

// At once, not when the system finds the time: the next step may block.
void PaintAll() {
  for (wxWindow* window : wxTopLevelWindows) {
    if (window->IsShown()) window->Update();
  }
}

}  // namespace

void WindowBusy::BeginBusy(BusyKind kind) {
  if (depth_++ > 0) return;
  kind_ = kind;
  cancelled_ = false;
  if (progress_) progress_->Begin(MessageOwner());
  hourglass_ = std::make_unique<wxBusyCursor>();
  if (kind_ == BusyKind::kCommand) Disable();
}

void WindowBusy::Disable() {
  focus_ = wxWindow::FindFocus();
  if (!focus_ && window_) focus_ = silent_ && HoldsFocus(*silent_) ? silent_ : last_;
  if (!window_) return;
  window_->Disable();
  ProcessPendingEvents();
}

void WindowBusy::EndBusy() {
  if (depth_ > 1) {
    --depth_;
    return;
  }
  ProcessPendingEvents();
  depth_ = 0;
  hourglass_.reset();
  if (kind_ == BusyKind::kCommand) {
    Enable();
  } else {
    Watch();
  }
}

void WindowBusy::Enable() {
  if (!window_) return;
  window_->Enable();
  RenewTabStops(*window_);
  if (!IsUsable(focus_) && focus_) focus_ = fallback_;
  if (IsUsable(focus_)) focus_->SetFocus();
}

void WindowBusy::ProcessPendingEvents() {
  wxEventLoopBase* loop = wxEventLoopBase::GetActive();
  if (loop == nullptr || loop->IsYielding()) return;
  loop->YieldFor(wxEVT_CATEGORY_ALL);
  PaintAll();
  if (kind_ == BusyKind::kCommand && progress_) progress_->Look();
}

void WindowBusy::ShowStep(int step, int steps) {
  step_ = step;
  steps_ = steps;
  if (kind_ == BusyKind::kFollowing) {
    Watch();
  } else if (progress_) {
    progress_->Show(step, steps);
  }
}

void WindowBusy::EndSteps() {
  step_ = steps_ = 0;
  cancelled_ = Cancelled();  // the dialog that knows goes
  if (progress_) progress_->End();
  if (kind_ == BusyKind::kFollowing) Watch();
}

void WindowBusy::Watch() const {
  if (watcher_) watcher_();
}

}  // namespace warpline
