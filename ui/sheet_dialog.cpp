#include "ui/sheet_dialog.h"

#include <wx/checkbox.h>
#include <wx/textctrl.h>

#include <utility>

#include "app/plain_caption.h"
#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/dialog_controls.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kNoteWidth = 420;   // DIP
constexpr int kNoteHeight = 120;  // DIP

}  // namespace

SheetDialog::SheetDialog(wxWindow* owner, const LSSglobal& global, Make make)
    : wxDialog(owner, wxID_ANY, CaptionOf(global, ToolText::kSheetTitle), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "SheetDialog"),
      make_(std::move(make)) {
  // The caption comes before its box, which its access key leads to.
  auto* caption = new wxStaticText(this, wxID_ANY, CaptionOf(global, ToolText::kSheetNoteLabel));
  note_ = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition,
                         FromDIP(wxSize(kNoteWidth, kNoteHeight)), wxTE_MULTILINE,
                         wxDefaultValidator, "note");
  SetAccessibleName(*note_, WxText(NameOf(global, ToolText::kSheetNoteLabel)));
  ask_ = new wxCheckBox(this, wxID_ANY, CaptionOf(global, ToolText::kSheetAsk), wxDefaultPosition,
                        wxDefaultSize, 0, wxDefaultValidator, "ask_projector");
  ask_->Enable(global.Settings.DemoMode != 1);
  const DialogButtons buttons = CreateDialogButtons(ControlMaker(this, global), false);
  buttons.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    if (make_(note_->GetValue().utf8_string(), ask_->GetValue())) EndModal(wxID_OK);
  });
  const wxSizerFlags line = wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this));
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->AddSpacer(WideGap(this));
  all->Add(caption, wxSizerFlags(line).Border(wxALL & ~wxTOP & ~wxBOTTOM, WideGap(this)));
  all->AddSpacer(Gap(this));
  all->Add(note_, wxSizerFlags(line).Proportion(1));
  all->Add(ask_, line);
  all->Add(LayDialogButtons(this, buttons), line);
  SetSizerAndFit(all);
  CentreOverParent(*this);
  note_->SetFocus();
}

}  // namespace warpline
