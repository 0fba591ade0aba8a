#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "sim/faults.h"
#include "sim/picture.h"
#include "sim/projector.h"
#include "sim/state_file.h"

// A projector in operation: it serves links, its faults strike, and its files follow what it does.
// All calls may come from several threads.

namespace warpline::sim {

struct StationSetup {
  ProjectorSetup Projector;
  std::vector<FaultRule> Faults;                 // the first rule that matches strikes
  std::optional<std::filesystem::path> State;    // rewritten after every exchange
  std::optional<std::filesystem::path> Picture;  // rewritten whenever the shown set changes
  std::function<void(const std::string&)>
      Log;  // told, in sentences, what cannot be read or written
};

// What can be asked about a projector in operation.
struct StationSnapshot {
  RegisterSet Working;
  RegisterSet Stored;
  int Mode = 0;
  std::int32_t Input = 0;
  Counters Count;
  Session LastSession;
  std::vector<Bytes> ToolFrames;  // the most recent link's raw frames, at most kKeptFrames
  std::uint64_t Links = 0;        // opened so far
  std::size_t OpenLinks = 0;
};

inline constexpr std::size_t kKeptFrames = 1024;

class Station {
 public:
  // The stored set comes from the state file when there is one. A state file that cannot be used
  // is kept beside the new one under the name with ".kept" behind it.
  explicit Station(StationSetup setup);

  int OpenLink();
  void CloseLink(int link);

  // Executes a frame that came over an open link. The files are complete when this returns.
  Outgoing Exchange(int link, ByteView frame);

  StationSnapshot Snapshot() const;

  // Puts other rules in force from the next exchange on.
  void SetFaults(std::vector<FaultRule> faults);

 private:
  const FaultRule* FaultFor(ByteView frame) const;
  void Note(int link, ByteView frame);
  void WriteState();
  void WritePicture();
  void WriteFile(const std::filesystem::path& path, const std::string& bytes);

  StationSetup setup_;
  mutable std::mutex mutex_;
  SimulatedProjector projector_;
  RgbImage source_;  // the picture before any correction
  std::map<int, LinkMemory> links_;
  int newest_link_ = -1;
  std::uint64_t link_count_ = 0;
  Session session_;
  std::vector<Bytes> tool_frames_;
};

}  // namespace warpline::sim
