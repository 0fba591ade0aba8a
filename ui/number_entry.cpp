#include "ui/number_entry.h"

#include <wx/textctrl.h>

#include <algorithm>
#include <string>

#include "core/texts.h"
#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/dialog_controls.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kLongestNumber = 12;
constexpr int kBoxWidth = 300;   // DIP
constexpr int kBesideBox = 120;  // DIP; the title's bold font and the frame's buttons

class NumberEntry : public wxDialog {
 public:
  NumberEntry(wxWindow* owner, const LSSglobal& global, const wxString& title,
              const SliderSetup& setup)
      : wxDialog(owner, wxID_ANY, title, wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE,
                 "NumberEntry"),
        global_(global),
        low_(setup.low),
        high_(setup.high),
        box_(new wxTextCtrl(this, wxID_ANY, std::to_string(setup.value), wxDefaultPosition,
                            wxDefaultSize, 0, wxDefaultValidator, "number")),
        fault_(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, 0, "fault")) {
    const wxString bounds = Filled(ToolText::kNumberBounds, {});
    box_->SetMaxLength(kLongestNumber);
    const int title_width = GetTextExtent(title).x + FromDIP(kBesideBox);
    box_->SetMinSize(wxSize(std::max(FromDIP(kBoxWidth), title_width), -1));
    SetAccessibleName(*box_, bounds);
    const DialogButtons buttons = CreateDialogButtons(ControlMaker(this, global), false);
    buttons.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
    const wxSizerFlags line = wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this));
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->AddSpacer(WideGap(this));
    all->Add(new wxStaticText(this, wxID_ANY, bounds), line);
    all->Add(box_, line);
    all->Add(fault_, line);
    all->Add(LayDialogButtons(this, buttons), line);
    fault_->Hide();
    SetSizerAndFit(all);
    CentreOverParent(*this);
    box_->SelectAll();
    box_->SetFocus();
  }

  int Number() const { return number_; }

 private:
  wxString Filled(ToolText text, const std::string& entered) const {
    return WxText(
        FilledText(TextOf(global_, text), {std::to_string(low_), std::to_string(high_), entered}));
  }

  void Confirm() {
    long number = 0;
    const wxString entered = box_->GetValue().Strip(wxString::both);
    if (entered.ToLong(&number) && number >= low_ && number <= high_) {
      number_ = static_cast<int>(number);
      EndModal(wxID_OK);
      return;
    }
    const wxString fault = Filled(ToolText::kNumberWrong, entered.utf8_string());
    fault_->SetLabelText(WrappedText(*this, fault, box_->GetSize().x));
    fault_->Show();
    Fit();
    SetAccessibleName(*box_, fault);
    box_->SelectAll();
    box_->SetFocus();
  }

  const LSSglobal& global_;
  int low_;
  int high_;
  int number_ = 0;
  wxTextCtrl* box_;
  wxStaticText* fault_;
};

}  // namespace

std::optional<int> AskNumber(wxWindow* owner, const LSSglobal& global, const wxString& title,
                             const SliderSetup& setup) {
  NumberEntry dialog(owner, global, title, setup);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return dialog.Number();
}

}  // namespace warpline
