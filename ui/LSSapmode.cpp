#include "ui/LSSapmode.h"

#include <wx/statbox.h>

#include <cstddef>

#include "toolkit/layout.h"
#include "ui/wx_text.h"

namespace warpline {

LSSapmode::LSSapmode(wxTopLevelWindow* owner, LSSglobal& global, ProjectorCommands& commands,
                     WindowBusy& busy)
    : wxDialog(owner, wxID_ANY, CaptionOf(global, kMsgModeSettings), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE, "LSSapmode"),
      choice_(global, commands),
      owner_(owner),
      busy_(busy) {
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(CreateOptions(global), wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  buttons_ = CreateDialogButtons(ControlMaker(this, global), true);
  all->Add(LayDialogButtons(this, buttons_),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  buttons_.apply->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Apply(); });
  buttons_.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    Apply();
    EndDialog(wxID_OK);
  });
  ShowPending();
  SetSizerAndFit(all);
  CentreOverParent(*this);
  busy_.Attach(this);
}

LSSapmode::~LSSapmode() {
  busy_.Attach(owner_);
}

wxSizer* LSSapmode::CreateOptions(const LSSglobal& global) {
  auto* frame = new wxStaticBoxSizer(wxVERTICAL, this, CaptionOf(global, kMsgProjectorSettings));
  const ControlMaker make(frame->GetStaticBox(), global);
  for (int mode = 0; mode < kProjectorModeCount; ++mode) {
    const auto index = static_cast<std::size_t>(mode);
    auto* option =
        make.RadioButton(wxString::Format("Option1%d", mode), kProjectorModes.at(index), mode == 0);
    option->Bind(wxEVT_RADIOBUTTON, [this, mode](wxCommandEvent&) { Choose(mode); });
    frame->Add(option, wxSizerFlags().Border(wxALL, Gap(this)));
    options_[index] = option;
  }
  frame->AddSpacer(Gap(this));
  options_.at(static_cast<std::size_t>(choice_.Chosen()))->SetValue(true);
  return frame;
}

void LSSapmode::Choose(int mode) {
  choice_.Choose(static_cast<std::int16_t>(mode));
  ShowPending();
}

void LSSapmode::Apply() {
  choice_.Apply();
  ShowPending();
}

void LSSapmode::ShowPending() {
  EnableApply(buttons_, choice_.Pending());
}

}  // namespace warpline
