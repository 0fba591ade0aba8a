#include <optional>

#include "app/deviation_report.h"
#include "app/preview_geometry.h"
#include "app/preview_svg.h"
#include "cli/verbs.h"

// preview: the preview window's drawing as a picture.

namespace warpline {

int RunPreview(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  const CorrectionData& correction = session.engine.global.Correction;
  // Compared with itself nothing differs, so that the bands are drawn.
  PreviewDrawing drawing = Redraw(correction, correction.Axes);
  if (const std::optional<Deviation> deviation = FindDeviation(correction, *panel)) {
    drawing = Over(DrawDeviation(*deviation, *panel), drawing);
  }
  if (input.Has("--aux")) drawing = Over(drawing, DrawAuxLine());
  const bool written = session.Write(input.Path("-o"), [&] { return PreviewSvg(drawing); });
  return written ? kExitOk : kExitFailed;
}

}  // namespace warpline
