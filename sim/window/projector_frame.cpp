#include "sim/window/projector_frame.h"

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/generic/msgdlgg.h>
#include <wx/notebook.h>
#include <wx/stattext.h>

#include "platform/files.h"
#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

constexpr int kLookMilliseconds = 30;
constexpr int kPaneWidth = 450;     // DIP
constexpr int kRoomForPanes = 850;  // DIP; a narrower window shows the picture alone
constexpr int kBannerBorder = 6;    // DIP

PanelSize SizeOf(const wxSize& size) {
  return {std::max(size.GetWidth(), 2), std::max(size.GetHeight(), 2)};
}

}  // namespace

ProjectorFrame::ProjectorFrame(const WindowRequest& request)
    : wxFrame(nullptr, wxID_ANY, ""),
      request_(request),
      texts_(ProjectorTextsOf(request.Language)),
      timer_(this),
      source_(request.Source ? *request.Source
                             : TestPicture(request.Station.Snapshot().Setup.Panel)) {
  SetName("warpline-projector");
  const std::string name = request.Station.Snapshot().Name;
  SetTitle(
      Wx(texts_.Fill(ProjectorText::kTitle, {request.Place}) + (name.empty() ? "" : " - " + name)));
  BuildMenus();
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(BuildBanner(), wxSizerFlags().Expand());
  splitter_ = new wxSplitterWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                   wxSP_LIVE_UPDATE | wxSP_NOBORDER);
  splitter_->SplitVertically(BuildPicture(splitter_), BuildPanes(splitter_), -FromDIP(kPaneWidth));
  splitter_->SetSashGravity(1);
  splitter_->SetMinimumPaneSize(FromDIP(200));
  column->Add(splitter_, wxSizerFlags(1).Expand());
  SetSizer(column);
  SetMinClientSize(wxSize(wall_bar_->GetBestSize().x, FromDIP(240)));
  SetClientSize(FromDIP(wxSize(1180, 640)));
  splitter_->SetSashPosition(-FromDIP(kPaneWidth));
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Look(); });
  Bind(wxEVT_CHAR_HOOK, &ProjectorFrame::PressKey, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    ArrangePanes();
    WrapBanner();
  });
  ChooseView(request.Wall ? View::kWall : View::kPanel);
  canvas_->SetFocusIgnoringChildren();
  timer_.Start(kLookMilliseconds);
}

// While the window is still whole: the picture tells it when it loses the focus.
ProjectorFrame::~ProjectorFrame() {
  DestroyChildren();
}

wxSize ProjectorFrame::DoGetBestClientSize() const {
  return FromDIP(wxSize(400, 300));
}

wxSizer* ProjectorFrame::BuildBanner() {
  banner_ = new wxPanel(this, wxID_ANY);
  banner_->SetBackgroundColour(wxColour(170, 30, 30));
  banner_->SetForegroundColour(*wxWHITE);
  banner_text_ = new wxStaticText(banner_, wxID_ANY, "");
  banner_text_->SetForegroundColour(*wxWHITE);
  banner_text_->SetName("fault_banner");
  banner_clear_ = new wxButton(banner_, wxID_ANY, Label(texts_, ProjectorText::kClearAll));
  banner_clear_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { request_.Station.SetFaults({}); });
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(banner_text_, wxSizerFlags(1).CentreVertical().Border(wxALL, FromDIP(kBannerBorder)));
  row->Add(banner_clear_, wxSizerFlags().CentreVertical().Border(wxALL, FromDIP(4)));
  banner_->SetSizer(row);
  banner_->Hide();
  auto* const place = new wxBoxSizer(wxVERTICAL);
  place->Add(banner_, wxSizerFlags().Expand());
  return place;
}

wxWindow* ProjectorFrame::BuildPicture(wxWindow* parent) {
  auto* const side = new wxPanel(parent, wxID_ANY);
  canvas_ = new Canvas(side);
  canvas_->Bind(wxEVT_KEY_UP, [this](wxKeyEvent& event) {
    event.Skip();
    if (event.GetKeyCode() == kUncorrectedKey) ShowUncorrected(false);
  });
  canvas_->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    ShowUncorrected(false);
  });
  wall_bar_ =
      new WallBar(side, texts_, request_.Wall.value_or(Wall{}), [this](const Wall&) { Redraw(); });
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(canvas_, wxSizerFlags(1).Expand());
  column->Add(wall_bar_, wxSizerFlags().Expand());
  side->SetSizer(column);
  canvas_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    if (view_ != View::kPanel) Redraw();
  });
  return side;
}

