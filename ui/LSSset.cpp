#include "ui/LSSset.h"

#include <wx/statbox.h>

#include <cstddef>

#include "app/address_check.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/dialog_controls.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr const char* kWidestAddress = "888.888.888.888";

// Everything but characters that an address cannot have: editing keys and shortcuts pass.
bool IsAddressKey(const wxKeyEvent& event) {
  const wxChar key = event.GetUnicodeKey();
  if (key < WXK_SPACE || key == WXK_DELETE || event.ControlDown()) return true;
  return key < WXK_DELETE && IsAddressCharacter(static_cast<char>(key));
}

}  // namespace

LSSset::LSSset(wxWindow* owner, LSSglobal& global, const Messages& messages)
    : wxDialog(owner, wxID_ANY, CaptionOf(global, kMsgCommunicationSettings), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE, "LSSset"),
      global_(global),
      messages_(messages) {
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(CreateFields(), wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  const DialogButtons buttons = CreateDialogButtons(ControlMaker(this, global), false);
  all->Add(LayDialogButtons(this, buttons),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  buttons.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
  BindControls();
  Fill(CommunicationEntryOf(global.Settings));
  SetSizerAndFit(all);
  CentreOverParent(*this);
}

// The option buttons come first in tab order: one group has to be created in one go.
wxSizer* LSSset::CreateFields() {
  auto* frame =
      new wxStaticBoxSizer(wxVERTICAL, this, CaptionOf(global_, kMsgCommunicationsDevice));
  wxWindow* box = frame->GetStaticBox();
  const ControlMaker make(box, global_);
  devices_ = {make.RadioButton("com_option", kMsgSerial, true),
              make.RadioButton("lan_option", kMsgLan, false),
              make.RadioButton("usb_option", kMsgUsb, false)};
  auto* grid = new wxFlexGridSizer(3, wxSize(WideGap(this), Gap(this)));
  grid->AddGrowableCol(2);
  const auto add_row = [&](wxWindow* option, int device, int caption, wxWindow* field) {
    wxWindow* text = make.Caption(caption);
    std::vector<wxWindow*>& fields = fields_.at(static_cast<std::size_t>(device));
    fields.insert(fields.end(), {text, field});
    if (option != nullptr) {
      grid->Add(option, AtCentre());
    } else {
      grid->AddSpacer(0);
    }
    grid->Add(text, AtCentre());
    grid->Add(field, wxSizerFlags().Expand());
  };
  com_port_ = make.Choice("Combo1", kMsgPort, kComPortNames);
  add_row(devices_[kSerial], kSerial, kMsgPort, com_port_);
  com_speed_ = make.Choice("Combo2", kMsgSpeed, kSerialSpeeds);
  add_row(nullptr, kSerial, kMsgSpeed, com_speed_);
  address_ = new wxTextCtrl(box, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, 0,
                            wxDefaultValidator, "Text1");
  address_->SetMinSize(
      wxSize(address_->GetSizeFromTextSize(address_->GetTextExtent(kWidestAddress).x).x, -1));
  SetAccessibleName(*address_, make.Text(kMsgIpAddress));
  add_row(devices_[kLan], kLan, kMsgIpAddress, address_);
  usb_port_ = make.Choice("Combo3", kMsgUsbPort, kUsbPortNames);
  add_row(devices_[kUsb], kUsb, kMsgUsbPort, usb_port_);
  frame->Add(grid, wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  return frame;
}

void LSSset::BindControls() {
  for (int device = 0; device < kDeviceCount; ++device) {
    devices_[static_cast<std::size_t>(device)]->Bind(
        wxEVT_RADIOBUTTON, [this, device](wxCommandEvent&) { SelectDevice(device); });
  }
  address_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
    NoteAddress();
    event.Skip();
  });
  address_->Bind(wxEVT_CHAR, &LSSset::OnAddressKey, this);
}

void LSSset::Fill(const CommunicationEntry& entry) {
  devices_.at(static_cast<std::size_t>(entry.ConnectDevice))->SetValue(true);
  SelectDevice(entry.ConnectDevice);
  com_port_->SetSelection(entry.ComPort);
  com_speed_->SetSelection(entry.ComSpeed);
  address_->ChangeValue(WxText(entry.IPAddress));
  usb_port_->SetSelection(entry.USBPort);
}

void LSSset::SelectDevice(int device) {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    for (wxWindow* field : fields_[i]) field->Enable(static_cast<int>(i) == device);
  }
}

CommunicationEntry LSSset::Entry() const {
  CommunicationEntry entry;
  for (std::int16_t device = 0; device < kDeviceCount; ++device) {
    if (devices_[static_cast<std::size_t>(device)]->GetValue()) entry.ConnectDevice = device;
  }
  entry.ComPort = static_cast<std::int16_t>(com_port_->GetSelection());
  entry.ComSpeed = static_cast<std::int16_t>(com_speed_->GetSelection());
  entry.IPAddress = address_->GetValue().utf8_string();
  entry.USBPort = static_cast<std::int16_t>(usb_port_->GetSelection());
  return entry;
}

void LSSset::NoteAddress() {
  RestoreAddress();
  noted_.text = address_->GetValue();
  address_->GetSelection(&noted_.from, &noted_.to);
}

void LSSset::RestoreAddress() {
  if (!noted_.refused) return;
  noted_.refused = false;
  if (address_->GetValue() != noted_.text) address_->ChangeValue(noted_.text);
  address_->SetSelection(noted_.from, noted_.to);
}

// GTK takes the selected text away before it asks whether the character may come in its place.
void LSSset::OnAddressKey(wxKeyEvent& event) {
  if (IsAddressKey(event)) {
    event.Skip();
    return;
  }
  noted_.refused = true;
  CallAfter(&LSSset::RestoreAddress);
}

void LSSset::Confirm() {
  if (StoreCommunication(Entry(), global_.Settings, messages_)) {
    EndDialog(wxID_OK);
    return;
  }
  address_->SetFocus();
  address_->SelectAll();
}

}  // namespace warpline
