#pragma once

#include <wx/progdlg.h>
#include <wx/weakref.h>

#include <chrono>

#include "core/LSSglobal.h"

// How far work has come that takes longer than a moment, with a way out of it.

namespace warpline {

class WorkProgress {
 public:
  // The texts' record must outlive this object.
  explicit WorkProgress(const LSSglobal& global) : global_(global) {}
  ~WorkProgress() { End(); }
  WorkProgress(const WorkProgress&) = delete;
  WorkProgress& operator=(const WorkProgress&) = delete;

  // Work of that window begins, and with it the clock.
  void Begin(wxWindow* owner);

  // A step (1..steps, 0 for what comes before them) of the work begins.
  void Show(int step, int steps);

  // To be called again and again: when the work has taken long enough, its dialog opens.
  void Look();

  // The dialog goes.
  void End();

  // The work has taken longer than a moment.
  bool IsLong() const;

  // The user pressed the dialog's button, or Escape.
  bool Cancelled() const { return dialog_ && dialog_->WasCancelled(); }

 private:
  void OpenDialog();

  const LSSglobal& global_;
  wxWeakRef<wxWindow> owner_;
  wxWeakRef<wxGenericProgressDialog> dialog_;
  std::chrono::steady_clock::time_point begun_;
  bool running_ = false;
  int step_ = 0;
  int steps_ = 0;
};

}  // namespace warpline