wxWindow* ProjectorFrame::BuildPanes(wxWindow* parent) {
  panes_ = new wxNotebook(parent, wxID_ANY);
  panes_->SetName("pages");
  state_pane_ = new StatePane(panes_, texts_);
  registers_ = new RegisterList(panes_, texts_);
  frames_ = new FrameList(panes_, texts_);
  faults_ = new FaultPane(panes_, texts_, request_.Station);
  panes_->AddPage(state_pane_, Label(texts_, ProjectorText::kTabState));
  panes_->AddPage(registers_, Label(texts_, ProjectorText::kTabRegisters));
  panes_->AddPage(frames_, Label(texts_, ProjectorText::kTabFrames));
  panes_->AddPage(faults_, Label(texts_, ProjectorText::kTabFaults));
  return panes_;
}

void ProjectorFrame::Look() {
  ending_ = ending_ || request_.StopWanted();
  if (ending_) return End();
  const std::uint64_t revision = request_.Station.Revision();
  const bool changing = state_.PowerLeft.count() > 0;
  if (seen_ == revision && !changing) return;
  const StationSnapshot state = request_.Station.Snapshot();
  const bool all = seen_ != revision;
  seen_ = revision;
  if (all) Follow(state);
  state_ = state;
  state_pane_->Show(state_, shown_);
}

// A dialog that waits for the user would hold the program back; it goes first.
void ProjectorFrame::End() {
  if (asking_ == nullptr) {
    Close(true);
  } else if (asking_->IsModal()) {
    asking_->EndModal(wxID_CANCEL);
  }
}

void ProjectorFrame::Follow(const StationSnapshot& state) {
  const bool redraw = shown_.Image.Width == 0 || state.Working != state_.Working ||
                      state.Setup.PowerState != state_.Setup.PowerState;
  state_ = state;
  if (redraw) Redraw();
  registers_->Show(state);
  frames_->Show(state);
  faults_->Show(state);
  ShowBanner(state);
}

void ProjectorFrame::ShowBanner(const StationSnapshot& state) {
  std::string texts;
  for (const std::string& fault : state.Faults) texts += (texts.empty() ? "" : "   ") + fault;
  const wxString label = Wx(texts_.Fill(ProjectorText::kFaultBanner, {texts}));
  if (banner_->IsShown() != state.Faults.empty() && banner_label_ == label) return;
  banner_label_ = label;
  // Keys reach the window only while one of its visible parts has the focus.
  if (state.Faults.empty() && banner_clear_->HasFocus()) canvas_->SetFocusIgnoringChildren();
  banner_->Show(!state.Faults.empty());
  WrapBanner();
}

// Every fault is in sight, however many there are.
void ProjectorFrame::WrapBanner() {
  if (banner_->IsShown()) {
    banner_text_->SetLabelText(banner_label_);
    banner_text_->Wrap(GetClientSize().GetWidth() - banner_clear_->GetSize().GetWidth() -
                       FromDIP(4 * kBannerBorder));
  }
  Layout();
}

void ProjectorFrame::Redraw() {
  if (state_.Working[kHorizontal][kCorre0].empty()) return;  // not looked yet
  shown_ = PanelAsShown(source_, state_.Working, state_.Setup.PowerState,
                        marks_ && view_ == View::kPanel);
  if (uncorrected_) {
    const RegisterSet neutral = NeutralRegisters(state_.Setup.Panel);
    shown_.Image = PanelAsShown(source_, neutral, state_.Setup.PowerState, false).Image;
  }
  if (view_ == View::kPanel) {
    StampWord(shown_.Image);
    canvas_->Show(shown_.Image);
    return;
  }
  const wxSize screen = canvas_->GetClientSize() * canvas_->GetContentScaleFactor();
  on_wall_ = AsSeen(SizeOf(screen));
  StampWord(on_wall_);
  canvas_->Show(on_wall_);
}

Camera ProjectorFrame::CameraNow() const {
  return request_.Camera.value_or(AudienceCamera(wall_bar_->Chosen(), state_.Setup.Panel));
}

