#include <algorithm>
#include <cstdio>
#include <optional>
#include <span>
#include <string>

#include "cli/verbs.h"
#include "core/catalogue.h"
#include "core/conversions.h"
#include "core/parameters.h"
#include "files/formats.h"
#include "fit/fit.h"
#include "platform/files.h"

// fit: the correction that straightens the marks of a photograph.

namespace warpline {
namespace {

constexpr int kMostPhotoPixels = 100'000;  // each way
constexpr int kLastScreenType = kScreenTypeCount - 1;

std::optional<PlanePoint> PointOf(std::string_view text) {
  const std::size_t comma = text.find(',');
  PlanePoint point;
  const bool read = comma != std::string_view::npos &&
                    ReadReal(text.substr(0, comma), -kFarthestMark, kFarthestMark, point.X) &&
                    ReadReal(text.substr(comma + 1), -kFarthestMark, kFarthestMark, point.Y);
  return read ? std::optional(point) : std::nullopt;
}

// The points behind an option, one line each time that it stands there.
std::optional<std::vector<PlaneLine>> LinesOf(const VerbInput& input, std::string_view name) {
  std::vector<PlaneLine> lines;
  bool begins = true;
  for (const std::string& text : input.Texts(name)) {
    if (text == kNextGiven) {
      begins = true;
      continue;
    }
    const std::optional<PlanePoint> point = PointOf(text);
    if (!point) return std::nullopt;
    if (begins) lines.emplace_back();
    begins = false;
    lines.back().push_back(*point);
  }
  return lines;
}

bool ReadCorners(const VerbInput& input, const Session& session, FitInput& fit) {
  if (!input.Has("--corners")) return true;
  const auto lines = LinesOf(input, "--corners");
  if (!lines || lines->size() != 1 || lines->front().size() != fit.Corners.emplace().size()) {
    session.UsageError(CliText::kBadCorners);
    return false;
  }
  std::ranges::copy(lines->front(), fit.Corners->begin());
  return true;
}

bool ReadStraightLines(const VerbInput& input, const Session& session, FitInput& fit) {
  constexpr std::size_t kLeastPoints = 3;
  const auto lines = LinesOf(input, "--straight");
  if (!lines || !std::ranges::all_of(
                    *lines, [](const PlaneLine& line) { return line.size() >= kLeastPoints; })) {
    session.UsageError(CliText::kBadStraight);
    return false;
  }
  fit.StraightLines = *lines;
  return true;
}

bool ReadPhoto(const VerbInput& input, const Session& session, FitInput& fit) {
  if (!input.Has("--photo")) return true;
  const std::string_view text = input.Text("--photo");
  const std::size_t cross = std::min(text.find_first_of("xX"), text.size() - 1);
  const auto width = WholeNumber(text.substr(0, cross), 1, kMostPhotoPixels);
  const auto height = WholeNumber(text.substr(cross + 1), 1, kMostPhotoPixels);
  if (width && height) {
    fit.Photo = PhotoSize{*width, *height};
    return true;
  }
  session.UsageError(CliText::kBadPhoto, {std::string(text)});
  return false;
}

// False when the command line is wrong, which has been said.
bool ReadOptions(const VerbInput& input, const Session& session, FitInput& fit) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return false;
  fit.Panel = *panel;
  if (input.Has("--screen") && input.Text("--screen") != "any") {
    const std::optional<int> type = input.Number("--screen", 0, kLastScreenType, 0);
    if (!type) return false;
    fit.ScreenType = static_cast<std::int16_t>(*type);
  }
  for (const Axis axis : {kHorizontal, kVertical}) {
    const std::string_view name = axis == kHorizontal ? "--projection-h" : "--projection-v";
    if (!input.Has(name)) continue;
    const std::optional<int> flag = input.Number(name, 0, 1, 0);
    if (!flag) return false;
    fit.Projection[axis] = static_cast<std::int16_t>(*flag);
  }
  return ReadPhoto(input, session, fit) && ReadCorners(input, session, fit) &&
         ReadStraightLines(input, session, fit);
}

std::string Hundredths(double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.2f", value);
  return text.data();
}

// As the keys of the file name them; what a fit leaves alone is left out.
std::string ParametersText(const CorrectionData& correction) {
  std::string text;
  for (const Axis axis : {kHorizontal, kVertical}) {
    const std::string letter = axis == kHorizontal ? "H=" : "V=";
    text += (text.empty() ? "Projection" : " Projection") + letter +
            std::to_string(correction.Projection[axis]);
    for (const ParameterField field : {ParameterField::kDistortion, ParameterField::kOptical,
                                       ParameterField::kAmplitude, ParameterField::kPosition}) {
      const ParameterRow& row = RowOfParameter(field);
      text += ' ' + std::string(row.key) + letter + std::to_string(row.load(correction.Axes[axis]));
    }
  }
  return text;
}

void TellResult(const FitResult& result, const Session& session) {
  const std::string& type =
      TextOf(session.engine.global, RowOfScreenType(result.ScreenType).caption);
  session.out << session.texts.Fill(
                     CliText::kFitResult,
                     {type, Hundredths(result.Before.Edges), Hundredths(result.PixelsBefore),
                      Hundredths(result.After.Edges), Hundredths(result.PixelsAfter),
                      Hundredths(result.Before.Grid), Hundredths(result.After.Grid),
                      ParametersText(result.Correction)})
              << '\n';
}

void TellReport(const FitReport& report, const Session& session) {
  const FitResult& chosen = report.Results[report.Chosen];
  for (const FitResult& result : report.Results) {
    if (&result != &chosen) TellResult(result, session);
  }
  TellResult(chosen, session);
  for (const NamedText& warning : report.Warnings) {
    session.err << TextOf(session.engine.global, warning) << '\n';
  }
  if (!chosen.Note.Name.empty()) session.err << TextOf(session.engine.global, chosen.Note) << '\n';
}

// Reads the marks and fits; nothing when that failed, which has been said.
std::optional<FitReport> FitFile(const std::filesystem::path& path, FitInput& fit,
                                 Session& session) {
  std::optional<FitReport> report;
  const Messages& messages = session.engine.messages;
  session.OnFile(path, [&] {
    std::string text;
    if (const std::error_code error = session.Read(path, text)) {
      messages.ShowSystemError(SystemErrorText(error));
      return false;
    }
    NamedText reason;
    if (const std::optional<Marks> marks = MarksOf(text, reason)) {
      fit.Seen = *marks;
      report = FitCorrection(fit, reason);
    }
    if (!report) messages.ShowSystemError(TextOf(session.engine.global, reason));
    return report.has_value();
  });
  return report;
}

}  // namespace

int RunFit(const VerbInput& input, Session& session) {
  FitInput fit;
  if (!ReadOptions(input, session, fit)) return kExitUsage;
  const std::optional<FitReport> report = FitFile(input.Path("MARKS"), fit, session);
  if (!report) return kExitFailed;
  FileData data;
  data.Correction = report->Results[report->Chosen].Correction;
  if (!session.Save(input.Path("-o"), kTypeWlt, data)) return kExitFailed;
  TellReport(*report, session);
  return kExitOk;
}

}  // namespace warpline
