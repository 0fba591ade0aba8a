#pragma once

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/ui/window_rig.h"

// Acting on dialogs: their controls by product names, and scripts for those that are modal.

namespace warpline {

template <typename Control = wxWindow>
Control& ControlOf(wxWindow& dialog, const std::string& name) {
  auto* found = dynamic_cast<Control*>(wxWindow::FindWindowByName(WxText(name), &dialog));
  if (found == nullptr) throw std::out_of_range("no control " + name);
  return *found;
}

inline void SendTo(wxWindow& control, wxCommandEvent& event, int value) {
  event.SetEventObject(&control);
  event.SetInt(value);
  control.ProcessWindowEvent(event);
  WindowRig::Settle();
}

inline void SendTo(wxWindow& control, wxEventType type, int value = 0) {
  wxCommandEvent event(type, control.GetId());
  SendTo(control, event, value);
}

inline void PressIn(wxWindow& dialog, const std::string& button) {
  wxWindow& control = ControlOf(dialog, button);
  EXPECT_TRUE(control.IsEnabled()) << button;
  SendTo(control, wxEVT_BUTTON);
}

inline void ChooseIn(wxWindow& dialog, const std::string& list, int index) {
  ControlOf<wxChoice>(dialog, list).SetSelection(index);
  SendTo(ControlOf(dialog, list), wxEVT_CHOICE, index);
}

inline void SelectIn(wxWindow& dialog, const std::string& option) {
  ControlOf<wxRadioButton>(dialog, option).SetValue(true);
  SendTo(ControlOf(dialog, option), wxEVT_RADIOBUTTON, 1);
}

inline void CheckIn(wxWindow& dialog, const std::string& box, bool checked) {
  ControlOf<wxCheckBox>(dialog, box).SetValue(checked);
  SendTo(ControlOf(dialog, box), wxEVT_CHECKBOX, checked ? 1 : 0);
}

// Waits for the modal dialog of that name, acts on it, and cancels it if it is open then.
class ModalScript : public wxTimer {
 public:
  ModalScript(std::string name, std::function<void(wxDialog&)> script)
      : name_(std::move(name)), script_(std::move(script)) {
    Start(5);
  }
  ~ModalScript() override { EXPECT_TRUE(met_) << name_ << " did not open"; }

  void Notify() override {
    for (wxWindow* window : wxTopLevelWindows) {
      auto* dialog = dynamic_cast<wxDialog*>(window);
      if (dialog == nullptr || !dialog->IsModal() || dialog->GetName() != name_) continue;
      Act(*dialog);
      return;
    }
  }

 private:
  void Act(wxDialog& dialog) {
    Stop();
    met_ = true;
    script_(dialog);
    if (dialog.IsModal() && dialog.IsShown()) dialog.EndModal(wxID_CANCEL);
  }

  std::string name_;
  std::function<void(wxDialog&)> script_;
  bool met_ = false;
};

}  // namespace warpline
