#include "sim/station/control.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <vector>

#include "core/conversions.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {
namespace {

constexpr milliseconds kLookMs{10};  // a command waits no longer for attention
constexpr milliseconds kAnswerLimitMs{2000};
constexpr std::size_t kMaxCallers = 8;

std::string Done(const std::vector<std::string>& lines = {}) {
  std::string answer;
  for (const std::string& line : lines) answer += "  " + line + "\n";
  return answer + "ok\n";
}

std::string Failed(const std::string& reason) {
  return "error: " + reason + "\n";
}

std::string Row(const char* name, std::uint64_t value) {
  return std::string(name) + ": " + std::to_string(value);
}

std::string Status(Station& station, std::string_view) {
  const StationSnapshot state = station.Snapshot();
  return Done({"name: " + state.Name, "power: " + std::string(PowerName(state.Setup.PowerState)),
               "mode: " + std::to_string(state.Mode), "input: " + std::to_string(state.Input),
               Row("exchanges", state.Count.Exchanges), Row("refused", state.Count.Refused),
               Row("shows", state.Count.Shows), Row("stores", state.Count.Stores),
               Row("bytes in", state.BytesIn), Row("bytes out", state.BytesOut),
               Row("links", state.Links), Row("open links", state.OpenLinks),
               Row("seed", state.Seed)});
}

std::string Faults(Station& station, std::string_view) {
  return Done(station.Snapshot().Faults);
}

std::string Strikes(Station& station, std::string_view) {
  return Done(station.Snapshot().Strikes);
}

std::string AddFault(Station& station, std::string_view text) {
  NamedText reason;
  const std::optional<FaultRule> rule = ParseFaultRule(text, reason);
  if (!rule) return Failed(ProjectorTextsOf(Language::kEnglish).Say(reason));
  station.AddFault(*rule);
  if (rule->Chance == 1 && rule->Jitter.count() == 0) return Done();
  return Done({Row("seed", station.Snapshot().Seed)});
}

std::string Clear(Station& station, std::string_view text) {
  if (text.empty()) {
    station.SetFaults({});
    return Done();
  }
  if (station.RemoveFault(text)) return Done();
  return Failed("no such rule is in force");
}

std::string Seed(Station& station, std::string_view text) {
  const auto seed = WholeNumber<std::uint64_t>(text, 0, std::numeric_limits<std::uint64_t>::max());
  if (!seed) return Failed("seed needs a whole number");
  station.SetSeed(*seed);
  return Done();
}

std::string TurnPower(Station& station, std::string_view text) {
  if (text != "on" && text != "standby") return Failed("power needs on or standby");
  station.TurnPower(text == "on");
  return Done();
}

std::string SpeedUp(Station& station, std::string_view text) {
  const std::optional<int> factor = WholeNumber(text, 1, kHighestSpeedUp);
  if (!factor) return Failed("speedup needs a number from 1 to 1000");
  station.SetSpeedUp(*factor);
  return Done();
}

std::string Restart(Station& station, std::string_view) {
  station.Restart();
  return Done();
}

struct ControlRow {
  std::string_view name;
  std::string_view argument;
  std::string (*run)(Station&, std::string_view);
};

constexpr std::array kCommands{
    ControlRow{"status", "", &Status},
    ControlRow{"faults", "", &Faults},
    ControlRow{"strikes", "", &Strikes},
    ControlRow{"fault", " RULE", &AddFault},
    ControlRow{"clear", " [RULE]", &Clear},
    ControlRow{"seed", " N", &Seed},
    ControlRow{"power", " on|standby", &TurnPower},
    ControlRow{"speedup", " N", &SpeedUp},
    ControlRow{"restart", "", &Restart},
};

std::string Help() {
  std::vector<std::string> lines;
  lines.reserve(kCommands.size());
  for (const ControlRow& row : kCommands)
    lines.push_back(std::string(row.name) + std::string(row.argument));
  return Done(lines);
}

}  // namespace

std::string ControlAnswer(Station& station, std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  const std::size_t blank = line.find(' ');
  const std::string_view name = line.substr(0, blank);
  const std::string_view rest =
      blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
  if (name == "help") return Help();
  const auto* row = std::ranges::find(kCommands, name, &ControlRow::name);
  if (row == kCommands.end()) return Failed("no such command; help lists them");
  if (row->argument.empty() && !rest.empty()) {
    return Failed(std::string(name) + " takes nothing behind it");
  }
  return row->run(station, rest);
}

bool ControlServer::Listen(const Endpoint& endpoint, NamedText& reason) {
  listener_ = Listener::Open(endpoint, reason);
  if (!listener_) return false;
  where_ = listener_->Where();
  thread_ = std::thread([this] { Serve(); });
  return true;
}

void ControlServer::Stop() {
  stopping_ = true;
  if (thread_.joinable()) thread_.join();
  clients_.clear();
  listener_.reset();
}

void ControlServer::Serve() {
  while (!stopping_) {
    std::unique_ptr<Channel> channel = listener_->Accept(kLookMs, stopping_);
    if (channel && clients_.size() < kMaxCallers) clients_.push_back({std::move(channel), {}});
    clients_.remove_if([this](Client& client) { return !Attend(client); });
  }
}

// False when the client is gone or to be let go.
bool ControlServer::Attend(Client& client) {
  std::array<std::uint8_t, 4096> buffer{};
  const ReadResult read = client.channel->Read(buffer, milliseconds(0));
  if (read.Status == ChannelStatus::kClosed) return false;
  client.unread.append(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(read.Count));
  for (std::size_t end = 0; (end = client.unread.find('\n')) != std::string::npos;) {
    const std::string answer =
        ControlAnswer(station_, std::string_view(client.unread).substr(0, end));
    client.unread.erase(0, end + 1);
    const Bytes bytes(answer.begin(), answer.end());
    if (client.channel->Write(bytes, kAnswerLimitMs) != ChannelStatus::kOk) return false;
  }
  return client.unread.size() <= kMaxControlLine;
}

}  // namespace warpline::sim
