#include "ui/LSSwedit.h"

#include <algorithm>
#include <utility>

#include "app/save_name.h"
#include "model/parameter_groups.h"
#include "ui/LSSshape.h"
#include "ui/layout.h"
#include "ui/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// The graph at first, in DIP: the scale is then about 1.5.
constexpr int kFirstGraphWidth = 826;
constexpr int kFirstGraphHeight = 300;
constexpr const char* kWidestCoordinate = "0.0000";

wxString TitleOf(const LSSglobal& global, Axis axis) {
  const int group = AxisOfGroup(kGroupVertical) == axis ? kGroupVertical : kGroupHorizontal;
  return CaptionOf(global, kMsgEditCurve) + " - " +
         CaptionOf(global, kGroups[static_cast<std::size_t>(group)].caption);
}

// Takes no part in tab order: it only shows.
wxTextCtrl* CreateFigure(wxWindow* parent, const wxString& name, const wxString& caption) {
  auto* figure = new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                wxTE_READONLY | wxTE_RIGHT, wxDefaultValidator, name);
  figure->SetMinSize(
      wxSize(figure->GetSizeFromTextSize(figure->GetTextExtent(kWidestCoordinate).x).x, -1));
  figure->DisableFocusFromKeyboard();
  SetAccessibleName(*figure, caption);
  return figure;
}

}  // namespace

LSSwedit::LSSwedit(wxWindow* owner, Axis axis, EditorParts parts)
    : wxDialog(owner, wxID_ANY, TitleOf(parts.engine.global, axis), wxDefaultPosition,
               wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX,
               "LSSwedit"),
      parts_(std::move(parts)),
      editor_(parts_.engine.global, axis, parts_.engine.files, parts_.engine.messages),
      graph_(new WaveGraph(this, editor_, GetTitle(), [this] { ShowPoint(); })) {
  auto* upper = new wxBoxSizer(wxHORIZONTAL);
  upper->Add(graph_, wxSizerFlags(1).Expand());
  upper->Add(CreateColumn(), wxSizerFlags().Expand().Border(wxLEFT, WideGap(this)));
  wxSizer* read_out = CreateReadOut();
  buttons_ = CreateDialogButtons(ControlMaker(this, parts_.engine.global), true);
  auto* all = new wxBoxSizer(wxVERTICAL);
  all->Add(upper, wxSizerFlags(1).Expand().Border(wxALL, WideGap(this)));
  all->Add(LayDialogButtons(this, buttons_, read_out),
           wxSizerFlags().Expand().Border(wxALL & ~wxTOP, WideGap(this)));
  SetSizer(all);
  BindControls();
  SetSizes();
  ShowCurve();
  graph_->SetFocus();
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

wxSizer* LSSwedit::CreateReadOut() {
  posx_val_ = CreateFigure(this, "posx_val", "X");
  posy_val_ = CreateFigure(this, "posy_val", "Y");
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  line->Add(new wxStaticText(this, wxID_ANY, "X"), AtCentre());
  line->Add(posx_val_, AtCentre().Border(wxLEFT, Gap(this)));
  line->Add(new wxStaticText(this, wxID_ANY, "Y"), AtCentre().Border(wxLEFT, WideGap(this)));
  line->Add(posy_val_, AtCentre().Border(wxLEFT, Gap(this)));
  return line;
}

void LSSwedit::BindControls() {
  const auto press = [this](wxButton* button, auto work) {
    button->Bind(wxEVT_BUTTON, [this, work](wxCommandEvent&) {
      work();
      ShowCurve();
    });
  };
  press(reverse_, [this] { editor_.Reverse(); });
  press(regularize_, [this] { editor_.Normalize(); });
  press(initselect_, [this] { Seed(); });
  press(importbutton_, [this] { Import(); });
  press(exportbutton_, [this] { Export(); });
  press(buttons_.apply, [this] { Apply(); });
  buttons_.ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
  point_num_->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent& event) {
    editor_.SetPointCount(event.GetPosition());
    ShowCurve();
  });
  line_interp_->Bind(wxEVT_CHOICE, [this](wxCommandEvent& event) {
    editor_.SetInterpolation(event.GetSelection());
    ShowCurve();
  });
  fixedpos_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    editor_.SetFixed(event.IsChecked());
    ShowCurve();
  });
  symmetry_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
    editor_.SetSymmetry(event.IsChecked());
    ShowCurve();
  });
}

void LSSwedit::SetSizes() {
  SetMinClientSize(GetSizer()->ComputeFittingClientSize(this));
  wxSize first = GetMinClientSize();
  const wxSize extra = FromDIP(wxSize(kFirstGraphWidth, kFirstGraphHeight)) - graph_->GetMinSize();
  first.x += std::max(extra.x, 0);
  first.y = std::max(first.y, FromDIP(kFirstGraphHeight));
  SetClientSize(first);
  const wxRect screen =
      UsableScreen(GetParent() != nullptr ? GetParent()->GetPosition() : wxPoint());
  SetSize(wxSize(std::min(GetSize().x, screen.width), std::min(GetSize().y, screen.height)));
  CentreOnParent();
  SetPosition(HeldInside(screen, GetPosition(), GetSize()));
}

// What follows the pointer: figures and Apply. The graph paints itself.
void LSSwedit::ShowPoint() {
  const PointReadOut read_out = editor_.ReadOut();
  posx_val_->ChangeValue(WxText(read_out.x));
  posy_val_->ChangeValue(WxText(read_out.y));
  EnableApply(buttons_, editor_.Changed());
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
  parts_.applied();
}

// Enter in the box of the point count presses OK before the box tells of its new figures.
void LSSwedit::TakePointCount() {
  const int count = point_num_->GetValue();
  if (count != editor_.Curve().CorrePointNum) editor_.SetPointCount(count);
}

void LSSwedit::Confirm() {
  TakePointCount();
  if (editor_.Changed()) Apply();
  EndDialog(wxID_OK);
}

}  // namespace warpline
