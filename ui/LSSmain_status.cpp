#include "ui/LSSmain_status.h"

#include <utility>

#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// What does not fit on the line can be read by pointing at it.
void SetText(wxStaticText& place, const std::string& utf8, const std::string& detail = {}) {
  const wxString text = wxControl::EscapeMnemonics(WxText(utf8));
  const wxString whole = WxText(detail.empty() ? utf8 : detail);
  if (place.GetLabel() != text) place.SetLabel(text);
  if (place.GetToolTipText() != whole) place.SetToolTip(whole);
}

}  // namespace

MainStatus::MainStatus(wxWindow* parent, const LSSglobal& global, Handlers handlers)
    : global_(global),
      handlers_(std::move(handlers)),
      sizer_(new wxBoxSizer(wxHORIZONTAL)),
      link_(Create(parent, "status_link", 0)),
      shown_(Create(parent, "status_shown", 1)),
      note_(Create(parent, "status_note", 1)),
      act_(new wxButton(parent, wxID_ANY, CaptionOf(global, ToolText::kTryAgain), wxDefaultPosition,
                        wxDefaultSize, wxBU_EXACTFIT, wxDefaultValidator, "status_act")) {
  sizer_->Add(act_, AtCentre().Border(wxLEFT, Gap(parent)).ReserveSpaceEvenIfHidden());
  link_->Bind(wxEVT_DPI_CHANGED, [this](wxDPIChangedEvent& event) {
    event.Skip();
    GiveLinkRoom();
  });
  act_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Press(); });
  wxSize room = act_->GetBestSize();
  act_->SetLabel(CaptionOf(global, kMsgCancel));
  room.IncTo(act_->GetBestSize());
  act_->SetMinSize(room);
  act_->Hide();
}

wxStaticText* MainStatus::Create(wxWindow* parent, const wxString& name, int proportion) {
  auto* text = new wxStaticText(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END, name);
  sizer_->Add(text, wxSizerFlags(proportion)
                        .CentreVertical()
                        .Border(wxLEFT, sizer_->IsEmpty() ? 0 : Gap(parent)));
  return text;
}

// The connection is never cut; the others share what it leaves.
void MainStatus::ShowLink(const std::string& link) {
  SetText(*link_, link);
  GiveLinkRoom();
}

void MainStatus::GiveLinkRoom() {
  const wxSize room(link_->GetTextExtent(link_->GetLabelText()).x, -1);
  if (link_->GetMinSize() == room) return;
  link_->SetMinSize(room);
  sizer_->Layout();
}

// A note that says nothing leaves its room to what the projector shows.
void MainStatus::SetNote(const std::string& note, const std::string& detail) {
  SetText(*note_, note, detail);
  wxSizerItem& place = *sizer_->GetItem(note_);
  const int share = note.empty() ? 0 : 1;
  if (place.GetProportion() == share) return;
  place.SetProportion(share);
  sizer_->Layout();
}

void MainStatus::Show(const StatusLine& line) {
  ShowLink(line.link);
  SetText(*shown_, line.shown);
  SetNote(line.note, line.detail);
  SetOffer(line.retry ? Offer::kRetry : Offer::kNothing);
}

void MainStatus::ShowWork(const std::string& text, bool stoppable) {
  SetNote(text, {});
  SetOffer(stoppable ? Offer::kStop : Offer::kNothing);
}

void MainStatus::SetOffer(Offer offer) {
  if (offer == offer_) return;
  offer_ = offer;
  if (offer != Offer::kNothing) {
    act_->SetLabel(offer == Offer::kStop ? CaptionOf(global_, kMsgCancel)
                                         : CaptionOf(global_, ToolText::kTryAgain));
  }
  act_->Show(offer != Offer::kNothing);
}

void MainStatus::Press() const {
  (offer_ == Offer::kStop ? handlers_.stop : handlers_.retry)();
}

}  // namespace warpline
