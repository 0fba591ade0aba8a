#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/verbs.h"
#include "core/conversions.h"
#include "files/formats.h"
#include "model/profile.h"
#include "model/registers.h"

// registers, profile, curve: what a correction means in numbers.

namespace warpline {

namespace {

constexpr int kDefaultSamples = 501;

int PrintNumbers(std::span<const double> numbers, Session& session) {
  for (const double number : numbers) session.out << ShortestText(number) << '\n';
  return kExitOk;
}

int PrintRegisters(FileData& data, Session& session) {
  std::vector<std::string> lines;
  if (!MakeFormatModule(kTypeWlr, data, session.engine.messages)->Write(lines)) return kExitFailed;
  for (const std::string& line : lines) session.out << line << '\n';
  return kExitOk;
}

}  // namespace

int RunRegisters(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  const CorrectionData& correction = session.engine.global.Correction;
  FileData data;
  data.Registers = BuildRegisters(correction, *panel);
  TellDeviation(session, input.Path("FILE"), correction, *panel);
  if (!input.Has("-o")) return PrintRegisters(data, session);
  return session.Save(input.Path("-o"), kTypeWlr, data) ? kExitOk : kExitFailed;
}

int RunProfile(const VerbInput& input, Session& session) {
  const std::optional<Axis> axis = input.AxisChoice();
  if (!axis) return kExitUsage;
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  const AxisCorrection correction = CorrectionOf(session.engine.global.Correction, *axis);
  const std::vector<double> samples = SampleCurve(correction.Curve, LineCount(*panel, *axis));
  const int length = LineLength(*panel, *axis);
  if (input.Has("--preview")) {
    return PrintNumbers(PreviewProfile(correction.Parameters, samples, length), session);
  }
  return PrintNumbers(
      LineSizeProfile(correction.Parameters, correction.Projection, samples, length), session);
}

int RunCurve(const VerbInput& input, Session& session) {
  const bool is_shape = session.KindOf(input.Path("FILE")) == kTypeWls;
  if (is_shape && input.Has("--axis")) return session.UsageError(CliText::kShapeHasNoAxis);
  const std::optional<Axis> axis = input.AxisChoice();
  if (!axis) return kExitUsage;
  const std::optional<int> samples = input.Number("--samples", 2, kMaxLineCount, kDefaultSamples);
  if (!samples) return kExitUsage;
  if (is_shape) {
    if (!session.Open(input.Path("FILE"), kTypeWls)) return kExitFailed;
    const CorrectionData& read = session.engine.files.Staging().Correction;
    return PrintNumbers(SampleCurve(read.Curves[kHorizontal], *samples), session);
  }
  if (!ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  return PrintNumbers(SampleCurve(session.engine.global.Correction.Curves[*axis], *samples),
                      session);
}

}  // namespace warpline
