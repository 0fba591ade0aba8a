#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "core/system.h"
#include "sim/control.h"
#include "sim/discovery.h"
#include "sim/projector_options.h"
#include "sim/server.h"
#include "sim/stop_signal.h"
#include "sim/window/window.h"

namespace {

using warpline::sim::ControlServer;
using warpline::sim::ProjectorOptions;
using warpline::sim::Server;

bool OpenPlaces(Server& server, ControlServer& control, const ProjectorOptions& options) {
  std::string reason;
  const bool open =
      (!options.Listen || server.Listen(*options.Listen, reason)) &&
      (!options.Control || control.Listen(*options.Control, reason)) &&
      (!options.Serial || server.OfferSerial(*options.Serial, options.FastSerial, reason));
  if (!open) std::cerr << reason << "\n";
  return open;
}

// Null when it is not wanted, or when another projector of this address answers already, which is
// no reason not to work.
std::unique_ptr<warpline::sim::DiscoveryResponder> AnswerSearches(const ProjectorOptions& options,
                                                                  const Server& server) {
  if (!options.Discovery || !options.Listen) return nullptr;
  return warpline::sim::DiscoveryResponder::Open(
      {server.Where().Address, warpline::sim::DiscoveryPort()},
      warpline::sim::AnswerOf(options.Station.Projector, server.Where()));
}

std::string TextOf(const Server& server, const ProjectorOptions& options) {
  return options.Listen ? TextOf(server.Where()) : warpline::Utf8Of(*options.Serial);
}

// What a caller of the program waits for. A seed that was drawn here is of use only when it is
// told.
void TellPlaces(const Server& server, const ControlServer& control,
                const ProjectorOptions& options) {
  std::cout << "listening on " << TextOf(server, options) << std::endl;
  if (options.Control) std::cout << "control on " << TextOf(control.Where()) << std::endl;
  if (options.LeftToChance) std::cerr << "fault seed " << options.Station.Seed << std::endl;
}

int Run(ProjectorOptions options) {
  options.Station.Log = [](const std::string& text) { std::cerr << text << std::endl; };
  warpline::sim::StopSignal stop;
  warpline::sim::Station station(options.Station);
  Server server(station);
  ControlServer control(station);
  if (!OpenPlaces(server, control, options)) return 1;
  const auto responder = AnswerSearches(options, server);
  TellPlaces(server, control, options);
  if (!options.Headless) {
    const warpline::sim::WindowRequest request{
        station, TextOf(server, options), options.Japanese,
        [&stop] { return stop.WaitFor(std::chrono::milliseconds(0)); }};
    options.Headless = !RunWindow(request);
    if (options.Headless) std::cerr << "No window can be shown; running without." << std::endl;
  }
  if (options.Headless) stop.Wait();
  control.Stop();
  server.Stop();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    int exit_code = 0;
    const std::optional<ProjectorOptions> options = warpline::sim::ParseProjectorOptions(
        warpline::CommandLineWords(argc, argv), std::cout, std::cerr, exit_code);
    return options ? Run(*options) : exit_code;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
}
