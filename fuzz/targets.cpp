#include "fuzz/targets.h"

#include <sstream>

#include "app/recovery_text.h"
#include "core/catalogue.h"
#include "core/fault.h"
#include "files/formats.h"
#include "fit/marks.h"
#include "fuzz/feed_projector.h"
#include "picture/exif.h"
#include "picture/photograph.h"
#include "picture/stb_decoder.h"
#include "sim/device/profile.h"
#include "sim/recording/recording.h"
#include "sim/station/control.h"

namespace warpline {
namespace {

constexpr const char* kUnsaid = "refused without a reason";
constexpr const char* kChanged = "written and read again it is another";

// Reads a text, writes what it says and reads that; Value is nothing when it was refused.
template <typename Read, typename Write>
std::string ThereAndBack(std::string_view bytes, Read read, Write write) {
  const auto value = read(bytes);
  if (!value) return "";
  const std::string written = write(*value);
  const auto again = read(written);
  if (!again) return "what was written is refused";
  return write(*again) == written ? "" : kChanged;
}

std::string FeedFile(std::string_view type, std::string_view bytes) {
  struct : MessageDisplay {
    std::size_t Show(const UserMessage& message) override { return message.choices.size() - 1; }
  } display;
  const LSSglobal global;
  const Messages messages(global, display);
  const auto read = [&](std::string_view text) -> std::optional<FileData> {
    FileData data;
    ResetToScreenType(data.Correction);
    const auto module = MakeFormatModule(type, data, messages);
    module->ResetRead();
    try {
      if (ReadLines(text, *module)) return std::nullopt;
    } catch (const Fault&) {
      return std::nullopt;
    }
    return data;
  };
  return ThereAndBack(bytes, read, [&](FileData data) {
    std::vector<std::string> lines;
    return MakeFormatModule(type, data, messages)->Write(lines) ? JoinLines(lines) : "";
  });
}

template <const std::string_view& type>
std::string FeedFileOf(std::string_view bytes) {
  return FeedFile(type, bytes);
}

std::string FeedRecovery(std::string_view bytes) {
  return ThereAndBack(bytes, &WorkOf,
                      [](const UnsavedWork& work) { return RecoveryText(work).value_or(""); });
}

std::string FeedMarks(std::string_view bytes) {
  LSSglobal global;
  ApplyLanguage(global, Language::kEnglish);
  NamedText reason;
  if (!MarksOf(bytes, reason) && TextOf(global, reason).empty()) return kUnsaid;
  return ThereAndBack(
      bytes, [&](std::string_view text) { return MarksOf(text, reason); }, &MarksText);
}

// What a damaged picture claims to be is not to cost the time of decoding it.
constexpr std::int64_t kMostFedPixels = 200'000;

std::string FeedSizes(std::string_view bytes) {
  const std::optional<PanelSize> size = SizeOfPicture(bytes);
  if (size && (size->Width < 0 || size->Height < 0)) return "a size below nothing";
  const int orientation = OrientationOf(bytes);
  return orientation >= 1 && orientation <= 8 ? "" : "an orientation that is none";
}

std::string FeedPhotograph(std::string_view bytes) {
  const std::optional<PanelSize> size = SizeOfPicture(bytes);
  if (size && std::int64_t{size->Width} * size->Height > kMostFedPixels) return "";
  NamedText reason;
  if (!ImageOfPhotograph(bytes, reason) && reason.Name.empty()) return kUnsaid;
  std::optional<RgbImage> image = size ? DecodedPicture(bytes) : std::nullopt;
  if (!image) return "";
  if (PanelSize{image->Width, image->Height} != *size) return "another size than it told";
  const RgbImage turned = Oriented(*std::move(image), OrientationOf(bytes));
  const std::optional<RgbImage> again = DecodedPicture(PngOf(turned).value_or(""));
  if (!again || !DecodedPicture(JpegOf(turned, 90).value_or(""))) return "not accepted again";
  return again->Width == turned.Width && again->Pixels == turned.Pixels ? "" : kChanged;
}

std::string SaidBySim(const NamedText& reason) {
  return reason.Name.empty() ? "" : sim::ProjectorTextsOf(Language::kJapanese).Say(reason);
}

std::string WrittenRecording(const std::vector<sim::RecordedEvent>& events) {
  std::ostringstream out;
  Clock::time_point now;
  sim::Recorder recorder(out, [&now] { return now; });
  for (const sim::RecordedEvent& event : events) {
    now = Clock::time_point(event.At);
    if (event.Kind == sim::RecordedKind::kOpened) recorder.Opened(event.Link);
    if (event.Kind == sim::RecordedKind::kClosed) recorder.Closed(event.Link);
    if (event.Kind != sim::RecordedKind::kExchange) continue;
    recorder.Request(event.Link, event.Request);
    now += event.ReplyAfter;
    recorder.Reply(event.Link, event.Request, event.Reply);
  }
  return out.str();
}

std::string FeedRecording(std::string_view bytes) {
  NamedText reason;
  if (!sim::ParseRecording(bytes, reason) && SaidBySim(reason).empty()) return kUnsaid;
  return ThereAndBack(
      bytes, [&](std::string_view text) { return sim::ParseRecording(text, reason); },
      &WrittenRecording);
}

std::string FeedProfile(std::string_view bytes) {
  NamedText reason;
  const std::optional<sim::Profile> profile = sim::ParseProfile(bytes, reason);
  if (!profile) return SaidBySim(reason).empty() ? kUnsaid : "";
  const PanelSize panel = profile->Projector.Panel;
  const bool fits = sim::RegistersFit(sim::NeutralRegisters(panel), panel);
  return fits && profile->Projector.ModelClass <= 255 ? "" : "a projector that cannot be";
}

std::string FeedState(std::string_view bytes) {
  constexpr sim::ProjectorSetup kSetup{.Panel = {64, 64}};
  const auto read = [&](std::string_view text) {
    NamedText reason;
    return sim::StoredSetOf(text, kSetup.Panel, reason);
  };
  return ThereAndBack(bytes, read, [&](const RegisterSet& stored) {
    return sim::StateText(sim::SimulatedProjector(kSetup, stored), {});
  });
}

std::string FeedFrames(std::string_view bytes) {
  return sim::FeedProjector({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

// Any number of lines that begin with two blanks, and a last one that tells the outcome.
bool IsControlAnswer(std::string_view answer) {
  while (answer.starts_with("  ")) answer.remove_prefix(answer.find('\n') + 1);
  return answer == "ok\n" || (answer.starts_with("error: ") && answer.ends_with('\n'));
}

std::string FeedControl(std::string_view bytes) {
  sim::Station station({.Projector = {.Panel = {64, 64}}});
  std::istringstream lines{std::string(bytes)};
  for (std::string line; std::getline(lines, line) && line.size() <= sim::kMaxControlLine;) {
    if (!IsControlAnswer(sim::ControlAnswer(station, line))) return "no answer";
  }
  for (const std::string& rule : station.Snapshot().Faults) {
    if (!sim::ControlAnswer(station, "clear " + rule).starts_with("ok")) return "a rule that stays";
    if (!sim::ControlAnswer(station, "fault " + rule).ends_with("ok\n")) return "a rule refused";
  }
  return "";
}

constexpr FuzzTarget kTargets[]{
    {"wlt", &FeedFileOf<kTypeWlt>}, {"wls", &FeedFileOf<kTypeWls>},  {"wlr", &FeedFileOf<kTypeWlr>},
    {"ini", &FeedFileOf<kTypeIni>}, {"recovery", &FeedRecovery},     {"marks", &FeedMarks},
    {"sizes", &FeedSizes},          {"photograph", &FeedPhotograph}, {"recording", &FeedRecording},
    {"profile", &FeedProfile},      {"state", &FeedState},           {"frames", &FeedFrames},
    {"control", &FeedControl},
};

}  // namespace

std::span<const FuzzTarget> FuzzTargets() {
  return kTargets;
}

}  // namespace warpline
