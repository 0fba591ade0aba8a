#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "picture/camera.h"
#include "picture/picture.h"
#include "picture/wall.h"
#include "sim/device/power.h"
#include "sim/device/projector.h"
#include "sim/faults/fault_box.h"
#include "sim/recording/replay.h"
#include "sim/station/state_file.h"

// A projector in operation: it serves links, its faults strike, and its files follow what it does.
// All calls may come from several threads.

namespace warpline::sim {

using Log = std::function<void(const NamedText&)>;

// One exchange as it went over the line, the library's own operations included.
struct LoggedExchange {
  std::uint64_t Number = 0;  // since the start, from 1; 0: an echo
  int Link = 0;
  Bytes Request;
  Bytes Reply;        // as it went out
  std::string Fault;  // the rule that struck, empty when none did; kMismatch: not in the recording
};

inline constexpr const char* kMismatch = "mismatch";

struct StationSetup {
  std::string Name = {};  // of its profile, for people
  ProjectorSetup Projector = {};
  std::vector<FaultRule> Faults = {};  // the first rule that matches strikes
  // When there, every answer comes from it; a request that it does not hold is not answered.
  std::optional<std::vector<RecordedEvent>> Replay = {};
  std::optional<std::filesystem::path> State = {};    // rewritten after every exchange
  std::optional<std::filesystem::path> Picture = {};  // rewritten whenever the shown set changes
  std::optional<warpline::Wall> Wall = {};  // that the picture falls on; none: the bare panel
  // Of the wall; rewritten as Picture is, but behind the reply: see Station::WriteDuePhoto.
  std::optional<std::filesystem::path> Photo = {};
  std::optional<warpline::Camera> Camera = {};  // that takes it; none: the usual one
  std::optional<RgbImage> Source = {};  // of the panel's size, sent to it; none: the test card
  sim::Log Log = {};                    // told what cannot be read, written or answered
  // Told when a fault strikes: "exchange 7: kind=21:refuse".
  std::function<void(const std::string&)> OnStrike = {};
  std::uint64_t Seed = 1;  // of the faults that are left to chance
  int SpeedUp = 1;         // of warming up and cooling down
  std::function<Clock::time_point()> Now = &Clock::now;
};

// What can be asked about a projector in operation.
struct StationSnapshot {
  std::string Name;  // empty when it has none
  RegisterSet Working;
  RegisterSet Stored;
  int Mode = 0;
  std::int32_t Input = 0;
  Counters Count;
  LinkTraffic LastTraffic;
  std::vector<Bytes> ToolFrames;  // the most recent link's raw frames, at most kKeptFrames
  std::uint64_t Links = 0;        // opened so far
  std::size_t OpenLinks = 0;
  ProjectorSetup Setup;       // with the power state of now
  milliseconds PowerLeft{0};  // how long warming up or cooling down lasts
  int SpeedUp = 1;
  std::uint64_t BytesIn = 0;  // echoes excepted
  std::uint64_t BytesOut = 0;
  std::vector<std::string> Faults;   // in force
  std::vector<std::string> Strikes;  // the last ones, oldest first
  std::uint64_t Seed = 0;
  std::uint64_t Mismatches = 0;          // requests that the recording did not hold
  std::uint64_t Agreeing = 0;            // requests that it held
  std::size_t FirstMismatch = 0;         // the line where it went on when the first one came
  std::deque<LoggedExchange> Exchanges;  // the last ones, oldest first, at most kKeptExchanges
};

inline constexpr std::size_t kKeptFrames = 1024;
inline constexpr std::size_t kKeptExchanges = 200;

// How a caller is received.
enum class Welcome { kServed, kTurnedAway, kIgnored };

struct Reception {
  Welcome How = Welcome::kServed;
  int Link = 0;  // of a served one
};

class Station {
 public:
  // The stored set comes from the state file when there is one. A state file that cannot be used
  // is kept beside the new one under the name with ".kept" behind it.
  explicit Station(StationSetup setup);

  // A caller is there: opens a link unless a fault is in the way.
  Reception Receive();
  int OpenLink();
  void CloseLink(int link);

  // True when callers are not even to be heard.
  bool RefusesEveryLink() const;

  // True while the link stands; a restart ends all links.
  bool IsOpen(int link) const;

  // Executes a frame that came over an open link. The files are complete when this returns, but for
  // the photograph: a large one takes longer than a caller waits for a reply.
  Outgoing Exchange(int link, ByteView frame);

  // Writes the photograph when what is shown has changed since the last one. To be called once a
  // reply is on its way and before the next frame of its link.
  void WriteDuePhoto();

  StationSnapshot Snapshot();

  // The time by which it works.
  Clock::time_point Now() const { return setup_.Now(); }

  // Changes with everything that a snapshot shows, but for a power change's remaining time.
  std::uint64_t Revision();

  // Faults, from the next exchange on.
  void SetFaults(std::vector<FaultRule> faults);
  void AddFault(FaultRule fault);
  bool RemoveFault(std::string_view text);
  void SetSeed(std::uint64_t seed);

  void TurnPower(bool on);
  void SetSpeedUp(int factor);
  void Restart();

 private:
  void OpenLinkLocked();
  void FollowPower();
  void FollowPowerLocked();
  void RestartLocked();
  Bytes Execute(LinkMemory& memory, const std::optional<FaultRule>& fault, ByteView frame);
  Outgoing Answer(LinkMemory& memory, const std::optional<FaultRule>& fault, ByteView frame);
  Outgoing Replayed(LinkMemory& memory, ByteView frame);
  void NoteMismatch(ByteView frame);
  void Note(int link, ByteView frame, const Outgoing& outgoing,
            const std::optional<FaultRule>& fault);
  void TellStrike() const;
  void WriteState();
  void WritePicture();
  void WritePhoto(const RgbImage& panel_picture);
  void WriteFile(const std::filesystem::path& path, const std::string& bytes);

  StationSetup setup_;
  mutable std::mutex mutex_;
  std::mutex photo_mutex_;  // held while a photograph is taken and written; taken before mutex_
  std::optional<RgbImage> photo_due_;  // what the panel shows
  SimulatedProjector projector_;
  PowerSwitch power_;
  FaultBox faults_;
  std::optional<Playback> playback_;
  std::vector<std::string> mismatches_;  // the requests, at most kKeptStrikes
  std::uint64_t mismatch_count_ = 0;
  std::uint64_t agreeing_ = 0;
  std::size_t first_mismatch_ = 0;
  RgbImage source_;  // the picture before any correction
  std::map<int, LinkMemory> links_;
  int newest_link_ = -1;
  std::uint64_t link_count_ = 0;
  std::uint64_t callers_ = 0;
  std::uint64_t revision_ = 0;
  std::uint64_t bytes_in_ = 0;
  std::uint64_t bytes_out_ = 0;
  LinkTraffic traffic_;
  std::vector<Bytes> tool_frames_;
  std::deque<LoggedExchange> exchanges_;
};

}  // namespace warpline::sim
