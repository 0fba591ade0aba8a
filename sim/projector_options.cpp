#include "sim/projector_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <string_view>
#include <utility>
#include <variant>

#include "core/build_info.h"
#include "core/language_word.h"
#include "core/nearest_word.h"
#include "platform/files.h"
#include "sim/camera_options.h"
#include "sim/device/profile.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {
namespace {

using Text = ProjectorText;

constexpr const char* kProgram = "warpline-projector";
constexpr std::uint64_t kAnyNumber = std::numeric_limits<std::uint64_t>::max();

// What the words say, before it is understood.
struct RawOptions {
  using Word = std::string;
  using Words = std::vector<std::string>;
  using Number = std::optional<std::uint64_t>;

  Word listen, panel, profile, control, record, replay, replay_to, serial, state, picture, wall;
  Word source, camera, photo, photo_size, camera_k1, camera_roll, room;
  Word language;
  Word power = "on";
  Words faults;
  Number usb, model_class, reply5, seed;
  Number speed_up = 1;
  bool fast_serial = false;
  bool no_panel_info = false;
  bool headless = false;
  bool no_discovery = false;
};

using Place = std::variant<RawOptions::Word RawOptions::*, RawOptions::Words RawOptions::*,
                           RawOptions::Number RawOptions::*, bool RawOptions::*>;

struct OptionRow {
  const char* name;
  Place place;
  Text help;
  std::vector<std::string> choices = {};  // the words that are allowed; none: all
  std::uint64_t least = 0;
  std::uint64_t most = kAnyNumber;
  bool shows_default = false;
};

constexpr std::uint64_t kHighestByte = 255;

std::vector<OptionRow> OptionRows() {
  using R = RawOptions;
  return {
      {"--listen", &R::listen, Text::kOptionListen},
      {"--usb", &R::usb, Text::kOptionUsb, {}, 1, kHighestPortNumber},
      {"--serial", &R::serial, Text::kOptionSerial},
      {"--fast-serial", &R::fast_serial, Text::kOptionFastSerial},
      {"--profile", &R::profile, Text::kOptionProfile},
      {"--panel", &R::panel, Text::kOptionPanel},
      {"--no-panel-info", &R::no_panel_info, Text::kOptionNoPanelInfo},
      {"--class", &R::model_class, Text::kOptionClass, {}, 0, kHighestByte},
      {"--reply5", &R::reply5, Text::kOptionReply5, {}, 0, kHighestByte},
      {"--power", &R::power, Text::kOptionPower, {"on", "standby"}, 0, 0, true},
      {"--speed-up", &R::speed_up, Text::kOptionSpeedUp, {}, 1, kHighestSpeedUp, true},
      {"--no-discovery", &R::no_discovery, Text::kOptionNoDiscovery},
      {"--headless", &R::headless, Text::kOptionHeadless},
      {"--language", &R::language, Text::kOptionLanguage, {"ja", "en"}},
      {"--state", &R::state, Text::kOptionState},
      {"--picture", &R::picture, Text::kOptionPicture},
      {"--wall", &R::wall, Text::kOptionWall},
      {"--source", &R::source, Text::kOptionSource},
      {"--camera", &R::camera, Text::kOptionCamera},
      {"--photo", &R::photo, Text::kOptionPhoto},
      {"--photo-size", &R::photo_size, Text::kOptionPhotoSize},
      {"--camera-k1", &R::camera_k1, Text::kOptionCameraK1},
      {"--camera-roll", &R::camera_roll, Text::kOptionCameraRoll},
      {"--room", &R::room, Text::kOptionRoom},
      {"--fault", &R::faults, Text::kOptionFault},
      {"--seed", &R::seed, Text::kOptionSeed},
      {"--control", &R::control, Text::kOptionControl},
      {"--record", &R::record, Text::kOptionRecord},
      {"--replay", &R::replay, Text::kOptionReplay},
      {"--replay-to", &R::replay_to, Text::kOptionReplayTo},
  };
}

// The two must not stand together.
constexpr std::pair<const char*, const char*> kExclusive[] = {{"--usb", "--listen"},
                                                              {"--replay", "--record"}};
constexpr std::pair<const char*, const char*> kNeeds[] = {
    {"--replay-to", "--replay"},  {"--photo", "--camera"},     {"--camera", "--wall"},
    {"--photo-size", "--camera"}, {"--camera-k1", "--camera"}, {"--camera-roll", "--camera"},
    {"--room", "--camera"}};

std::string ListOf(const std::vector<std::string>& choices, const std::string& between) {
  std::string text;
  for (const std::string& choice : choices) text += (text.empty() ? "" : between) + choice;
  return text;
}

// What the help calls the value.
std::string ValueName(const OptionRow& row, const ProjectorTexts& texts) {
  if (!row.choices.empty()) return texts[Text::kTextLabel] + ":{" + ListOf(row.choices, ",") + "}";
  if (!std::holds_alternative<RawOptions::Number RawOptions::*>(row.place)) {
    return texts[Text::kTextLabel];
  }
  if (row.most == kAnyNumber) return texts[Text::kNumberLabel];
  return texts.Fill(Text::kRangeLabel, {std::to_string(row.least), std::to_string(row.most)});
}

// What is wrong with a value; empty: nothing.
std::string ComplaintAboutChoice(const OptionRow& row, const std::string& value,
                                 const ProjectorTexts& texts) {
  if (row.choices.empty() || std::ranges::count(row.choices, value) > 0) return {};
  return texts.Fill(Text::kNotAChoice, {row.name, ListOf(row.choices, ", "), value});
}

std::string ComplaintAboutNumber(const OptionRow& row, const std::string& value,
                                 const ProjectorTexts& texts) {
  std::uint64_t number = 0;
  const bool is_number = CLI::detail::lexical_cast(value, number);
  if (is_number && number >= row.least && number <= row.most) return {};
  if (row.most == kAnyNumber) return texts.Fill(Text::kNotANumber, {row.name, value});
  return texts.Fill(Text::kNotInRange,
                    {row.name, std::to_string(row.least), std::to_string(row.most), value});
}

// One way to declare an option for each type of place.
struct Declarer {
  CLI::App& app;
  const OptionRow& row;
  const ProjectorTexts& texts;

