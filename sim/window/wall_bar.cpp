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
  shape_ = new wxChoice(this, wxID_ANY);
  shape_->SetName("wall_shape");
  for (int i = 0; i < kWallShapeCount; ++i) {
    shape_->Append(Label(texts, Behind(ProjectorText::kWallFlat, i)));
  }
  shape_->SetSelection(static_cast<int>(wall_.Shape));
  axis_ = new wxChoice(this, wxID_ANY);
  axis_->SetName("lens_axis");
  for (int i = 0; i < 3; ++i) axis_->Append(Label(texts, Behind(ProjectorText::kAxisTop, i)));
  axis_->SetSelection(static_cast<int>(wall_.Axis));
  distance_ =
      Slider("wall_distance", static_cast<int>(kMinDistance * kTenths),
             static_cast<int>(kMaxDistance * kTenths), static_cast<int>(wall_.Distance * kTenths));
  curvature_ = Slider("wall_curvature", -kHundredths, kHundredths, kFirstCurvature);
  distance_text_ = new wxStaticText(this, wxID_ANY, "20.0 m");
  curvature_text_ =
      new wxStaticText(this, wxID_ANY, Wx(texts.Fill(ProjectorText::kRadius, {"-100.0"})));
  for (wxChoice* choice : {shape_, axis_}) {
    choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { Follow(); });
  }
  auto* const grid = new wxFlexGridSizer(5, FromDIP(wxSize(8, 2)));
  grid->AddGrowableCol(3);
  const auto label = [&](ProjectorText key) {
    grid->Add(new wxStaticText(this, wxID_ANY, Label(texts, key)), wxSizerFlags().CentreVertical());
  };
  label(ProjectorText::kWallShape);
  grid->Add(shape_, wxSizerFlags().Expand());
  label(ProjectorText::kDistance);
  grid->Add(distance_, wxSizerFlags().Expand());
  grid->Add(distance_text_, wxSizerFlags().CentreVertical());
  label(ProjectorText::kLensAxis);
  grid->Add(axis_, wxSizerFlags().Expand());
  label(ProjectorText::kCurvature);
  grid->Add(curvature_, wxSizerFlags().Expand());
  grid->Add(curvature_text_, wxSizerFlags().CentreVertical());
  auto* const border = new wxBoxSizer(wxVERTICAL);
  border->Add(grid, wxSizerFlags().Expand().Border(wxALL, FromDIP(6)));
  SetSizer(border);
  Follow();
}

wxSlider* WallBar::Slider(const char* name, int least, int most, int value) {
  auto* const slider = new wxSlider(this, wxID_ANY, value, least, most);
  slider->SetMinSize(FromDIP(wxSize(160, -1)));
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
