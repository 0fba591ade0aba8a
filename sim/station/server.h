#pragma once

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <thread>

#include "sim/line/serial.h"
#include "sim/line/socket.h"
#include "sim/recording/recording.h"
#include "sim/station/station.h"

// Brings a projector in operation and its callers together: one thread per link.

namespace warpline::sim {

inline constexpr std::size_t kMaxLinks = 16;         // a caller beyond is turned away
inline constexpr milliseconds kIdleLimitMs{30'000};  // a caller idle for so long loses its place
inline constexpr milliseconds kFrameGapMs{1000};     // a frame that stops for longer is dropped
inline constexpr milliseconds kStopCheckMs{20};      // how long a stop may go unnoticed
inline constexpr milliseconds kSlowByteMs{2};        // between the bytes of a slow reply
inline constexpr milliseconds kWriteLimitMs{5000};

class Server {
 public:
  // The station must outlive the server, and so must the recorder, if there is one.
  explicit Server(Station& station, Recorder* recorder = nullptr)
      : station_(station), recorder_(recorder) {}
  ~Server() { Stop(); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // Accept callers from now on. False with the reason when that is not possible.
  bool Listen(const Endpoint& endpoint, NamedText& reason);
  // Bytes pass at the speed that the caller sets, or, when fast, as quickly as they can.
  bool OfferSerial(const std::filesystem::path& path, bool fast, NamedText& reason);

  // Where it listens or listened, the port that was found included.
  Endpoint Where() const { return where_; }

  // Closes everything and waits until all links have ended. May be called again.
  void Stop();

 private:
  struct ServedLink {
    std::unique_ptr<Channel> channel;
    std::atomic<bool> done{false};
    std::thread thread;
  };

  void AcceptLinks();
  std::unique_ptr<Channel> NextCaller();
  void StartLink(std::unique_ptr<Channel> channel, const Reception& reception);
  void IgnoreLink(Channel& channel);
  void ServeSerial();
  void ServeLink(Channel& channel, int link);
  bool AnswerFrames(Channel& channel, int link, FrameReader& reader);
  bool Deliver(Channel& channel, const Outgoing& outgoing,
               const std::function<void()>& before_reply);
  bool Pause(milliseconds time);
  void JoinEnded();

  Station& station_;
  Recorder* recorder_;
  std::atomic<bool> stopping_{false};
  std::unique_ptr<Listener> listener_;
  Endpoint where_;
  std::unique_ptr<PseudoTerminal> terminal_;
  bool fast_serial_ = false;
  std::thread accept_thread_;
  std::thread serial_thread_;
  std::list<ServedLink> links_;
};

}  // namespace warpline::sim
