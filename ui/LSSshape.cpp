#include "ui/LSSshape.h"

#include <algorithm>

#include "app/curve_editor.h"
#include "toolkit/layout.h"
#include "ui/dialog_controls.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kShapes[] = {kMsgArch, kMsgDiagonalLine,
                           kMsgTriangle};  // in the order of the shape numbers
constexpr int kListWidth = 240;            // DIP
constexpr int kBesideTitle = 120;          // DIP; the title's bold font and the frame's buttons

}  // namespace

LSSshape::LSSshape(wxWindow* owner, const LSSglobal& global)
    : wxDialog(owner, wxID_ANY, CaptionOf(global, kMsgSelectShape), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE, "LSSshape"),
      shape_(kNoShape) {
  const ControlMaker make(this, global);
  list_ = make.Choice("Combo1", kMsgSelectShape);
  for (const int shape : kShapes) list_->Append(make.Text(shape));
  list_->SetSelection(0);
  const int title_width = GetTextExtent(GetTitle()).x + FromDIP(kBesideTitle);
  list_->SetMinSize(wxSize(std::max(FromDIP(kListWidth), title_width), -1));
  const DialogButtons buttons = CreateDialogButtons(make, false);
  buttons.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    shape_ = list_->GetSelection();
    EndDialog(wxID_OK);
  });
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(list_, wxSizerFlags().Expand().Border(wxALL, WideGap(this)));
  all->Add(LayDialogButtons(this, buttons),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  SetSizerAndFit(all);
  CentreOverParent(*this);
  list_->SetFocus();
}

}  // namespace warpline
