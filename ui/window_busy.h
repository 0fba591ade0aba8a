#pragma once

#include <wx/toplevel.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include <memory>

#include "core/interfaces.h"

// Busy work as the user sees it: hourglass, and a main window that takes no input.

namespace warpline {

class WindowBusy : public BusyIndicator {
 public:
  // The window that asks for work. It may go away before this object.
  void Attach(wxTopLevelWindow* window) { window_ = window; }

  // A control of the main window that gets the focus back when the toolkit could not tell which one
  // had it: GTK's drop-down lists never say that they have the focus. Also when the one that had it
  // cannot be used any more.
  void SetSilentControl(wxWindow* control) { silent_ = control; }

  // A control of the main window has got the focus. Work that begins right behind a dialog finds
  // the focus nowhere: then it goes back to this one.
  void NoteFocus(wxWindow* control) { last_ = control; }

  // Work is under way: commands that arrive now are dropped.
  bool IsBusy() const { return depth_ > 0; }

  // Only the outermost pair shows. At the end the focus goes back to the control that had it.
  void BeginBusy() override;
  void EndBusy() override;

  // Repaints, and throws away what the user clicked or typed at the disabled window.
  void ProcessPendingEvents() override;

 private:
  int depth_ = 0;
  wxWeakRef<wxTopLevelWindow> window_;
  wxWeakRef<wxWindow> focus_;
  wxWeakRef<wxWindow> silent_;
  wxWeakRef<wxWindow> last_;
  std::unique_ptr<wxBusyCursor> hourglass_;
};

}  // namespace warpline
