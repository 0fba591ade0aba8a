#include "ui/LSSphoto.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/image.h>
#include <wx/stdpaths.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "core/tool_texts.h"
#include "picture/photograph.h"
#include "toolkit/layout.h"
#include "toolkit/window_place.h"
#include "ui/files_at_hand.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr int kFirstWidth = 1280;  // DIP
constexpr int kFirstHeight = 960;

// How long keys rest until the fit is made anew, in milliseconds.
constexpr int kRest = 800;

RgbImage ImageOf(const wxImage& image) {
  RgbImage photo;
  if (!image.IsOk()) return photo;
  photo.Width = image.GetWidth();
  photo.Height = image.GetHeight();
  const auto count = static_cast<std::size_t>(photo.Width) * static_cast<std::size_t>(photo.Height);
  photo.Pixels.assign(image.GetData(), image.GetData() + 3 * count);
  return photo;
}

// What the clipboard holds: a file, or a picture.
struct Copied {
  std::filesystem::path file;
  RgbImage picture;
};

// A picture that the clipboard has as a file's bytes under the name of their kind.
RgbImage PictureOfKind(const char* kind) {
  wxCustomDataObject bytes{wxDataFormat(kind)};
  if (!wxTheClipboard->IsSupported(bytes.GetFormat()) || !wxTheClipboard->GetData(bytes)) return {};
  NamedText reason;
  const std::string_view file(static_cast<const char*>(bytes.GetData()), bytes.GetSize());
  return ImageOfPhotograph(file, reason).value_or(RgbImage{});
}

Copied FromClipboard() {
  const wxClipboardLocker clipboard;
  Copied copied;
  if (!clipboard) return copied;
  wxFileDataObject files;
  wxBitmapDataObject picture;
  if (wxTheClipboard->IsSupported(wxDF_FILENAME) && wxTheClipboard->GetData(files) &&
      !files.GetFilenames().empty()) {
    copied.file = PathOfWx(files.GetFilenames()[0]);
    return copied;
  }
  for (const char* kind : {"image/png", "image/jpeg", "PNG"}) {
    copied.picture = PictureOfKind(kind);
    if (copied.picture.Width > 0) return copied;
  }
  if (wxTheClipboard->IsSupported(wxDF_BITMAP) && wxTheClipboard->GetData(picture)) {
    copied.picture = ImageOf(picture.GetBitmap().ConvertToImage());
  }
  return copied;
}

}  // namespace

LSSphoto::LSSphoto(wxTopLevelWindow* owner, PhotoParts parts)
    : wxDialog(owner, wxID_ANY, CaptionOf(parts.engine.global, ToolText::kPhotoTitle),
               wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, "LSSphoto"),
      parts_(std::move(parts)),
      session_(parts_.engine, parts_.controller) {
  const LSSglobal& global = parts_.engine.global;
  steps_ = new PhotoSteps(this, global);
  canvas_ = new PhotoCanvas(this, session_, GetTitle(), CaptionOf(global, ToolText::kPhotoOpenHow),
                            {[this] { Edited(); }, [this] { Settle(); }});
  handle_ = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END, "photo_handle");
  buttons_ = CreateDialogButtons(ControlMaker(this, global), false);
  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(canvas_, wxSizerFlags(1).Expand());
  left->Add(handle_, wxSizerFlags().Expand().Border(wxTOP, Gap(this)));
  auto* upper = new wxBoxSizer(wxHORIZONTAL);
  upper->Add(left, wxSizerFlags(1).Expand());
  upper->Add(steps_, wxSizerFlags().Expand().Border(wxLEFT, WideGap(this)));
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(upper, wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  all->Add(LayDialogButtons(this, buttons_),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  SetSizer(all);
  BindSteps();
  BindWindow();
  ShowSession();
  SetSizes();
  steps_->open->SetFocus();
}

void LSSphoto::BindSteps() {
  const auto press = [this](wxButton* button, auto work) {
    button->Bind(wxEVT_BUTTON, [this, work](wxCommandEvent&) { work(); });
  };
  press(steps_->clear, [this] { ShowMarks(); });
  press(steps_->open, [this] { ChooseFile(); });
  press(steps_->left, [this] { Turn(false); });
  press(steps_->right, [this] { Turn(true); });
  press(steps_->find_near, [this] {
    const wxBusyCursor busy;
    session_.FindMarksNear();
    Settle();
  });
  press(steps_->largest, [this] {
    session_.ForgetCorners();
    Settle();
    canvas_->SetFocus();  // the button cannot be used any more
  });
  press(steps_->line, [this] { DrawLine(); });
  press(buttons_.ok, [this] { Confirm(); });
  press(buttons_.cancel, [this] { Leave(); });
  steps_->results->Bind(wxEVT_LIST_ITEM_SELECTED,
                        [this](wxListEvent& event) { ChooseResult(event.GetIndex()); });
  steps_->results->Bind(wxEVT_LIST_ITEM_ACTIVATED, [this](wxListEvent&) { Confirm(); });
}

void LSSphoto::BindWindow() {
  OpenDropped(*this, [this](const std::filesystem::path& file) {
    CallAfter([this, file] { Open(file); });
  });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Leave(); });
  Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    event.Skip();
    if (!event.GetActive() || IsBeingDeleted()) return;
    wxTheApp->SetTopWindow(this);
    steps_->ShowDisplays(parts_.picture.DisplayNames(), parts_.picture.OtherDisplay());
  });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const bool paste = event.GetKeyCode() == 'V' && event.GetModifiers() == wxMOD_CONTROL;
    paste ? Paste() : event.Skip();
  });
  rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { canvas_->Dragging() ? Edited() : Settle(); });
}

