#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/verbs.h"
#include "core/catalogue.h"
#include "model/profile.h"
#include "model/registers.h"
#include "picture/deviation.h"
#include "platform/files.h"

// verify: what a simulated projector shows, by its state file, against what a correction means.

namespace warpline {

namespace {

// The first line's scale and the step to the second have registers of their own, which nothing
// holds to what fits; the lines behind are second differences, held to four bits.
constexpr std::size_t kLinesOfTheirOwn = 2;

using Scales = std::vector<std::int32_t>;

// What the state file tells of the picture shown and of the most recent link.
struct ShownState {
  PanelSize panel;
  std::array<Scales, kAxisCount> scales;
  std::uint64_t frames = 0;
  std::uint64_t bytes = 0;
};

struct Difference {
  double pixels = 0.0;
  std::size_t line = 0;  // where it is largest
};

struct AxisResult {
  Difference from_profile;
  std::optional<std::size_t> first_unlike;  // the first line that is not as the registers say
  std::optional<std::size_t> misfit;        // the first line whose own register cannot hold it
};

bool IsWhole(const ShownState& state) {
  for (const Axis axis : {kHorizontal, kVertical}) {
    const int lines = LineCount(state.panel, axis);
    if (lines < kMinPanelLines || lines > kMaxLineCount) return false;
    if (state.scales[axis].size() != static_cast<std::size_t>(lines)) return false;
  }
  return true;
}

// A fraction, or a number of any size with a point, would not become a whole one by itself.
bool IsOfWholeNumbers(const nlohmann::json& values) {
  return std::all_of(values.begin(), values.end(),
                     [](const nlohmann::json& value) { return value.is_number_integer(); });
}

std::optional<ShownState> StateOf(const std::string& text) {
  try {
    const nlohmann::json json = nlohmann::json::parse(text);
    const nlohmann::json& scales = json.at("line_scales");
    const nlohmann::json& session = json.at("session");
    const nlohmann::json& panel = json.at("panel");
    if (!IsOfWholeNumbers(panel) || !IsOfWholeNumbers(scales.at("horizontal")) ||
        !IsOfWholeNumbers(scales.at("vertical"))) {
      return std::nullopt;
    }
    ShownState state{{panel.at("width"), panel.at("height")},
                     {scales.at("horizontal"), scales.at("vertical")},
                     session.at("frames"),
                     session.at("bytes")};
    return IsWhole(state) ? std::optional(state) : std::nullopt;
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;
  }
}

std::optional<ShownState> ReadState(const VerbInput& input, Session& session) {
  const std::filesystem::path path = input.Path("--state");
  std::string text;
  const bool read = session.OnFile(path, [&] {
    const std::error_code error = session.Read(path, text);
    if (error) session.engine.messages.ShowSystemError(SystemErrorText(error));
    return !error;
  });
  if (!read) return std::nullopt;
  std::optional<ShownState> state = StateOf(text);
  if (!state) session.Tell(CliText::kStateFileWrong, {input.Text("--state")});
  return state;
}

// A scale that is not positive draws nothing.
double ShownSize(std::int32_t scale, int line_length) {
  return scale > 0 ? static_cast<double>(line_length) * kUnitScale / scale : 0.0;
}

Difference LargestDifference(const std::vector<double>& profile, const Scales& scales,
                             int line_length) {
  Difference largest;
  for (std::size_t i = 0; i < profile.size(); ++i) {
    const double pixels = std::abs(ShownSize(scales[i], line_length) - profile[i]);
    if (pixels > largest.pixels) largest = {pixels, i};
  }
  return largest;
}

AxisResult CompareAxis(const CorrectionData& correction, const ShownState& state, Axis axis) {
  const int length = LineLength(state.panel, axis);
  const int count = LineCount(state.panel, axis);
  const AxisCorrection own = CorrectionOf(correction, axis);
  const std::vector<double> profile =
      LineSizeProfile(own.Parameters, own.Projection, SampleCurve(own.Curve, count), length);
  const Scales meant = RebuildLineScales(BuildAxisRegisters(own, length, count), count);
  const Scales wanted = LineScales(profile, length);
  AxisResult result{LargestDifference(profile, state.scales[axis], length), std::nullopt,
                    std::nullopt};
  for (std::size_t i = 0; i < kLinesOfTheirOwn && !result.misfit; ++i) {
    if (meant[i] != wanted[i]) result.misfit = i;
  }
  for (std::size_t i = 0; i < meant.size() && !result.first_unlike; ++i) {
    if (meant[i] != state.scales[axis][i]) result.first_unlike = i;
  }
  return result;
}

std::string LineName(Axis axis, std::size_t line, const CliTexts& texts) {
  const CliText key = axis == kHorizontal ? CliText::kHorizontalRow : CliText::kVerticalColumn;
  return texts.Fill(key, {std::to_string(line)});
}

std::string PixelText(double pixels) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.3f", pixels);
  return text.data();
}

struct Verdict {
  const char* name;  // the same in every language
  std::string text;
  int exit_code;
};

// The projector must show what the registers say. Where second differences cannot follow the
// profile, that is told and no failure; a scale that its register cannot hold destroys the picture.
Verdict Judge(const std::array<AxisResult, kAxisCount>& results, const CliTexts& texts) {
  for (const Axis axis : {kHorizontal, kVertical}) {
    if (const auto line = results[axis].first_unlike) {
      return {"differs", texts.Fill(CliText::kVerifyDiffers, {LineName(axis, *line, texts)}),
              kExitFailed};
    }
  }
  for (const Axis axis : {kHorizontal, kVertical}) {
    if (const auto line = results[axis].misfit) {
      return {"misfit", texts.Fill(CliText::kVerifyMisfit, {LineName(axis, *line, texts)}),
              kExitFailed};
    }
  }
  std::string places;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const Difference& difference = results[axis].from_profile;
    if (difference.pixels <= kAllowedDeviation) continue;
    if (!places.empty()) places += ", ";
    places += LineName(axis, difference.line, texts);
  }
  if (places.empty()) return {"agrees", texts[CliText::kVerifyAgrees], kExitOk};
  return {"beyond_encoding", texts.Fill(CliText::kVerifyBeyondEncoding, {places}), kExitOk};
}

