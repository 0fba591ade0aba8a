#pragma once

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include <array>
#include <vector>

#include "app/communication_settings.h"
#include "core/LSSglobal.h"
#include "core/messages.h"

// The communication settings dialog. Closed by OK it has put its fields into the settings record;
// writing the settings file is left to whoever opened it.

namespace warpline {

class LSSset : public wxDialog {
 public:
  // Both must outlive this object.
  LSSset(wxWindow* owner, LSSglobal& global, const Messages& messages);

 private:
  static constexpr int kDeviceCount = 3;

  wxSizer* CreateFields();
  void BindControls();
  void Fill(const CommunicationEntry& entry);
  void SelectDevice(int device);
  CommunicationEntry Entry() const;
  void NoteAddress();
  void RestoreAddress();
  void OnAddressKey(wxKeyEvent& event);
  void Confirm();

  LSSglobal& global_;
  const Messages& messages_;
  std::array<wxRadioButton*, kDeviceCount> devices_{};
  std::array<std::vector<wxWindow*>, kDeviceCount> fields_;  // that go with each device
  wxChoice* com_port_ = nullptr;
  wxChoice* com_speed_ = nullptr;
  wxTextCtrl* address_ = nullptr;
  wxChoice* usb_port_ = nullptr;
  struct {
    wxString text;
    long from = 0;  // the selection
    long to = 0;
    bool refused = false;  // what was typed then must not count
  } noted_;                // the address before a key
};

}  // namespace warpline
