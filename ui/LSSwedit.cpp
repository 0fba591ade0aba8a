#include "ui/LSSwedit.h"

#include <wx/confbase.h>
#include <wx/log.h>

#include <algorithm>
#include <string>
#include <utility>

#include "app/save_name.h"
#include "core/tool_texts.h"
#include "model/parameter_groups.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "toolkit/window_place.h"
#include "ui/LSSshape.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// The graph at first, in DIP: the scale is then about 1.5.
constexpr int kFirstGraphWidth = 826;
constexpr int kFirstGraphHeight = 300;
constexpr const char* kLiveKey = "Editor/Live";

wxString TitleOf(const LSSglobal& global, Axis axis) {
  const int group = AxisOfGroup(kGroupVertical) == axis ? kGroupVertical : kGroupHorizontal;
  return CaptionOf(global, kMsgEditCurve) + " - " +
         CaptionOf(global, kGroups[static_cast<std::size_t>(group)].caption);
}

// Where the line of the curve that the points describe leaves the edge of the picture: there it is
// 1.0, or, turned upside down, lowest.
WaveWords WordsOf(const LSSglobal& global, Axis axis) {
  const bool upright = axis == kHorizontal;
  const bool upside_down = global.Correction.Axes[axis].Distortion < 0;
  return {CaptionOf(global, upright ? kMsgTop : kMsgLeft),
          CaptionOf(global, upright ? kMsgBottom : kMsgRight),
          CaptionOf(global, upside_down ? ToolText::kEdgeDrawnIn : ToolText::kEdgeStays),
          CaptionOf(global, upside_down ? ToolText::kEdgeStaysAtLowest : ToolText::kEdgeDrawnIn)};
}

bool LiveRemembered() {
  const wxConfigBase* config = wxConfigBase::Get(false);
  return config != nullptr && config->ReadBool(kLiveKey, false);
}

wxButton* StepButton(wxWindow* parent, const char* name, const wxString& caption,
                     const wxString& keys) {
  auto* button = new wxButton(parent, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, name);
  button->SetToolTip(keys);
  SetAccessibleName(*button, caption, keys);
  return button;
}

void RememberLive(bool live) {
  wxConfigBase* config = wxConfigBase::Get(false);
  if (config == nullptr) return;
  const wxLogNull silent;
  config->Write(kLiveKey, live);
  config->Flush();
}

}  // namespace

LSSwedit::LSSwedit(wxTopLevelWindow* owner, Axis axis, EditorParts parts)
    : wxDialog(owner, wxID_ANY, TitleOf(parts.engine.global, axis), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX,
               "LSSwedit"),
      parts_(std::move(parts)),
      owner_(owner),
      editor_(parts_.engine.global, axis, parts_.engine.files, parts_.engine.messages),
      graph_(CreateGraph()),
      note_(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END, "note")) {
  auto* left = new wxBoxSizer(wxVERTICAL);
  left->Add(graph_, wxSizerFlags(1).Expand());
  left->Add(note_, wxSizerFlags().Expand().Border(wxTOP, Gap(this)));
  auto* upper = new wxBoxSizer(wxHORIZONTAL);
  upper->Add(left, wxSizerFlags(1).Expand());
  upper->Add(CreateColumn(), wxSizerFlags().Expand().Border(wxLEFT, WideGap(this)));
  wxSizer* foot = CreateFoot();
  buttons_ = CreateDialogButtons(ControlMaker(this, parts_.engine.global), true);
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(upper, wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  all->Add(LayDialogButtons(this, buttons_, foot),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  SetSizer(all);
  BindButtons();
  BindControls();
  BindWindow();
  BindSteps();
  SetSizes();
  ShowCurve();
  graph_->SetFocus();
  parts_.busy.Attach(this);
}

// The controls tell of their end and use what the window holds, so they go first.
LSSwedit::~LSSwedit() {
  leaving_ = true;
  parts_.busy.Attach(owner_);
  DestroyChildren();
}

WaveGraph* LSSwedit::CreateGraph() {
  return new WaveGraph(
      this, editor_, WordsOf(parts_.engine.global, editor_.EditedAxis()), GetTitle(),
      {[this] { ShowPoint(); }, [this] { Settled(); }, [this] { coordinates_->BeginTyping(); }});
}

wxSizer* LSSwedit::CreateColumn() {
  const ControlMaker make(this, parts_.engine.global);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags field = wxSizerFlags().Expand().Border(wxTOP, Gap(this) / 2);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxTOP, WideGap(this));
  column->Add(make.Caption(kMsgPointCount), wxSizerFlags().Expand());
  point_num_ = new wxSpinCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS,
                              kMinCurvePoints, kMaxCurvePoints, kMinCurvePoints, "point_num");
  SetAccessibleName(*point_num_, make.Text(kMsgPointCount));
  column->Add(point_num_, field);
  column->Add(make.Caption(kMsgInterpolation), below);
  line_interp_ = make.Choice("line_interp", kMsgInterpolation);
  for (const InterpolationEntry& entry : kInterpolationEntries) {
    line_interp_->Append(make.Text(entry.text));
  }
  column->Add(line_interp_, field);
  fixedpos_ = make.CheckBox("fixedpos", kMsgFixed);
  column->Add(fixedpos_, below);
  symmetry_ = make.CheckBox("symmetry", kMsgSymmetry);
  column->Add(symmetry_, field);
  initselect_ = make.Button("initselect", kMsgInitialize);
  reverse_ = make.Button("reverse", kMsgReverse);
  regularize_ = make.Button("regularize", kMsgNormalize);
  importbutton_ = make.Button("importbutton", kMsgLoad);
  exportbutton_ = make.Button("exportbutton", kMsgSave);
  auto* works = new wxGridSizer(2, wxSize(Gap(this), Gap(this)));
  for (wxButton* button : {reverse_, regularize_, importbutton_, exportbutton_}) {
    works->Add(button, wxSizerFlags().Expand());
  }
  column->AddStretchSpacer();
  column->Add(initselect_, below);
  column->Add(works, wxSizerFlags().Expand().Border(wxTOP, Gap(this)));
  return column;
}

