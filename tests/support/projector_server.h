#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "sim/server.h"
#include "sim/station.h"

// A simulated projector that serves a free loopback port for as long as the object lives.

namespace warpline {

// The rules of these texts, as --fault takes them.
inline std::vector<sim::FaultRule> FaultRules(const std::vector<std::string>& texts) {
  std::vector<sim::FaultRule> rules;
  for (const std::string& text : texts) {
    std::string reason;
    const std::optional<sim::FaultRule> rule = sim::ParseFaultRule(text, reason);
    if (!rule) throw std::invalid_argument(reason);
    rules.push_back(*rule);
  }
  return rules;
}

class ProjectorServer {
 public:
  explicit ProjectorServer(const sim::ProjectorSetup& projector = {},
                           const std::vector<std::string>& faults = {})
      : ProjectorServer(
            sim::StationSetup{projector, FaultRules(faults), std::nullopt, std::nullopt, {}}) {}

  explicit ProjectorServer(sim::StationSetup setup) : station_(std::move(setup)) {
    std::string reason;
    if (!server_.Listen({}, reason)) throw std::runtime_error(reason);
  }

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
  sim::Station station_;
  sim::Server server_{station_};
};

}  // namespace warpline
