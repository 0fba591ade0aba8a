#include "app/status_line.h"

#include "app/deviation_report.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"

namespace warpline {
namespace {

ToolText ShownKey(const LSSglobal& global, const ProjectorRecord& record) {
  switch (record.shown) {
    case Shown::kUnknown:
      return ToolText::kShownUnknown;
    case Shown::kNone:
      return ToolText::kShownNone;
    case Shown::kCorrection:
      return record.Shows(global.Correction) ? ToolText::kShownThis : ToolText::kShownOlder;
    case Shown::kRegisters:
      return ToolText::kShownRegisters;
  }
  return ToolText::kShownUnknown;
}

std::string ShownText(const LSSglobal& global, const ProjectorRecord& record) {
  const std::string& shown = TextOf(global, ShownKey(global, record));
  if (record.shown == Shown::kUnknown && !record.kept) return shown;
  const ToolText kept = record.kept ? ToolText::kKept : ToolText::kNotKept;
  return FilledText(TextOf(global, ToolText::kShownAndKept), {shown, TextOf(global, kept)});
}

void NoteDeviation(const LSSglobal& global, StatusLine& line) {
  const std::optional<Deviation> deviation = FindDeviation(global.Correction, global.Panel);
  if (!deviation) return;
  line.detail = DeviationText(global, *deviation);
  if (!line.detail.empty()) {
    line.note = FilledText(TextOf(global, ToolText::kDeviationNote), {DeviationPixels(*deviation)});
  }
}

}  // namespace

std::string ConnectionText(const LSSglobal& global) {
  const Settings& settings = global.Settings;
  if (settings.ConnectDevice == kSerial) {
    const auto speed = static_cast<std::size_t>(settings.ComSpeed);
    return FilledText(TextOf(global, ToolText::kLinkSerial),
                      {std::to_string(settings.ComPort + 1), std::string(kSerialSpeeds.at(speed))});
  }
  if (settings.ConnectDevice == kUsb) {
    return FilledText(TextOf(global, ToolText::kLinkUsb), {std::to_string(settings.USBPort + 1)});
  }
  // The port that every projector listens on goes without saying.
  const bool usual = settings.LANPort == kUsualLanPort;
  return FilledText(TextOf(global, ToolText::kLinkLan),
                    {settings.IPAddress + (usual ? "" : ":" + settings.LANPort)});
}

StatusLine StatusOf(const Engine& engine) {
  const LSSglobal& global = engine.global;
  StatusLine line;
  NoteDeviation(global, line);
  const bool demo = global.Settings.DemoMode == 1;
  line.link = demo ? TextOf(global, ToolText::kNothingSent) : ConnectionText(global);
  if (!demo && engine.link.ReachesSimulatorsOnly()) {
    line.link += " " + TextOf(global, ToolText::kSimulator);
  }
  if (engine.recording.IsOn()) {
    line.link = FilledText(TextOf(global, ToolText::kRecordingRuns), {line.link});
  }
  if (demo) return line;
  line.shown = ShownText(global, engine.commands.Record());
  line.retry = !engine.commands.RepeatedFailure().empty();
  if (line.retry) line.note = line.detail = engine.commands.RepeatedFailure();
  if (engine.commands.Stopped()) line.note = TextOf(global, ToolText::kSendingStopped);
  return line;
}

std::string ProgressText(const LSSglobal& global, int step, int steps) {
  if (step == 0) return TextOf(global, ToolText::kConnecting);
  return FilledText(TextOf(global, ToolText::kSendingStep),
                    {std::to_string(step), std::to_string(steps)});
}

}  // namespace warpline
