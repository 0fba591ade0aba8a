#include "sim/projector_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <string_view>

#include "core/system.h"
#include "sim/beamlink_standin.h"

namespace warpline::sim {
namespace {

constexpr const char* kDescription =
    "A simulated projector. It keeps the correction registers that the tool sends, checks every "
    "frame, and shows what the corrected picture looks like. It listens on this machine only.";

constexpr const char* kFooter =
    "Faults: a rule is WHEN:WHAT.\n"
    "  WHEN  nth=N (the Nth exchange, from 1) or kind=NAME with any, probe, class, running,\n"
    "        panel, status, input, prepare, mode, block or a command number\n"
    "  WHAT  timeout, refuse, short, long, checksum, late=MS, slow, cut, cutmid\n"
    "  Example: --fault kind=21:refuse --fault nth=3:late=400\n"
    "When it is ready it prints one line, \"listening on \" and the place. Ctrl+C or SIGTERM ends "
    "it.\n"
    "Exit codes: 0 ended as asked, 1 it could not work, 2 wrong usage.";

// What the words say, before it is understood.
struct RawOptions {
  std::string listen;
  std::string panel = "1024x768";
  std::string power = "on";
  std::string serial;
  std::string state;
  std::string picture;
  std::vector<std::string> faults;
  int usb = 0;
  int model_class = 5;
  int reply5 = 0;
  bool no_panel_info = false;
  bool headless = false;
  bool no_discovery = false;
};

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
  app.add_option("--panel", raw.panel, "Panel size WxH, 64 to 4096 pixels each way")
      ->capture_default_str();
  app.add_flag("--no-panel-info", raw.no_panel_info, "Do not report the panel size when asked");
  app.add_option("--class", raw.model_class,
                 "Model class: below 2 no correction, below 3 no store, 3 and 4 store as a whole "
                 "block, from 5 on by command")
      ->check(CLI::Range(0, 255))
      ->capture_default_str();
  app.add_option("--reply5", raw.reply5, "Byte 5 of the model-class answer (memory layout)")
      ->check(CLI::Range(0, 255))
      ->capture_default_str();
  app.add_option("--power", raw.power, "Power state")
      ->check(CLI::IsMember({"on", "standby"}))
      ->capture_default_str();
  app.add_flag("--no-discovery", raw.no_discovery,
               "Do not answer when the tool searches for projectors");
  app.add_flag("--headless", raw.headless, "Run without a window; the only mode so far");
  app.add_option("--state", raw.state,
                 "JSON file that is rewritten after every exchange; the stored correction is read "
                 "back from it at start");
  app.add_option("--picture", raw.picture,
                 "PNG file of the corrected test picture, rewritten whenever it changes");
  app.add_option("--fault", raw.faults, "A fault rule, see below; may be given several times")
      ->take_all()
      ->allow_extra_args(false);
}

std::optional<int> PanelSide(std::string_view text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < kMinPanel || value > kMaxPanel) {
    return std::nullopt;
  }
  return value;
}

bool ParsePanel(std::string_view text, PanelSize& panel, std::string& reason) {
  const std::size_t cross = text.find('x');
  const std::optional<int> width = PanelSide(text.substr(0, cross));
  const std::optional<int> height =
      cross == std::string_view::npos ? std::nullopt : PanelSide(text.substr(cross + 1));
  if (width && height) {
    panel = {*width, *height};
    return true;
  }
  reason = "--panel needs WIDTHxHEIGHT with 64 to 4096 pixels each way, as in 1024x768.";
  return false;
}

bool ParseListen(std::string_view text, Endpoint& endpoint, std::string& reason) {
  const std::size_t colon = text.rfind(':');
  const std::optional<std::uint32_t> address = LoopbackAddress(text.substr(0, colon));
  const std::optional<std::uint16_t> port =
      colon == std::string_view::npos ? std::nullopt : PortNumber(text.substr(colon + 1));
  if (!address) {
    reason =
        "--listen needs a loopback address (127.x.x.x or localhost) and a port, as in "
        "127.0.0.1:7142; the simulated projector serves this machine only.";
  } else if (!port) {
    reason = "--listen needs a port from 0 to 65535 behind the address, as in 127.0.0.1:7142.";
  } else {
    endpoint = {*address, *port};
  }
  return address && port;
}

bool ParseFaults(const std::vector<std::string>& texts, std::vector<FaultRule>& rules,
                 std::string& reason) {
  for (const std::string& text : texts) {
    const std::optional<FaultRule> rule = ParseFaultRule(text, reason);
    if (!rule) return false;
    rules.push_back(*rule);
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
  if (!raw.listen.empty() && !ParseListen(raw.listen, endpoint, reason)) return false;
  options.Listen = endpoint;
  return true;
}

bool Understand(const RawOptions& raw, ProjectorOptions& options, std::string& reason) {
  ProjectorSetup& projector = options.Station.Projector;
  projector.ModelClass = raw.model_class;
  projector.Reply5 = raw.reply5;
  projector.ReportsPanel = !raw.no_panel_info;
  projector.PowerState = raw.power == "on" ? Power::kOn : Power::kStandby;
  options.Station.State = PathIfAny(raw.state);
  options.Station.Picture = PathIfAny(raw.picture);
  options.Discovery = !raw.no_discovery && raw.usb == 0;
  return ParsePanel(raw.panel, projector.Panel, reason) && ChoosePlaces(raw, options, reason) &&
         ParseFaults(raw.faults, options.Station.Faults, reason);
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
