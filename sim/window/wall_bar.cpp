#include "sim/window/wall_bar.h"

#include <wx/sizer.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <utility>

#include "sim/window/wx_texts.h"

namespace warpline::sim {
namespace {

constexpr int kTenths = 10;  // slider steps a metre
constexpr int kHundredths = 100;
constexpr int kFirstCurvature = 20;
constexpr int kLensAxisCount = 3;

// One digit behind the point.
std::string Tenths(double value) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << value;
  return text.str();
}

}  // namespace

WallBar::WallBar(wxWindow* parent, const ProjectorTexts& texts,
                 std::function<void(const Wall&)> changed)
    : wxPanel(parent, wxID_ANY), texts_(texts), changed_(std::move(changed)) {
  shape_ = Choice("wall_shape", ProjectorText::kWallFlat, kWallShapeCount);
  shape_->SetSelection(static_cast<int>(wall_.Shape));
  axis_ = Choice("lens_axis", ProjectorText::kAxisTop, kLensAxisCount);
  axis_->SetSelection(static_cast<int>(wall_.Axis));
  distance_ =
      Slider("wall_distance", static_cast<int>(kMinDistance * kTenths),
             static_cast<int>(kMaxDistance * kTenths), static_cast<int>(wall_.Distance * kTenths));
  curvature_ = Slider("wall_curvature", -kHundredths, kHundredths, kFirstCurvature);
  // As wide as they will ever be.
  distance_text_ =
      new wxStaticText(this, wxID_ANY, Wx(texts.Fill(ProjectorText::kMetres, {"20.0"})));
  curvature_text_ =
      new wxStaticText(this, wxID_ANY, Wx(texts.Fill(ProjectorText::kRadius, {"-100.0"})));
  for (wxStaticText* text : {distance_text_, curvature_text_})
    text->SetMinSize(text->GetBestSize());
  auto* const border = new wxBoxSizer(wxVERTICAL);
  border->Add(LayControls(), wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
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

wxSlider* WallBar::Slider(const char* name, int least, int most, int value) {
  auto* const slider = new wxSlider(this, wxID_ANY, value, least, most);
  slider->SetMinSize(FromDIP(wxSize(80, -1)));
  slider->SetName(name);
  slider->Bind(wxEVT_SLIDER, [this](wxCommandEvent&) { Follow(); });
  return slider;
}

void WallBar::Follow() {
  wall_.Shape = static_cast<WallShape>(shape_->GetSelection());
  wall_.Axis = static_cast<LensAxis>(axis_->GetSelection());
  wall_.Distance = static_cast<double>(distance_->GetValue()) / kTenths;
  wall_.Curvature = static_cast<double>(curvature_->GetValue()) / kHundredths;
  distance_text_->SetLabel(Wx(texts_.Fill(ProjectorText::kMetres, {Tenths(wall_.Distance)})));
  const bool flat = wall_.Shape == WallShape::kFlat || wall_.Curvature == 0;
  const bool corner = wall_.Shape == WallShape::kCorner || wall_.Shape == WallShape::kCeiling;
  std::string curvature;
  if (!flat && corner) {
    curvature = texts_.Fill(ProjectorText::kAngle, {Tenths(180 + 90 * wall_.Curvature)});
  } else if (!flat) {
    curvature = texts_.Fill(ProjectorText::kRadius, {Tenths(1 / wall_.Curvature)});
  }
  curvature_text_->SetLabel(Wx(curvature));
  curvature_->Enable(wall_.Shape != WallShape::kFlat);
  changed_(wall_);
}

}  // namespace warpline::sim
