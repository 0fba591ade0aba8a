#pragma once

#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include <functional>
#include <memory>
#include <utility>

#include "core/interfaces.h"
#include "ui/work_progress.h"

// Busy work as the user sees it: hourglass, a main window that takes no input, progress with a way
// out when it lasts. Work that follows the hand leaves the window as it is.

namespace warpline {

class WindowBusy : public BusyIndicator {
 public:
  // The window that asks for work. It may go away before this object.
  void Attach(wxTopLevelWindow* window) { window_ = window; }

  // Without texts no progress is shown. They must outlive this object.
  void SetTexts(const LSSglobal& global) { progress_ = std::make_unique<WorkProgress>(global); }

  // Called when following begins, with each of its steps, and when it has ended.
  void SetWatcher(std::function<void()> watcher) { watcher_ = std::move(watcher); }

  // A control of the main window that never says that it has the focus, as GTK's drop-down lists.
  void SetSilentControl(wxWindow* control) { silent_ = control; }

  // A control of the main window that gets the focus when the one that had it cannot be used any
  // more.
  void SetFallbackControl(wxWindow* control) { fallback_ = control; }

  // A control of the main window has got the focus. Work that begins right behind a dialog finds
  // the focus nowhere: then it goes back to this one.
  void NoteFocus(wxWindow* control) { last_ = control; }

  // Work is under way. Commands that arrive then are dropped while the window is disabled, and wait
  // while the work follows the hand.
  bool IsBusy() const { return depth_ > 0; }
  bool IsFollowing() const { return IsBusy() && kind_ == BusyKind::kFollowing; }

  // The step under way; steps are 0 when there is none.
  int Step() const { return step_; }
  int Steps() const { return steps_; }

  // The work has taken longer than a moment.
  bool IsLong() const { return progress_ && progress_->IsLong(); }

  // Ends the work before its next step.
  void Cancel() { cancelled_ = true; }

  // Only the outermost pair shows. At the end the focus goes back to the control that had it.
  void BeginBusy(BusyKind kind) override;
  void EndBusy() override;

  // Repaints, and throws away what the user clicked or typed at the disabled window.
  void ProcessPendingEvents() override;

  void ShowStep(int step, int steps) override;
  void EndSteps() override;
  bool Cancelled() const override { return cancelled_ || (progress_ && progress_->Cancelled()); }

 private:
  void Watch() const;
  void Disable();
  void Enable();

  int depth_ = 0;
  BusyKind kind_ = BusyKind::kCommand;
  int step_ = 0;
  int steps_ = 0;
  bool cancelled_ = false;
  wxWeakRef<wxTopLevelWindow> window_;
  wxWeakRef<wxWindow> focus_;
  wxWeakRef<wxWindow> silent_;
  wxWeakRef<wxWindow> fallback_;
  wxWeakRef<wxWindow> last_;
  std::unique_ptr<wxBusyCursor> hourglass_;
  std::unique_ptr<WorkProgress> progress_;
  std::function<void()> watcher_;
};

}  // namespace warpline