  void operator()(bool& flag) const { app.add_flag(row.name, flag, texts[row.help]); }

  void operator()(RawOptions::Number& number) const {
    CLI::Option& option = WithValue(app.add_option(row.name, number, texts[row.help]));
    option.check([this_row = row, &all = texts](const std::string& value) {
      return ComplaintAboutNumber(this_row, value, all);
    });
    if (row.shows_default) option.default_str(std::to_string(*number));
  }

  void operator()(RawOptions::Word& word) const {
    CLI::Option& option = WithValue(app.add_option(row.name, word, texts[row.help]));
    option.check([this_row = row, &all = texts](const std::string& value) {
      return ComplaintAboutChoice(this_row, value, all);
    });
    if (row.shows_default) option.default_str(word);
  }

  void operator()(RawOptions::Words& words) const {
    WithValue(app.add_option(row.name, words, texts[row.help])).take_all()->allow_extra_args(false);
  }

 private:
  CLI::Option& WithValue(CLI::Option* option) const {
    return *option->type_name(ValueName(row, texts));
  }
};

void Declare(CLI::App& app, RawOptions& raw, const ProjectorTexts& texts) {
  app.option_defaults()->group(texts[Text::kOptionsGroup]);
  app.set_help_flag("-h,--help", texts[Text::kHelpOption]);
  app.set_version_flag("--version", kProgram, texts[Text::kVersionOption]);
  app.footer(texts[Text::kFooter]);
  const auto formatter = std::make_shared<CLI::Formatter>();
  formatter->label("Usage", texts[Text::kUsageLabel]);
  formatter->label("OPTIONS", texts[Text::kOptionsLabel]);
  formatter->label("Needs", texts[Text::kNeedsLabel]);
  formatter->label("Excludes", texts[Text::kExcludesLabel]);
  app.formatter(formatter);
  for (const OptionRow& row : OptionRows()) {
    std::visit([&](auto place) { Declarer{app, row, texts}(raw.*place); }, row.place);
  }
  for (const auto& [one, other] : kExclusive) app.get_option(one)->excludes(app.get_option(other));
  for (const auto& [one, other] : kNeeds) app.get_option(one)->needs(app.get_option(other));
}

// A word that fits nowhere, and the option that was probably meant.
std::string ComplaintAboutWord(const std::string& word, const ProjectorTexts& texts) {
  if (!word.starts_with('-')) return texts.Fill(Text::kUnexpectedWord, {word});
  std::vector<std::string> names{"--help", "--version"};
  for (const OptionRow& row : OptionRows()) names.emplace_back(row.name);
  const std::string complaint = texts.Fill(Text::kUnknownOption, {word});
  const std::string nearest = NearestWord(word.substr(0, word.find('=')), names);
  return nearest.empty() ? complaint : texts.Fill(Text::kDidYouMean, {complaint, nearest});
}

// The parser's own messages are English; what they say is said again in the user's language. They
// begin with the option's name and, where two options are at odds, end with the other's.
std::string Complaint(const CLI::App& app, const CLI::ParseError& error,
                      const ProjectorTexts& texts) {
  std::string message = error.what();
  const std::string first = message.substr(0, message.find_first_of(": "));
  const std::string last = message.substr(message.rfind(' ') + 1);
  switch (static_cast<CLI::ExitCodes>(error.get_exit_code())) {
    case CLI::ExitCodes::ValidationError:
      return message.substr(std::min(message.size(), first.size() + 2));  // made of ours
    case CLI::ExitCodes::ExtrasError:
      return ComplaintAboutWord(app.remaining().front(), texts);
    case CLI::ExitCodes::ExcludesError:
      return texts.Fill(Text::kExcludes, {first, last});
    case CLI::ExitCodes::RequiresError:
      return texts.Fill(Text::kRequires, {first, last});
    case CLI::ExitCodes::ArgumentMismatch:
      return texts.Fill(
          app.get_option(first)->count() > 1 ? Text::kGivenTwice : Text::kMissingValue, {first});
    default:
      return texts.Fill(Text::kOtherUsageError, {message});
  }
}

std::optional<std::filesystem::path> PathIfAny(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return PathOf(text);
}

std::uint64_t NewSeed() {
  return std::random_device()() % 1'000'000;
}

// Makes the options of what was said. A function that fails has set the reason.
class OptionReader {
 public:
  OptionReader(const RawOptions& raw, const ProjectorTexts& texts) : raw_(raw), texts_(texts) {}

