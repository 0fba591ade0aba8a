#include "app/deviation_report.h"

#include <algorithm>
#include <cmath>

#include "core/catalogue.h"
#include "core/conversions.h"
#include "core/fault.h"
#include "core/tool_texts.h"

namespace warpline {
namespace {

std::string Tenths(double pixels) {
  return ShortestText(std::nearbyint(pixels * 10) / 10);
}

}  // namespace

std::optional<Deviation> FindDeviation(const CorrectionData& correction, PanelSize panel) {
  try {
    return DeviationOf(correction, panel);
  } catch (const Fault&) {
    return std::nullopt;
  }
}

std::string DeviationText(const LSSglobal& global, Axis axis, const AxisDeviation& deviation) {
  if (deviation.Ranges.empty()) return {};
  const ToolText key =
      axis == kHorizontal ? ToolText::kDeviationHorizontal : ToolText::kDeviationVertical;
  return FilledText(TextOf(global, key),
                    {std::to_string(deviation.Ranges.front().First),
                     std::to_string(deviation.Ranges.back().Last), Tenths(deviation.Pixels)});
}

std::string DeviationPixels(const Deviation& deviation) {
  return Tenths(std::max(deviation[kHorizontal].Pixels, deviation[kVertical].Pixels));
}

std::string DeviationText(const LSSglobal& global, const Deviation& deviation) {
  std::string text;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const std::string sentence = DeviationText(global, axis, deviation[axis]);
    if (!text.empty() && !sentence.empty()) text += ' ';
    text += sentence;
  }
  return text;
}

}  // namespace warpline