void ReportVerdict(Report& report, const ShownState& state,
                   const std::array<AxisResult, kAxisCount>& results, const Verdict& verdict) {
  const auto of_axis = [&results](Axis axis) {
    const Difference& difference = results[axis].from_profile;
    return nlohmann::ordered_json{{"pixels", difference.pixels}, {"line", difference.line}};
  };
  report.Set("verdict", verdict.name);
  report.Set("horizontal", of_axis(kHorizontal));
  report.Set("vertical", of_axis(kVertical));
  report.Set("bytes", state.bytes);
  report.Set("frames", state.frames);
}

}  // namespace

int RunVerify(const VerbInput& input, Session& session) {
  const std::optional<ShownState> state = ReadState(input, session);
  if (!state || !ReadCorrection(session, input.Path("FILE"))) return kExitFailed;
  const CorrectionData& correction = session.engine.global.Correction;
  const std::array<AxisResult, kAxisCount> results{CompareAxis(correction, *state, kHorizontal),
                                                   CompareAxis(correction, *state, kVertical)};
  const Verdict verdict = Judge(results, session.texts);
  if (session.report.Wanted()) {
    ReportVerdict(session.report, *state, results, verdict);
    return verdict.exit_code;
  }
  session.out << session.texts.Fill(
                     CliText::kVerifyResult,
                     {TextOf(session.engine.global, RowOfScreenType(correction.ScreenType).caption),
                      std::to_string(state->bytes), std::to_string(state->frames),
                      PixelText(results[kHorizontal].from_profile.pixels),
                      PixelText(results[kVertical].from_profile.pixels), verdict.text})
              << '\n';
  return verdict.exit_code;
}

}  // namespace warpline