  bool Read() {
    options_.Station.State = PathIfAny(raw_.state);
    options_.Station.Picture = PathIfAny(raw_.picture);
    options_.Station.Seed = raw_.seed ? *raw_.seed : NewSeed();
    options_.Station.SpeedUp = static_cast<int>(*raw_.speed_up);
    options_.FastSerial = raw_.fast_serial;
    options_.Headless = raw_.headless;
    options_.Language = LanguageOfWord(raw_.language);
    options_.Discovery = !raw_.no_discovery && !raw_.usb;
    options_.Record = PathIfAny(raw_.record);
    options_.Replay = PathIfAny(raw_.replay);
    return DescribeProjector(options_.Station.Projector) && ChoosePlaces() &&
           ReadPlaceIfAny("--control", raw_.control, options_.Control) &&
           ReadPlaceIfAny("--replay-to", raw_.replay_to, options_.ReplayTo) && ReadFaults() &&
           ReadWall() && ReadCamera() && ReadSource();
  }

  const ProjectorOptions& Options() const { return options_; }
  const std::string& Reason() const { return reason_; }

 private:
  bool Fail(Text key, std::initializer_list<std::string> values = {}) {
    reason_ = texts_.Fill(key, values);
    return false;
  }

  bool Fail(const NamedText& reason) {
    reason_ = texts_.Say(reason);
    return false;
  }

  bool ReadPlace(const std::string& option, std::string_view text, Endpoint& endpoint) {
    const std::size_t colon = text.rfind(':');
    const std::optional<std::uint32_t> address = LoopbackAddress(text.substr(0, colon));
    const std::optional<std::uint16_t> port =
        colon == std::string_view::npos ? std::nullopt : PortNumber(text.substr(colon + 1));
    if (!address) return Fail(Text::kNotLoopback, {option});
    if (!port) return Fail(Text::kBadPort, {option});
    endpoint = {*address, *port};
    return true;
  }

  bool ReadPlaceIfAny(const std::string& option, const std::string& text,
                      std::optional<Endpoint>& endpoint) {
    return text.empty() || ReadPlace(option, text, endpoint.emplace());
  }

  // A serial device alone needs no port.
  bool ChoosePlaces() {
    options_.Serial = PathIfAny(raw_.serial);
    if (!raw_.usb && raw_.listen.empty() && options_.Serial) return true;
    Endpoint endpoint{Endpoint{}.Address, kDefaultLanPort};
    if (raw_.usb) endpoint.Port = static_cast<std::uint16_t>(kUsbPortBase + *raw_.usb);
    if (!raw_.listen.empty() && !ReadPlace("--listen", raw_.listen, endpoint)) return false;
    options_.Listen = endpoint;
    return true;
  }

