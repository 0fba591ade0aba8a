#pragma once

#include <atomic>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "sim/line/socket.h"
#include "sim/station/station.h"

// The control port: a person, a script or a test switches the projector's faults and power while it
// runs. One command a line, UTF-8; the answer is any number of lines that begin with two blanks and
// one last line, "ok" or "error: " and the reason.
//   help             the commands
//   status           power, mode, input and counters, one "name: value" a line
//   faults           the rules in force
//   strikes          what struck lately
//   fault RULE       puts a rule in force, as --fault takes it
//   clear [RULE]     takes that rule, or all of them, out of force
//   seed N           begins the draws anew
//   power on|standby turns the projector on or off
//   speedup N        how many times as fast it warms up and cools down, 1..1000
//   restart          what was only set is lost, connections are closed

namespace warpline::sim {

inline constexpr std::size_t kMaxControlLine = 1000;  // a client that sends a longer one is let go

// Executes a command line (without its end) and returns the whole answer.
std::string ControlAnswer(Station& station, std::string_view line);

class ControlServer {
 public:
  // The station must outlive the server.
  explicit ControlServer(Station& station) : station_(station) {}
  ~ControlServer() { Stop(); }
  ControlServer(const ControlServer&) = delete;
  ControlServer& operator=(const ControlServer&) = delete;

  // False with the reason when that is not possible.
  bool Listen(const Endpoint& endpoint, NamedText& reason);
  Endpoint Where() const { return where_; }
  void Stop();

 private:
  struct Client {
    std::unique_ptr<Channel> channel;
    std::string unread;
  };

  void Serve();
  bool Attend(Client& client);

  Station& station_;
  std::atomic<bool> stopping_{false};
  std::unique_ptr<Listener> listener_;
  Endpoint where_;
  std::list<Client> clients_;
  std::thread thread_;
};

}  // namespace warpline::sim
