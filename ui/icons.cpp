#include "ui/icons.h"

#include <wx/icon.h>

#include <array>
#include <string_view>

namespace warpline {
namespace embedded {

std::string_view Embedded_distortion_h();
std::string_view Embedded_distortion_v();
std::string_view Embedded_optical_h();
std::string_view Embedded_optical_v();
std::string_view Embedded_linearity_h();
std::string_view Embedded_linearity_v();
std::string_view Embedded_linearity_h_symmetric();
std::string_view Embedded_linearity_v_symmetric();
std::string_view Embedded_amplitude_h();
std::string_view Embedded_amplitude_v();
std::string_view Embedded_position_h();
std::string_view Embedded_position_v();
std::string_view Embedded_warpline();

}  // namespace embedded

namespace {

constexpr int kIconSize = 32;

using SvgText = std::string_view (*)();

struct IconRow {
  ParameterField field;
  bool symmetric;
  std::array<SvgText, kAxisCount> pictures;
};

constexpr std::array<IconRow, 6> kIconRows{{
    {ParameterField::kLinearity,
     true,
     {embedded::Embedded_linearity_h_symmetric, embedded::Embedded_linearity_v_symmetric}},
    {ParameterField::kLinearity,
     false,
     {embedded::Embedded_linearity_h, embedded::Embedded_linearity_v}},
    {ParameterField::kDistortion,
     false,
     {embedded::Embedded_distortion_h, embedded::Embedded_distortion_v}},
    {ParameterField::kOptical, false, {embedded::Embedded_optical_h, embedded::Embedded_optical_v}},
    {ParameterField::kAmplitude,
     false,
     {embedded::Embedded_amplitude_h, embedded::Embedded_amplitude_v}},
    {ParameterField::kPosition,
     false,
     {embedded::Embedded_position_h, embedded::Embedded_position_v}},
}};

wxBitmapBundle BundleOf(std::string_view svg, int size) {
  return wxBitmapBundle::FromSVG(reinterpret_cast<const wxByte*>(svg.data()), svg.size(),
                                 wxSize(size, size));
}

}  // namespace

wxBitmapBundle IconOf(SliderTarget target, bool symmetric) {
  const bool two_pictures = target.field == ParameterField::kLinearity;
  for (const IconRow& row : kIconRows) {
    if (row.field == target.field && row.symmetric == (two_pictures && symmetric)) {
      return BundleOf(row.pictures[target.axis](), kIconSize);
    }
  }
  return {};
}

wxBitmapBundle EmptyIcon() {
  constexpr int kScaled = kIconSize * 3 / 2;
  return wxBitmapBundle::FromBitmaps(wxBitmap(kIconSize, kIconSize), wxBitmap(kScaled, kScaled));
}

wxBitmapBundle ProgramPicture(int size) {
  return BundleOf(embedded::Embedded_warpline(), size);
}

wxIconBundle ProgramIcons() {
  wxIconBundle icons;
  for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
    wxIcon icon;
    icon.CopyFromBitmap(ProgramPicture(size).GetBitmap(wxSize(size, size)));
    icons.AddIcon(icon);
  }
  return icons;
}

}  // namespace warpline