// Without Real Time nothing is sent but by the main window.
wxSizer* LSSwedit::CreateFoot() {
  const LSSglobal& global = parts_.engine.global;
  coordinates_ = std::make_unique<CoordinateBoxes>(
      this, global, editor_,
      CoordinateBoxes::Handlers{[this] { Edited(); },
                                [this](const wxString& text) { note_->SetLabel(text); }});
  live_ = new wxCheckBox(this, wxID_ANY, CaptionOf(global, ToolText::kLive), wxDefaultPosition,
                         wxDefaultSize, 0, wxDefaultValidator, "live");
  live_->SetToolTip(CaptionOf(global, ToolText::kLiveHint));
  SetAccessibleName(*live_, live_->GetLabelText(), live_->GetToolTipText());
  live_->Enable(global.Settings.AutoApply == 1);
  live_->SetValue(live_->IsThisEnabled() && LiveRemembered());
  undo_ = StepButton(this, "undobutton", CaptionOf(global, ToolText::kUndo), "Ctrl+Z");
  redo_ = StepButton(this, "redobutton", CaptionOf(global, ToolText::kRedo), "Ctrl+Y");
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(coordinates_->Line(), AtCentre());
  line->Add(live_, AtCentre().Border(wxLEFT, WideGap(this)));
  line->Add(undo_, AtCentre().Border(wxLEFT, WideGap(this)));
  line->Add(redo_, AtCentre().Border(wxLEFT, Gap(this)));
  return line;
}

void LSSwedit::BindButtons() {
  const auto press = [this](wxButton* button, auto work) {
    button->Bind(wxEVT_BUTTON, [this, work](wxCommandEvent&) {
      work();
      Edited();
    });
  };
  press(reverse_, [this] { editor_.Reverse(); });
  press(regularize_, [this] { editor_.Normalize(); });
  press(initselect_, [this] { Seed(); });
  press(importbutton_, [this] { Import(); });
  press(exportbutton_, [this] { Export(); });
  press(buttons_.apply, [this] {
    TakeTyped();
    Apply();
  });
  buttons_.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
  buttons_.cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Cancel(); });
}

void LSSwedit::BindControls() {
  point_num_->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent& event) {
    editor_.SetPointCount(event.GetPosition());
    Edited();
  });
  line_interp_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    editor_.SetInterpolation(event.GetSelection());
    Edited();
  });
  fixedpos_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    editor_.SetFixed(event.IsChecked());
    Edited();
  });
  symmetry_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    editor_.SetSymmetry(event.IsChecked());
    Edited();
  });
  live_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    RememberLive(event.IsChecked());
    Settled();
  });
}

// Enter in the box of the point count means its number, and would press OK before the box tells it.
void LSSwedit::BindWindow() {
  point_num_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key != WXK_RETURN && key != WXK_NUMPAD_ENTER) {
      event.Skip();
      return;
    }
    TakeTyped();
    Edited();
  });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
    const bool must_wait = event.CanVeto() && parts_.busy.IsBusy();
    must_wait ? event.Veto() : event.Skip();
  });
}

// While something is typed, the keys are those of its box.
void LSSwedit::BindSteps() {
  undo_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { GoTo(&CurveEditor::Undo); });
  redo_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { GoTo(&CurveEditor::Redo); });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const int modifiers = event.GetModifiers();
    const bool undo = key == 'Z' && modifiers == wxMOD_CONTROL;
    const bool redo = (key == 'Y' && modifiers == wxMOD_CONTROL) ||
                      (key == 'Z' && modifiers == (wxMOD_CONTROL | wxMOD_SHIFT));
    if ((!undo && !redo) || IsTyping()) {
      event.Skip();
      return;
    }
    GoTo(undo ? &CurveEditor::Undo : &CurveEditor::Redo);
  });
}