// Not larger than that.
RgbImage ProjectorFrame::AsSeen(PanelSize size) const {
  const Wall& wall = wall_bar_->Chosen();
  if (view_ == View::kCamera) {
    const Camera camera = FittedInto(CameraNow(), size);
    const bool blind = !CameraView::Of(wall, state_.Setup.Panel, camera);
    if (blind) wall_bar_->TellBlind();
    return PhotographOf(shown_.Image, wall, camera);
  }
  RgbImage picture = WallPicture(shown_.Image, wall, size);
  DrawStraightFrame(picture, wall, state_.Setup.Panel);
  return picture;
}

void ProjectorFrame::ChoosePattern(TestPattern pattern) {
  source_ = TestPicture(PanelSize{source_.Width, source_.Height}, pattern);
  Redraw();
}

void ProjectorFrame::ChooseView(View view) {
  view_ = view;
  wall_bar_->TellUncorrected(uncorrected_);
  wall_bar_->Show(view != View::kPanel);
  wall_bar_->GetParent()->Layout();
  Redraw();
}

// The key's release is told to the part that has the focus.
void ProjectorFrame::ShowUncorrected(bool uncorrected) {
  if (uncorrected == uncorrected_) return;
  if (uncorrected) canvas_->SetFocusIgnoringChildren();
  uncorrected_ = uncorrected;
  wall_bar_->TellUncorrected(uncorrected);
  Redraw();
}

// Keys reach the window only while one of its visible parts has the focus.
void ProjectorFrame::SwitchFullScreen(bool full) {
  canvas_->SetFocusIgnoringChildren();
  ShowFullScreen(full);
  ArrangePanes();
}

void ProjectorFrame::ArrangePanes() {
  const bool room = !IsFullScreen() && GetClientSize().GetWidth() >= FromDIP(kRoomForPanes);
  if (room == splitter_->IsSplit()) return;
  if (!room) {
    if (panes_->IsDescendant(FindFocus())) canvas_->SetFocusIgnoringChildren();
    splitter_->Unsplit();
    return;
  }
  panes_->Show();
  splitter_->SplitVertically(splitter_->GetWindow1(), panes_, -FromDIP(kPaneWidth));
}

void ProjectorFrame::OpenPicture() {
  wxFileDialog dialog(this, Label(texts_, ProjectorText::kOpenTitle), "", "",
                      Label(texts_, ProjectorText::kPngFiles), wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (Ask(dialog) != wxID_OK) return;
  const std::string name = dialog.GetPath().utf8_string();
  std::string bytes;
  NamedText reason;
  std::optional<RgbImage> picture;
  if (const std::error_code error = ReadWholeFile(PathOf(name), bytes)) {
    reason = {"SystemError", {SystemErrorText(error)}};
  } else {
    picture = ImageOfPng(bytes, reason);
  }
  if (!picture) {
    return ShowMessage(Wx(texts_.Fill(ProjectorText::kCannotOpen, {name, texts_.Say(reason)})),
                       GetTitle(), wxOK | wxICON_ERROR);
  }
  source_ = Resized(*picture, PanelSize{source_.Width, source_.Height});
  Redraw();
}

// A photograph is saved as the camera takes it, without the word on it.
RgbImage ProjectorFrame::PictureToSave() const {
  if (view_ == View::kCamera) {
    return PhotographOf(shown_.Image, wall_bar_->Chosen(), CameraNow());
  }
  return view_ == View::kWall ? on_wall_ : shown_.Image;
}

void ProjectorFrame::SavePicture() {
  wxFileDialog dialog(this, Label(texts_, ProjectorText::kSaveTitle), "", "projector.png",
                      Label(texts_, ProjectorText::kPngFiles), wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  const std::optional<std::string> png = PngOf(PictureToSave());
  if (!png || Ask(dialog) != wxID_OK) return;
  const std::string name = dialog.GetPath().utf8_string();
  const std::error_code error = ReplaceFileContents(PathOf(name), *png);
  if (!error) return;
  ShowMessage(Wx(texts_.Fill(ProjectorText::kCannotSave, {name, SystemErrorText(error)})),
              GetTitle(), wxOK | wxICON_ERROR);
}

// The system's own message box could not be ended from here.
void ProjectorFrame::ShowMessage(const wxString& text, const wxString& title, long style) {
  wxGenericMessageDialog dialog(this, text, title, style);
  Ask(dialog);
}

int ProjectorFrame::Ask(wxDialog& dialog) {
  asking_ = &dialog;
  const int answer = dialog.ShowModal();
  asking_ = nullptr;
  return answer;
}

}  // namespace warpline::sim
