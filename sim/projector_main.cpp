#include <chrono>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/environment.h"
#include "platform/files.h"
#include "platform/stop_signal.h"
#include "sim/line/discovery.h"
#include "sim/projector_options.h"
#include "sim/recording/recording.h"
#include "sim/recording/replay.h"
#include "sim/station/announcement.h"
#include "sim/station/control.h"
#include "sim/station/server.h"
#include "sim/texts/projector_texts.h"
#include "sim/window/window.h"

namespace {

using warpline::sim::ControlServer;
using warpline::sim::ProjectorOptions;
using warpline::sim::ProjectorText;
using warpline::sim::ProjectorTexts;
using warpline::sim::RecordedEvent;
using warpline::sim::Recorder;
using warpline::sim::Server;
using warpline::sim::Station;

const ProjectorTexts& TextsOf(const ProjectorOptions& options) {
  return warpline::sim::ProjectorTextsOf(options.Language);
}

bool OpenPlaces(Server& server, ControlServer& control, const ProjectorOptions& options) {
  warpline::NamedText reason;
  const bool open =
      (!options.Listen || server.Listen(*options.Listen, reason)) &&
      (!options.Control || control.Listen(*options.Control, reason)) &&
      (!options.Serial || server.OfferSerial(*options.Serial, options.FastSerial, reason));
  if (!open) std::cerr << TextsOf(options).Say(reason) << "\n";
  return open;
}

// Null when it is not wanted, or when another projector of this address answers already, which is
// no reason not to work.
std::unique_ptr<warpline::sim::DiscoveryResponder> AnswerSearches(const ProjectorOptions& options,
                                                                  const Server& server,
                                                                  Station& station) {
  if (!options.Discovery || !options.Listen) return nullptr;
  return warpline::sim::DiscoveryResponder::Open(
      {server.Where().Address, warpline::sim::DiscoveryPort()}, [&station, place = server.Where()] {
        return warpline::sim::AnswerOf(station.Snapshot().Setup, place);
      });
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
  if (!options.LeftToChance) return;
  std::cerr << TextsOf(options).Fill(ProjectorText::kDrawnSeed,
                                     {std::to_string(options.Station.Seed)})
            << std::endl;
}

// Nothing, and the reason is told, when it cannot be used.
std::optional<std::vector<RecordedEvent>> ReadRecording(const std::filesystem::path& path,
                                                        const ProjectorTexts& texts) {
  std::string text;
  warpline::NamedText reason;
  if (const std::error_code error = warpline::ReadWholeFile(path, text)) {
    reason = {"SystemError", {warpline::SystemErrorText(error)}};
  } else if (auto events = warpline::sim::ParseRecording(text, reason)) {
    return events;
  }
  std::cerr << texts.Fill(ProjectorText::kRecordingUnusable,
                          {warpline::Utf8Of(path), texts.Say(reason)})
            << "\n";
  return std::nullopt;
}

// How far the tool asked what was asked when the recording was made.
void TellReplay(Station& station, const ProjectorTexts& texts) {
  const warpline::sim::StationSnapshot state = station.Snapshot();
  const bool differed = state.Mismatches > 0;
  std::cout << texts.Fill(
                   differed ? ProjectorText::kReplayServedFirst : ProjectorText::kReplayServed,
                   {std::to_string(state.Agreeing), std::to_string(state.Mismatches),
                    std::to_string(state.FirstMismatch)})
            << std::endl;
}

int Serve(ProjectorOptions options, Recorder* recorder) {
  options.Station.Log = [&texts = TextsOf(options)](const warpline::NamedText& text) {
    std::cerr << texts.Say(text) << std::endl;
  };
  warpline::StopSignal stop;
  Station station(options.Station);
  Server server(station, recorder);
  ControlServer control(station);
  if (!OpenPlaces(server, control, options)) return 1;
  const auto responder = AnswerSearches(options, server, station);
  TellPlaces(server, control, options);
  if (!options.Headless) {
    const warpline::sim::WindowRequest request{
        station,
        TextOf(server, options),
        options.Language,
        [&stop] { return stop.WaitFor(std::chrono::milliseconds(0)); },
        options.Station.Wall,
        options.Station.Source,
        options.Station.Camera};
    options.Headless = !RunWindow(request);
    if (options.Headless) std::cerr << TextsOf(options)[ProjectorText::kNoWindow] << std::endl;
  }
  if (options.Headless) stop.Wait();
  control.Stop();
  server.Stop();
  if (options.Station.Replay) TellReplay(station, TextsOf(options));
  return 0;
}

int Run(ProjectorOptions options) {
  if (options.Replay) {
    options.Station.Replay = ReadRecording(*options.Replay, TextsOf(options));
    if (!options.Station.Replay) return 1;
  }
  if (options.ReplayTo) {
    const bool agrees = warpline::sim::ReplayTo(*options.Station.Replay, *options.ReplayTo, {},
                                                TextsOf(options), std::cout);
    return agrees ? 0 : 1;
  }
  if (!options.Record) return Serve(std::move(options), nullptr);
  const std::unique_ptr<std::ofstream> file = warpline::OpenRecord(*options.Record);
  if (!file) {
    std::cerr << TextsOf(options).Fill(ProjectorText::kRecordingNotWritable,
                                       {warpline::Utf8Of(*options.Record)})
              << "\n";
    return 1;
  }
  Recorder recorder(*file);
  const int exit_code = Serve(options, &recorder);
  if (*file) return exit_code;
  std::cerr << TextsOf(options)[ProjectorText::kRecordingIncomplete] << "\n";
  return 1;
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