void LSSwedit::SetSizes() {
  CentreOverParent(*this);  // that screen's scale counts for the sizes
  SetMinClientSize(GetSizer()->ComputeFittingClientSize(this));
  wxSize first = GetMinClientSize();
  const wxSize extra = FromDIP(wxSize(kFirstGraphWidth, kFirstGraphHeight)) - graph_->GetMinSize();
  first.x += std::max(extra.x, 0);
  first.y = std::max(first.y, FromDIP(kFirstGraphHeight));
  SetClientSize(first);
  const wxRect screen =
      UsableScreen(GetParent() != nullptr ? GetParent()->GetPosition() : wxPoint());
  SetSize(wxSize(std::min(GetSize().x, screen.width), std::min(GetSize().y, screen.height)));
  CentreOverParent(*this);
  KeepPlace(*this);
}

// What follows the pointer: figures, Apply and what is wrong with the curve. The graph paints
// itself.
void LSSwedit::ShowPoint() {
  coordinates_->Show();
  const bool faulty = editor_.Sampled().faulty;
  note_->SetLabel(faulty ? CaptionOf(parts_.engine.global, ToolText::kCurveFaulty) : wxString());
  EnableApply(buttons_, editor_.Changed());
  ShowSteps();
}

// A button that cannot be used any more leaves the focus to the graph.
void LSSwedit::ShowSteps() {
  const auto enable = [this](wxButton* button, bool enabled) {
    if (!enabled && button->HasFocus()) graph_->SetFocus();
    button->Enable(enabled);
  };
  enable(undo_, editor_.CanUndo());
  enable(redo_, editor_.CanRedo());
}

// Setting controls like this runs none of their handlers.
void LSSwedit::ShowCurve() {
  const CurveDefinition& curve = editor_.Curve();
  point_num_->SetRange(editor_.FewestPoints(), kMaxCurvePoints);
  point_num_->SetValue(curve.CorrePointNum);
  line_interp_->SetSelection(editor_.InterpolationIndex());
  fixedpos_->SetValue(curve.CorreFixed != 0);
  symmetry_->SetValue(curve.CorreSymmetry != 0);
  ShowPoint();
  graph_->Refresh(false);
}

void LSSwedit::Edited() {
  ShowCurve();
  Settled();
}

bool LSSwedit::IsLive() const {
  return live_->IsThisEnabled() && live_->GetValue();
}

// A change is complete: nothing is held or typed any more.
void LSSwedit::Settled() {
  if (leaving_) return;
  ShowSteps();
  if (!IsLive() || !editor_.ApplyForNow(parts_.engine.global)) return;
  parts_.applied(false);
  ShowPoint();
}

void LSSwedit::GoTo(bool (CurveEditor::*step)()) {
  TakeTyped();
  (editor_.*step)();
  Edited();
}

bool LSSwedit::IsTyping() const {
  return coordinates_->IsTyping() ||
         point_num_->GetTextValue() != std::to_string(editor_.Curve().CorrePointNum);
}

void LSSwedit::Seed() {
  LSSshape dialog(this, parts_.engine.global);
  dialog.ShowModal();
  editor_.Seed(dialog.Shape());
}

void LSSwedit::Import() {
  const std::filesystem::path path =
      parts_.choosers.open(this, DialogFolder(parts_.engine.global, parts_.application_data));
  if (!path.empty()) editor_.Import(path);
}

void LSSwedit::Export() {
  const std::filesystem::path folder = DialogFolder(parts_.engine.global, parts_.application_data);
  const std::filesystem::path path = ChooseSaveName(
      [&](const std::filesystem::path& offered) {
        return parts_.choosers.save(this, folder, offered);
      },
      {}, kTypeWls);
  if (!path.empty()) editor_.Export(path);
}

void LSSwedit::Apply() {
  editor_.Apply(parts_.engine.global);
  parts_.applied(true);
}

// What boxes hold that have not told it yet.
void LSSwedit::TakeTyped() {
  coordinates_->Take();
  int count = 0;
  if (!point_num_->GetTextValue().ToInt(&count)) return;
  if (count != editor_.Curve().CorrePointNum) editor_.SetPointCount(count);
}

void LSSwedit::Confirm() {
  if (leaving_) return;
  TakeTyped();
  leaving_ = true;
  if (editor_.Changed()) Apply();
  EndDialog(wxID_OK);
}

void LSSwedit::Cancel() {
  if (leaving_) return;
  leaving_ = true;
  if (editor_.TakeBack(parts_.engine.global)) parts_.applied(true);
  EndDialog(wxID_CANCEL);
}

}  // namespace warpline