  bool ReadFaults() {
    NamedText reason;
    for (const std::string& text : raw_.faults) {
      const std::optional<FaultRule> rule = ParseFaultRule(text, reason);
      if (!rule) return Fail(reason);
      options_.LeftToChance = options_.LeftToChance || rule->Chance < 1 || rule->Jitter.count() > 0;
      options_.Station.Faults.push_back(*rule);
    }
    return true;
  }

  bool ReadWall() {
    if (raw_.wall.empty()) return true;
    options_.Station.Wall = WallOf(raw_.wall);
    return options_.Station.Wall || Fail(Text::kBadWall);
  }

  bool ReadCamera() {
    if (raw_.camera.empty()) return true;
    options_.Station.Photo = PathIfAny(raw_.photo);
    NamedText reason;
    const std::optional<Camera> camera =
        CameraOf({raw_.camera, raw_.photo_size, raw_.camera_k1, raw_.camera_roll, raw_.room},
                 *options_.Station.Wall, options_.Station.Projector.Panel, reason);
    options_.Station.Camera = camera;
    return camera || Fail(reason);
  }

  bool ReadSource() {
    if (raw_.source.empty()) return true;
    std::string bytes;
    NamedText reason;
    std::optional<RgbImage> picture;
    if (const std::error_code error = ReadWholeFile(PathOf(raw_.source), bytes)) {
      reason = {"SystemError", {SystemErrorText(error)}};
    } else {
      picture = ImageOfPng(bytes, reason);
    }
    if (!picture) return Fail(Text::kBadSource, {raw_.source, texts_.Say(reason)});
    const PanelSize panel = options_.Station.Projector.Panel;
    const bool fits = PanelSize{picture->Width, picture->Height} == panel;
    options_.Station.Source = fits ? *std::move(picture) : Resized(*picture, panel);
    return true;
  }

  bool ReadProfile(ProjectorSetup& projector) {
    if (raw_.profile.empty()) return true;
    std::string text;
    NamedText reason;
    if (const std::error_code error = ReadWholeFile(PathOf(raw_.profile), text)) {
      reason = {"SystemError", {SystemErrorText(error)}};
    } else if (const std::optional<Profile> profile = ParseProfile(text, reason)) {
      options_.Station.Name = profile->Name;
      projector = profile->Projector;
      return true;
    }
    return Fail(Text::kBadProfile, {raw_.profile, texts_.Say(reason)});
  }

  // What the options say about the projector itself goes over what its profile says.
  bool DescribeProjector(ProjectorSetup& projector) {
    if (!ReadProfile(projector)) return false;
    if (raw_.model_class) projector.ModelClass = static_cast<int>(*raw_.model_class);
    if (raw_.reply5) projector.Reply5 = static_cast<int>(*raw_.reply5);
    if (raw_.no_panel_info) projector.ReportsPanel = false;
    projector.PowerState = raw_.power == "on" ? Power::kOn : Power::kStandby;
    if (raw_.panel.empty()) return true;
    const std::optional<PanelSize> panel = PanelSizeOf(raw_.panel);
    projector.Panel = panel.value_or(projector.Panel);
    return panel || Fail(Text::kBadPanel);
  }

  const RawOptions& raw_;
  const ProjectorTexts& texts_;
  ProjectorOptions options_;
  std::string reason_;
};

void TellUsageError(const std::string& complaint, const ProjectorTexts& texts, std::ostream& err) {
  err << texts.Fill(Text::kErrorPrefix, {complaint}) << "\n"
      << texts.Fill(Text::kSeeHelp, {kProgram}) << "\n";
}

}  // namespace

std::optional<ProjectorOptions> ParseProjectorOptions(const std::vector<std::string>& words,
                                                      std::ostream& out, std::ostream& err,
                                                      int& exit_code) {
  const ProjectorTexts& texts = ProjectorTextsOf(LanguageOfWord(LanguageWord(words)));
  CLI::App app(texts[Text::kProgram], kProgram);
  RawOptions raw;
  Declare(app, raw, texts);
  exit_code = 2;
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    OptionReader reader(raw, texts);
    if (reader.Read()) return reader.Options();
    TellUsageError(reader.Reason(), texts, err);
  } catch (const CLI::CallForVersion&) {
    out << VersionText(kProgram, BuildToolkit());
    exit_code = 0;
  } catch (const CLI::Success&) {
    out << app.help();
    exit_code = 0;
  } catch (const CLI::ParseError& error) {
    TellUsageError(Complaint(app, error, texts), texts, err);
  }
  return std::nullopt;
}

}  // namespace warpline::sim
