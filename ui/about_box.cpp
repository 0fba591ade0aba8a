#include "ui/about_box.h"

#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include "core/version.h"
#include "toolkit/layout.h"
#include "ui/icons.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kAboutWidth = 360;  // DIP
constexpr int kPictureSize = 64;

class AboutBox : public wxDialog {
 public:
  AboutBox(wxWindow* owner, const LSSglobal& global)
      : wxDialog(owner, wxID_ANY, CaptionOf(global, kMsgAbout), wxDefaultPosition, wxDefaultSize,
                 wxDEFAULT_DIALOG_STYLE, "about_box") {
    auto* line = new wxBoxSizer(wxHORIZONTAL);
    line->Add(new wxStaticBitmap(this, wxID_ANY, ProgramPicture(kPictureSize)));
    line->Add(CreateTexts(global), wxSizerFlags(1).Border(wxLEFT, 2 * WideGap(this)));
    auto* all = new wxBoxSizer(wxVERTICAL);
    all->Add(line, wxSizerFlags(1).Expand().Border(wxALL, 2 * WideGap(this)));
    all->Add(CreateButtonSizer(wxOK), wxSizerFlags().Expand().Border(wxALL, WideGap(this)));
    SetSizerAndFit(all);
    CentreOverParent(*this);
  }

 private:
  wxSizer* CreateTexts(const LSSglobal& global) {
    auto* title = CreateText("about_title", CaptionOf(global, kMsgTitle));
    title->SetFont(title->GetFont().Bold().Scaled(1.3F));
    auto* column = new wxBoxSizer(wxVERTICAL);
    const wxSizerFlags below = wxSizerFlags().Border(wxTOP, WideGap(this));
    column->Add(title);
    column->Add(CreateText("about_version", CaptionOf(global, kMsgVersion) + WxText(kToolVersion)),
                wxSizerFlags().Border(wxTOP, Gap(this)));
    column->Add(CreateText("about_text", CaptionOf(global, kMsgDescription)), below);
    column->Add(CreateText("about_maker", CaptionOf(global, kMsgMaker)), below);
    return column;
  }

  wxStaticText* CreateText(const wxString& name, const wxString& text) {
    return new wxStaticText(this, wxID_ANY, WrappedText(*this, text, FromDIP(kAboutWidth)),
                            wxDefaultPosition, wxDefaultSize, 0, name);
  }
};

}  // namespace

void ShowAboutBox(wxWindow* owner, const LSSglobal& global) {
  AboutBox box(owner, global);
  box.ShowModal();
}

}  // namespace warpline
