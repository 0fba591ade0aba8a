#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/message_numbers.h"

#include "core/table_order.h"

// The records of one complete correction, and the values they start from. Axis 0 is horizontal (one
// value per panel row), axis 1 vertical (one value per panel column).

namespace warpline {

enum Axis : std::size_t { kHorizontal = 0, kVertical = 1 };
inline constexpr std::size_t kAxisCount = 2;

// What the sliders edit, one record an axis. The ranges stand in core/parameters.h.
struct AxisParameters {
  std::int16_t Distortion = 0;  // percent; the sign chooses the curve's direction
  std::int16_t Optical = -32;   // optical centre; other bounds when the axis is projected reversed
  std::int16_t Linearity = 0;
  std::int16_t Amplitude = 0;  // scale 1 + Amplitude / 256
  std::int32_t Position = 0;
  std::int16_t Stadium = 0;  // 1: the linearity correction is symmetric

  bool operator==(const AxisParameters&) const = default;
};

struct CurvePoint {
  double X = 0.0;  // 0..1
  double Y = 0.0;  // 0..1

  bool operator==(const CurvePoint&) const = default;
};

inline constexpr int kMinCurvePoints = 2;
inline constexpr int kMaxCurvePoints = 16;

// CorreInterp: how the points become a curve. Codes 2 to 4 are also the degree of the polynomial.
enum Interpolation : std::int16_t {
  kStraightLine = 1,
  kQuadratic = 2,
  kCubic = 3,
  kQuartic = 4,
  kBSpline = 5,
};

// A correction curve: control points with ascending X from 0 to 1.
struct CurveDefinition {
  std::int16_t CorreFixed = 1;     // the editor's "X Position Fixed", 0 or 1
  std::int16_t CorreSymmetry = 0;  // the editor's "Symmetry", 0 or 1
  std::int16_t CorrePointNum = 2;  // points in use, 2..16
  std::int16_t CorreInterp = kStraightLine;
  std::array<CurvePoint, kMaxCurvePoints> CorreDataPts{};

  bool operator==(const CurveDefinition&) const = default;
};

// One complete correction: what is edited, saved, and turned into registers.
struct CorrectionData {
  std::int16_t ScreenType = 0;  // the number of a row of kScreenTypes
  std::array<std::int16_t, kAxisCount>
      Projection{};  // 1: projecting right (H), from the ceiling or downward (V)
  std::array<AxisParameters, kAxisCount> Axes{};
  std::array<CurveDefinition, kAxisCount> Curves{};

  bool operator==(const CorrectionData&) const = default;
};

// The shapes that a curve can start from.
enum CurveShape : int { kArch = 0, kDiagonalLine = 1, kTriangle = 2 };

enum ScreenType : std::int16_t {
  kCylindricalScreen = 0,
  kVerticalBowScreen = 1,
  kSphericalScreen = 2,
  kCornerWallScreen = 3,
  kCornerCeilingScreen = 4,
  kOtherScreens = 5,  // the one type whose curves are edited by hand
};

struct ScreenTypeRow {
  ScreenType type;
  int caption;                                // message number
  std::array<CurveShape, kAxisCount> shapes;  // that the curves start from
};

// Every screen type, at the index of its number.
inline constexpr std::array kScreenTypes{
    ScreenTypeRow{kCylindricalScreen, kMsgCylindricalScreen, {kDiagonalLine, kArch}},
    ScreenTypeRow{kVerticalBowScreen, kMsgCylindricalScreenVerticalBow, {kArch, kDiagonalLine}},
    ScreenTypeRow{kSphericalScreen, kMsgSphericalScreen, {kArch, kArch}},
    ScreenTypeRow{kCornerWallScreen, kMsgCornerWallScreen, {kDiagonalLine, kTriangle}},
    ScreenTypeRow{kCornerCeilingScreen, kMsgCornerCeilingScreen, {kTriangle, kDiagonalLine}},
    ScreenTypeRow{kOtherScreens, kMsgOtherScreens, {kDiagonalLine, kDiagonalLine}},
};
static_assert(RowsStandInOrder(kScreenTypes, &ScreenTypeRow::type));
inline constexpr int kScreenTypeCount = kScreenTypes.size();

// The row of a type that exists. Throws std::out_of_range for another.
constexpr const ScreenTypeRow& RowOfScreenType(std::int16_t type) {
  return kScreenTypes.at(static_cast<std::size_t>(type));
}

// The reset value of Optical: -32, or +32 when the axis is projected reversed (flag not 0).
std::int16_t ResetOptical(std::int16_t projection_flag);

// The reset values of an axis.
AxisParameters ResetAxisParameters(std::int16_t projection_flag);

// Seeds a curve with one of the three shapes. Another shape number clears the points and keeps
// count and type.
void ResetCurveDefinition(CurveDefinition& curve, int shape);

// Puts both axes to their reset values and both curves to the shapes of the correction's ScreenType
// (0..5).
void ResetToScreenType(CorrectionData& correction);

}  // namespace warpline