void LSSphoto::SetSizes() {
  CentreOverParent(*this);  // that screen's scale counts for the sizes
  SetMinClientSize(GetSizer()->ComputeFittingClientSize(this));
  const wxRect screen = UsableScreen(GetParent()->GetPosition());
  const wxSize first = FromDIP(wxSize(kFirstWidth, kFirstHeight));
  SetSize(wxSize(std::min(first.x, screen.width), std::min(first.y, screen.height)));
  CentreOverParent(*this);
  KeepPlace(*this);
  steps_->ShowDisplays(parts_.picture.DisplayNames(), parts_.picture.OtherDisplay());
}

// A command that is at work comes first; the window may have gone by then.
void LSSphoto::ShowMarks() {
  const int display = std::max(steps_->display->GetSelection(), 0);
  parts_.when_idle([self = wxWeakRef<LSSphoto>(this), display] {
    if (!self || !self->session_.Clear()) return;
    self->parts_.picture.PutMarks(static_cast<std::size_t>(display), *self);
  });
}

void LSSphoto::ChooseFile() {
  const wxString folder =
      wxStandardPaths::Get().GetUserDir(wxStandardPaths::Dir_Downloads);  // what is sent lies there
  const std::filesystem::path file = parts_.choose(this, PathOfWx(folder));
  if (!file.empty()) Open(file);
}

void LSSphoto::Open(const std::filesystem::path& file) {
  Take([&] { return session_.OpenFile(file); });
}

void LSSphoto::Paste() {
  Copied copied = FromClipboard();
  if (!copied.file.empty()) {
    Open(copied.file);
  } else if (copied.picture.Width > 0) {
    Take([&] { return session_.Take(std::move(copied.picture)); });
  } else {
    parts_.engine.messages.ShowText(ToolText::kPhotoNothingToPaste, MessageIcon::kInformation);
  }
}

// The keys then belong to what comes next: the results, or the marks that are to be set.
void LSSphoto::Take(const std::function<bool()>& take) {
  const wxBusyCursor busy;
  const bool taken = take();
  if (taken) canvas_->ShowPhoto();
  Settle();
  if (!taken) return;
  steps_->ShowCheck();
  session_.Report() ? steps_->results->SetFocus() : canvas_->SetFocus();
}

void LSSphoto::Turn(bool right) {
  const wxBusyCursor busy;
  session_.Turn(right);
  canvas_->ShowPhoto();
  Settle();
}

void LSSphoto::DrawLine() {
  session_.Drawing() ? session_.EndLine() : session_.BeginLine();
  canvas_->SetFocus();
  Settle();
}

void LSSphoto::ChooseResult(long row) {
  const auto result = static_cast<std::size_t>(row);
  if (result == session_.ChosenIndex()) return;
  session_.Choose(result);
  Edited();
}

void LSSphoto::Edited() {
  ShowSession();
  rest_.StartOnce(kRest);
}

void LSSphoto::Settle() {
  rest_.Stop();
  std::optional<wxBusyCursor> busy;
  if (session_.NeedsFit()) busy.emplace();
  session_.Fit();
  ShowSession();
}

void LSSphoto::ShowSession() {
  const LSSglobal& global = parts_.engine.global;
  steps_->ShowSession(session_);
  handle_->SetLabel(wxControl::EscapeMnemonics(WxText(TextOfHandle(global, session_))));
  const bool may_confirm = session_.Report().has_value() || session_.NeedsFit();
  if (!may_confirm && buttons_.ok->HasFocus()) buttons_.cancel->SetFocus();
  buttons_.ok->Enable(may_confirm);
  canvas_->Refresh(false);
}

// Out of the way before the projector is sent anything, which takes time.
void LSSphoto::Confirm() {
  session_.EndLine();
  Settle();
  if (!session_.Report()) return;
  parts_.when_idle([self = wxWeakRef<LSSphoto>(this)] {
    if (!self || !self->IsShown()) return;
    self->Hide();
    self->session_.TakeOver();
    if (self) self->Leave();
  });
}

void LSSphoto::Leave() {
  rest_.Stop();
  Destroy();
}

}  // namespace warpline
