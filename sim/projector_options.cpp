#include "sim/projector_options.h"

#include <CLI/CLI.hpp>
#include <random>
#include <string_view>

#include "platform/environment.h"
#include "platform/files.h"
#include "sim/device/profile.h"

namespace warpline::sim {
namespace {

constexpr const char* kDescription =
    "A simulated projector. It keeps the correction registers that the tool sends, checks every "
    "frame, and shows what the corrected picture looks like. It listens on this machine only.";

constexpr const char* kFooter =
    "Faults: a rule is WHEN:WHAT.\n"
    "  WHEN  conditions with commas between: nth=N (the Nth exchange, from 1), kind=NAME (any,\n"
    "        probe, class, running, panel, status, input, prepare, mode, block or a command\n"
    "        number), every=N, once, chance=P, always\n"
    "  WHAT  of an exchange: timeout, refuse, unkept, short, long, duplicate, checksum, late=MS,\n"
    "        late=MS~JITTER, slow, cut, cutmid, restart; of a connection: refuselink, halfopen,\n"
    "        single\n"
    "  Example: --fault kind=21:refuse --fault nth=3:late=400 --fault chance=0.1:checksum\n"
    "When it is ready it prints \"listening on \" and the place, and with --control a second "
    "line,\n"
    "\"control on \" and the place. Ctrl+C or SIGTERM ends it.\n"
    "Exit codes: 0 ended as asked, 1 it could not work, 2 wrong usage.";

// What the words say, before it is understood.
struct RawOptions {
  std::string listen;
  std::string panel;
  std::string profile;
  std::string control;
  std::string record;
  std::string replay;
  std::string replay_to;
  std::string power = "on";
  std::string serial;
  std::string state;
  std::string picture;
  std::vector<std::string> faults;
  int usb = 0;
  int speed_up = 1;
  std::optional<int> model_class;
  std::optional<int> reply5;
  std::optional<std::uint64_t> seed;
  bool fast_serial = false;
  bool no_panel_info = false;
  bool headless = false;
  std::string language;
  bool no_discovery = false;
};

void DeclareRecording(CLI::App& app, RawOptions& raw) {
  auto* record = app.add_option("--record", raw.record,
                                "Text file that every exchange is written to as it happens");
  auto* replay = app.add_option("--replay", raw.replay,
                                "Recording that every answer is taken from; what it does not hold "
                                "is not answered, and told")
                     ->excludes(record);
  app.add_option("--replay-to", raw.replay_to,
                 "ADDRESS:PORT (loopback) of a projector that the recording's requests are put "
                 "to; tells the answers that differ and ends: 0 all agree, 1 not")
      ->needs(replay);
}

void Declare(CLI::App& app, RawOptions& raw) {
  app.footer(kFooter);
  auto* listen = app.add_option("--listen", raw.listen,
                                "ADDRESS:PORT to serve the LAN on; a loopback address; port 0 "
                                "takes a free one (default 127.0.0.1:7142)");
  app.add_option("--usb", raw.usb, "Serve as USB port N (1 to 8): 127.0.0.1, port 7200 + N")
      ->check(CLI::Range(1, kHighestPortNumber))
      ->excludes(listen);
  app.add_option("--serial", raw.serial,
                 "Also offer a serial device at PATH (a pseudo-terminal; not on Windows)");
  app.add_flag("--fast-serial", raw.fast_serial,
               "Let the serial device's bytes pass at once and not at the speed that is set");
  app.add_option("--profile", raw.profile,
                 "JSON file that says what the projector is; the options below change it");
  app.add_option("--panel", raw.panel,
                 "Panel size WxH, 64 to 4096 pixels each way (default 1024x768)");
  app.add_flag("--no-panel-info", raw.no_panel_info, "Do not report the panel size when asked");
  app.add_option("--class", raw.model_class,
                 "Model class: below 2 no correction, below 3 no store, 3 and 4 store as a whole "
                 "block, from 5 on by command (default 5)")
      ->check(CLI::Range(0, 255));
  app.add_option("--reply5", raw.reply5,
                 "Byte 5 of the model-class answer (memory layout, default 0)")
      ->check(CLI::Range(0, 255));
  app.add_option("--power", raw.power, "Power state")
      ->check(CLI::IsMember({"on", "standby"}))
      ->capture_default_str();
  app.add_option("--speed-up", raw.speed_up,
                 "How many times as fast it warms up (30 s) and cools down (60 s)")
      ->check(CLI::Range(1, kHighestSpeedUp))
      ->capture_default_str();
  app.add_flag("--no-discovery", raw.no_discovery,
               "Do not answer when the tool searches for projectors");
  app.add_flag("--headless", raw.headless, "Run without a window");
  app.add_option("--language", raw.language,
                 "Language of the window, ja or en; the system's if not given")
      ->check(CLI::IsMember({"ja", "en"}));
  app.add_option("--state", raw.state,
                 "JSON file that is rewritten after every exchange; the stored correction is read "
                 "back from it at start");
  app.add_option("--picture", raw.picture,
                 "PNG file of the corrected test picture, rewritten whenever it changes");
  app.add_option("--fault", raw.faults, "A fault rule, see below; may be given several times")
      ->take_all()
      ->allow_extra_args(false);
  app.add_option("--seed", raw.seed,
                 "Seed of the faults that are left to chance; a new one is drawn and printed "
                 "without it");
  app.add_option("--control", raw.control,
                 "ADDRESS:PORT (loopback) that takes commands as lines of text: help lists them");
  DeclareRecording(app, raw);
}

bool ParsePlace(const std::string& option, std::string_view text, Endpoint& endpoint,
                std::string& reason) {
  const std::size_t colon = text.rfind(':');
  const std::optional<std::uint32_t> address = LoopbackAddress(text.substr(0, colon));
  const std::optional<std::uint16_t> port =
      colon == std::string_view::npos ? std::nullopt : PortNumber(text.substr(colon + 1));
  if (!address) {
    reason = option +
             " needs a loopback address (127.x.x.x or localhost) and a port, as in "
             "127.0.0.1:7142; the simulated projector serves this machine only.";
  } else if (!port) {
    reason = option + " needs a port from 0 to 65535 behind the address, as in 127.0.0.1:7142.";
  } else {
    endpoint = {*address, *port};
  }
  return address && port;
}

bool ParseFaults(const std::vector<std::string>& texts, ProjectorOptions& options,
                 std::string& reason) {
  for (const std::string& text : texts) {
    const std::optional<FaultRule> rule = ParseFaultRule(text, reason);
    if (!rule) return false;
    options.LeftToChance = options.LeftToChance || rule->Chance < 1 || rule->Jitter.count() > 0;
    options.Station.Faults.push_back(*rule);
  }
  return true;
}

std::optional<std::filesystem::path> PathIfAny(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return PathOf(text);
}

// A serial device alone needs no port.
bool ChoosePlaces(const RawOptions& raw, ProjectorOptions& options, std::string& reason) {
  options.Serial = PathIfAny(raw.serial);
  if (raw.usb == 0 && raw.listen.empty() && options.Serial) return true;
  Endpoint endpoint{Endpoint{}.Address, kDefaultLanPort};
  if (raw.usb > 0) endpoint.Port = static_cast<std::uint16_t>(kUsbPortBase + raw.usb);
  if (!raw.listen.empty() && !ParsePlace("--listen", raw.listen, endpoint, reason)) return false;
  options.Listen = endpoint;
  return true;
}

bool ParseControl(const RawOptions& raw, ProjectorOptions& options, std::string& reason) {
  if (raw.control.empty()) return true;
  options.Control.emplace();
  return ParsePlace("--control", raw.control, *options.Control, reason);
}

bool ParseReplay(const RawOptions& raw, ProjectorOptions& options, std::string& reason) {
  options.Record = PathIfAny(raw.record);
  options.Replay = PathIfAny(raw.replay);
  if (raw.replay_to.empty()) return true;
  options.ReplayTo.emplace();
  return ParsePlace("--replay-to", raw.replay_to, *options.ReplayTo, reason);
}

bool ReadProfile(const std::string& path, ProjectorSetup& projector, std::string& reason) {
  if (path.empty()) return true;
  std::string text;
  if (const std::error_code error = ReadWholeFile(PathOf(path), text)) {
    reason = SystemErrorText(error);
  } else if (const std::optional<Profile> profile = ParseProfile(text, reason)) {
    projector = profile->Projector;
    return true;
  }
  reason = "The profile \"" + path + "\" cannot be used: " + reason;
  return false;
}

// What the options say about the projector itself goes over what its profile says.
bool DescribeProjector(const RawOptions& raw, ProjectorSetup& projector, std::string& reason) {
  if (!ReadProfile(raw.profile, projector, reason)) return false;
  projector.ModelClass = raw.model_class.value_or(projector.ModelClass);
  projector.Reply5 = raw.reply5.value_or(projector.Reply5);
  if (raw.no_panel_info) projector.ReportsPanel = false;
  projector.PowerState = raw.power == "on" ? Power::kOn : Power::kStandby;
  if (raw.panel.empty()) return true;
  const std::optional<PanelSize> panel = PanelSizeOf(raw.panel);
  projector.Panel = panel.value_or(projector.Panel);
  if (!panel) {
    reason = "--panel needs WIDTHxHEIGHT with 64 to 4096 pixels each way, as in 1024x768.";
  }
  return panel.has_value();
}

std::uint64_t NewSeed() {
  return std::random_device()() % 1'000'000;
}

bool Understand(const RawOptions& raw, ProjectorOptions& options, std::string& reason) {
  options.Station.State = PathIfAny(raw.state);
  options.Station.Picture = PathIfAny(raw.picture);
  options.Station.Seed = raw.seed ? *raw.seed : NewSeed();
  options.Station.SpeedUp = raw.speed_up;
  options.FastSerial = raw.fast_serial;
  options.Headless = raw.headless;
  options.Japanese = raw.language.empty() ? SystemLanguageIsJapanese() : raw.language == "ja";
  options.Discovery = !raw.no_discovery && raw.usb == 0;
  return DescribeProjector(raw, options.Station.Projector, reason) &&
         ChoosePlaces(raw, options, reason) && ParseControl(raw, options, reason) &&
         ParseReplay(raw, options, reason) && ParseFaults(raw.faults, options, reason);
}

}  // namespace

std::optional<ProjectorOptions> ParseProjectorOptions(const std::vector<std::string>& words,
                                                      std::ostream& out, std::ostream& err,
                                                      int& exit_code) {
  CLI::App app(kDescription, "warpline-projector");
  RawOptions raw;
  Declare(app, raw);
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
  } catch (const CLI::ParseError& error) {
    exit_code = app.exit(error, out, err) == 0 ? 0 : 2;
    return std::nullopt;
  }
  ProjectorOptions options;
  std::string reason;
  if (Understand(raw, options, reason)) return options;
  err << reason << "\n";
  exit_code = 2;
  return std::nullopt;
}

}  // namespace warpline::sim
