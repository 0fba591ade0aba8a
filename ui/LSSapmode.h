#pragma once

#include <wx/dialog.h>
#include <wx/radiobut.h>

#include <array>

#include "app/mode_choice.h"
#include "core/LSSglobal.h"
#include "ui/dialog_controls.h"
#include "ui/window_busy.h"

// The projector mode dialog. The mode in force has been read before it opens.

namespace warpline {

class LSSapmode : public wxDialog {
 public:
  // All must outlive this object. While it exists, busy takes input away from it instead of the
  // main window, which is the owner.
  LSSapmode(wxTopLevelWindow* owner, LSSglobal& global, ProjectorCommands& commands,
            WindowBusy& busy);
  ~LSSapmode() override;

 private:
  wxSizer* CreateOptions(const LSSglobal& global);
  void Choose(int mode);
  void Apply();
  void ShowPending();

  ModeChoice choice_;
  wxTopLevelWindow* owner_;
  WindowBusy& busy_;
  std::array<wxRadioButton*, kProjectorModeCount> options_{};
  DialogButtons buttons_;
};

}  // namespace warpline
