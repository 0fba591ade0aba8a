#include "ui/LSSset.h"

#include <wx/statbox.h>

#include <cstddef>

#include "app/address_check.h"
#include "ui/dialog_controls.h"
#include "ui/layout.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

enum SetCaption : int {
  kTitle = 20,
  kDevices = 30,
  kSerialCaption = 31,
  kPort = 32,
  kSpeed = 33,
  kLanCaption = 34,
  kAddress = 35,
  kUsbCaption = 36,
  kUsbPort = 37,
};

constexpr const char* kWidestAddress = "888.888.888.888";

// Everything but characters that an address cannot have: editing keys and shortcuts pass.
bool IsAddressKey(const wxKeyEvent& event) {
  const wxChar key = event.GetUnicodeKey();
  if (key == WXK_NONE || key < WXK_SPACE || key == WXK_DELETE || event.ControlDown()) return true;
  return key < WXK_DELETE && IsAddressCharacter(static_cast<char>(key));
}

// One device after the other: its option button in a line of its own, its fields indented below.
class DeviceBlock {
 public:
  DeviceBlock(wxWindow* parent, wxRadioButton* option)
      : parent_(parent), fields_(new wxFlexGridSizer(2, wxSize(WideGap(parent), Gap(parent)))) {
    fields_->AddGrowableCol(1);
    column_->Add(option);
    column_->Add(fields_,
                 wxSizerFlags().Expand().Border(wxLEFT, 2 * WideGap(parent)).Border(wxTOP, 0));
  }

  void Add(wxStaticText* caption, wxWindow* field) {
    fields_->Add(caption, AtCentre());
    fields_->Add(field, wxSizerFlags().Expand());
  }

  wxSizer* Sizer() const { return column_; }

 private:
  wxWindow* parent_;
  wxFlexGridSizer* fields_;
  wxBoxSizer* column_ = new wxBoxSizer(wxVERTICAL);
};

}  // namespace

LSSset::LSSset(wxWindow* owner, LSSglobal& global, const Messages& messages)
    : wxDialog(owner, wxID_ANY, CaptionOf(global, kTitle), wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE, "LSSset"),
      global_(global),
      messages_(messages) {}
}  // namespace warpline
