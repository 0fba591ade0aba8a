#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "sim/station/server.h"
#include "sim/station/station.h"
#include "tests/support/said.h"

// A simulated projector that serves a free loopback port for as long as the object lives.

namespace warpline {

// The rules of these texts, as --fault takes them.
inline std::vector<sim::FaultRule> FaultRules(const std::vector<std::string>& texts) {
  std::vector<sim::FaultRule> rules;
  for (const std::string& text : texts) {
    NamedText reason;
    const std::optional<sim::FaultRule> rule = sim::ParseFaultRule(text, reason);
    if (!rule) throw std::invalid_argument(Said(reason));
    rules.push_back(*rule);
  }
  return rules;
}

class ProjectorServer {
 public:
  explicit ProjectorServer(const sim::ProjectorSetup& projector = {},
                           const std::vector<std::string>& faults = {})
      : ProjectorServer(sim::StationSetup{.Projector = projector, .Faults = FaultRules(faults)}) {}

  explicit ProjectorServer(sim::StationSetup setup) : station_(Telling(std::move(setup))) {
    NamedText reason;
    if (!server_.Listen({}, reason)) throw std::runtime_error(Said(reason));
  }

  // A test that has failed says what its projector was told to do wrong.
  ~ProjectorServer() {
    if (!testing::Test::HasFailure()) return;
    const sim::StationSnapshot state = station_.Snapshot();
    std::cerr << "projector at " << Place() << "\n";
    for (const std::string& fault : state.Faults)
      std::cerr << "  fault in force: " << fault << "\n";
    for (const std::string& strike : state.Strikes) std::cerr << "  struck " << strike << "\n";
  }
  ProjectorServer(const ProjectorServer&) = delete;
  ProjectorServer& operator=(const ProjectorServer&) = delete;

  Endpoint Where() const { return server_.Where(); }
  std::string Address() const { return "127.0.0.1"; }
  std::string Port() const { return std::to_string(server_.Where().Port); }

  // "127.0.0.1:PORT", as the command line's --lan takes it.
  std::string Place() const { return TextOf(server_.Where()); }

  // What it holds and has received by now.
  sim::StationSnapshot Snapshot() const { return station_.Snapshot(); }

  // Other faults from the next exchange on.
  void SetFaults(const std::vector<std::string>& texts) { station_.SetFaults(FaultRules(texts)); }

  sim::Station& Station() { return station_; }

  // From now on callers are refused.
  void Stop() { server_.Stop(); }

 private:
  // Told at once too, as a test that hangs never gets to its end.
  static sim::StationSetup Telling(sim::StationSetup setup) {
    if (!setup.OnStrike) {
      setup.OnStrike = [](const std::string& strike) {
        std::cerr << "fault struck " << strike << "\n";
      };
    }
    return setup;
  }

  mutable sim::Station station_;  // a look at it lets its time pass
  sim::Server server_{station_};
};

}  // namespace warpline
