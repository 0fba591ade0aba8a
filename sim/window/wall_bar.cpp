#include "sim/window/wall_bar.h"

#include <wx/sizer.h>

#include <cmath>
#include <iomanip>
#include <sstream>
#include <string>
#include <utility>

#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

constexpr int kTenths = 10;  // slider steps a metre
constexpr int kHundredths = 100;
constexpr int kLensAxisCount = 3;

// One digit behind the point.
std::string Tenths(double value) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << value;
  return text.str();
}

}  // namespace

WallBar::WallBar(wxWindow* parent, const ProjectorTexts& texts, const Wall& first,
                 std::function<void(const Wall&)> changed)
    : wxPanel(parent, wxID_ANY), texts_(texts), changed_(std::move(changed)), wall_(first) {
  shape_ = Choice("wall_shape", ProjectorText::kWallFlat, kWallShapeCount);
  shape_->SetSelection(static_cast<int>(wall_.Shape));
  axis_ = Choice("lens_axis", ProjectorText::kAxisTop, kLensAxisCount);
  axis_->SetSelection(static_cast<int>(wall_.Axis));
  distance_ = Slider("wall_distance", kMinDistance, kMaxDistance, wall_.Distance, kTenths);
  curvature_ = Slider("wall_curvature", -1, 1, wall_.Curvature, kHundredths);
  distance_text_ = ValueText("distance_text", texts.Fill(ProjectorText::kMetres, {"20.0"}));
  curvature_text_ = ValueText("curvature_text", texts.Fill(ProjectorText::kRadius, {"100.0"}));
  hint_ = new wxStaticText(this, wxID_ANY, "");
  hint_->SetName("wall_hint");
  auto* const border = new wxBoxSizer(wxVERTICAL);
  border->Add(LayControls(), wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
  border->Add(hint_, wxSizerFlags().Border(wxLEFT | wxBOTTOM, FromDIP(6)));
  SetSizer(border);
  Follow();
}

wxSizer* WallBar::LayControls() {
  auto* const grid = new wxFlexGridSizer(5, FromDIP(wxSize(8, 2)));
  grid->AddGrowableCol(3);
  const auto add = [this, grid](ProjectorText key, wxWindow* control) {
    grid->Add(new wxStaticText(this, wxID_ANY, Label(texts_, key)),
              wxSizerFlags().CentreVertical());
    grid->Add(control, wxSizerFlags().Expand());
  };
  add(ProjectorText::kWallShape, shape_);
  add(ProjectorText::kDistance, distance_);
  grid->Add(distance_text_, wxSizerFlags().CentreVertical());
  add(ProjectorText::kLensAxis, axis_);
  add(ProjectorText::kCurvature, curvature_);
  grid->Add(curvature_text_, wxSizerFlags().CentreVertical());
  return grid;
}

wxChoice* WallBar::Choice(const char* name, ProjectorText first, int count) {
  auto* const choice = new wxChoice(this, wxID_ANY);
  choice->SetName(name);
  for (int i = 0; i < count; ++i) choice->Append(Label(texts_, Behind(first, i)));
  choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { Follow(); });
  return choice;
}

// From least to most, with so many steps a unit.
wxSlider* WallBar::Slider(const char* name, double least, double most, double value, int steps) {
  const auto step = [steps](double number) {
    return static_cast<int>(std::lround(number * steps));
  };
  auto* const slider = new wxSlider(this, wxID_ANY, step(value), step(least), step(most));
  slider->SetMinSize(FromDIP(wxSize(80, -1)));
  slider->SetName(name);
  slider->Bind(wxEVT_SLIDER, [this](wxCommandEvent&) { Follow(); });
  return slider;
}

wxStaticText* WallBar::ValueText(const char* name, const std::string& widest) {
  auto* const text = new wxStaticText(this, wxID_ANY, Wx(widest));
  text->SetName(name);
  text->SetMinSize(text->GetBestSize());
  return text;
}

void WallBar::TellUncorrected(bool uncorrected) {
  const double curvature = wall_.Shape == WallShape::kFlat ? 0 : wall_.Curvature;
  const ProjectorText word = curvature > 0   ? ProjectorText::kConvex
                             : curvature < 0 ? ProjectorText::kConcave
                                             : ProjectorText::kFlat;
  hint_->SetLabel(uncorrected ? Label(texts_, ProjectorText::kUncorrected)
                              : Wx(texts_.Fill(ProjectorText::kUncorrectedHint, {texts_[word]})));
}

void WallBar::TellBlind() {
  hint_->SetLabel(Label(texts_, ProjectorText::kCameraBlind));
}

// A corner by the angle between its walls, seen from the projector.
std::string WallBar::CurvatureText() const {
  const double curvature = wall_.Curvature;
  const bool corner = wall_.Shape == WallShape::kCorner || wall_.Shape == WallShape::kCeiling;
  if (wall_.Shape == WallShape::kFlat || curvature == 0) return {};
  return corner ? texts_.Fill(ProjectorText::kAngle, {Tenths(180 + 90 * curvature)})
                : texts_.Fill(ProjectorText::kRadius, {Tenths(1 / std::abs(curvature))});
}

void WallBar::Follow() {
  wall_.Shape = static_cast<WallShape>(shape_->GetSelection());
  wall_.Axis = static_cast<LensAxis>(axis_->GetSelection());
  wall_.Distance = static_cast<double>(distance_->GetValue()) / kTenths;
  wall_.Curvature = static_cast<double>(curvature_->GetValue()) / kHundredths;
  distance_text_->SetLabel(Wx(texts_.Fill(ProjectorText::kMetres, {Tenths(wall_.Distance)})));
  curvature_text_->SetLabel(Wx(CurvatureText()));
  TellUncorrected(false);
  curvature_->Enable(wall_.Shape != WallShape::kFlat);
  changed_(wall_);
}

}  // namespace warpline::sim
