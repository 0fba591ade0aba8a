#pragma once

#include <array>
#include <cstdint>
#include <variant>
#include <vector>

#include "core/correction.h"
#include "picture/deviation.h"

// The preview drawing as shapes. It always shows a model panel of 800 by 600 units, whatever the
// projector's panel is: the origin is the panel's top left corner, x grows to the right and y
// downwards. Bands and displacements are rounded to fifteenths of a unit.

namespace warpline {

inline constexpr double kPreviewWidth = 800;
inline constexpr double kPreviewHeight = 600;

struct PreviewPoint {
  double x = 0;
  double y = 0;

  bool operator==(const PreviewPoint&) const = default;
};

struct PreviewColour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const PreviewColour&) const = default;
};

inline constexpr PreviewColour kPreviewCyan{0, 255, 255};     // the frame
inline constexpr PreviewColour kPreviewGreen{0, 255, 0};      // guide lines
inline constexpr PreviewColour kPreviewBlue{0, 0, 255};       // aspect and position marks
inline constexpr PreviewColour kPreviewWhite{255, 255, 255};  // auxiliary lines
inline constexpr PreviewColour kPreviewYellow{255, 255, 0};   // bands
inline constexpr PreviewColour kPreviewRed{255, 0, 0};        // lines that the projector misses

inline constexpr std::uint8_t kPreviewAreaAlpha = 120;  // of 255: what shows of an area's colour

struct PreviewPolyline {
  PreviewColour colour;
  std::vector<PreviewPoint> points;
};
struct PreviewLine {
  PreviewColour colour;
  PreviewPoint from;
  PreviewPoint to;
};
struct PreviewBox {
  PreviewColour colour;
  PreviewPoint corner;  // top left
  double width = 0;
  double height = 0;
};
struct PreviewEllipse {
  PreviewColour colour;
  PreviewPoint centre;
  double radius_x = 0;
  double radius_y = 0;
};
// A box that is filled, without an outline, and lets the ground shine through.
struct PreviewArea {
  PreviewColour colour;
  PreviewPoint corner;  // top left
  double width = 0;
  double height = 0;
};
using PreviewShape =
    std::variant<PreviewPolyline, PreviewLine, PreviewBox, PreviewEllipse, PreviewArea>;
using PreviewDrawing = std::vector<PreviewShape>;

// The drawing for a correction, compared with the reference parameters (those last reset, loaded or
// sent): while an amplitude or a position differs from them only its mark is drawn, otherwise the
// four bands and the frame. Throws what sampling a curve throws.
PreviewDrawing Redraw(const CorrectionData& correction,
                      const std::array<AxisParameters, kAxisCount>& reference);

// An area over each range of lines that are off, for below the other shapes: across the whole model
// panel, as far along it as those lines lie along a panel of that size, and wide enough to be seen.
// Empty where the projector follows.
PreviewDrawing DrawDeviation(const Deviation& deviation, PanelSize panel);

// The shapes of upper painted over those of lower.
PreviewDrawing Over(PreviewDrawing lower, const PreviewDrawing& upper);

// The auxiliary lines that can be laid over any drawing.
PreviewDrawing DrawAuxLine();

// Where the model panel lies in a client area: the largest 4:3 rectangle, centred. x_pixels =
// offset_x + scale * x.
struct PreviewPlacement {
  double scale = 1;
  double offset_x = 0;
  double offset_y = 0;
};
PreviewPlacement PlacePreview(double client_width, double client_height);

}  // namespace warpline
