#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "link/beamseek.h"
#include "sim/line/discovery.h"
#include "standin/beamseek_window.h"

// The search library's operations for simulated projectors: it looks at 127.0.0.1 to 127.0.0.16,
// whatever the adapters are. A projector can be chosen when it says so itself and serves the port
// that the tool uses if nobody changed it (7142): only its address is handed over, and the tool
// would not find it at another port. Results are those of link/beamseek.h; operations with a handle
// that does not exist return 0.
//
// With a window the user's decision is notified (2000 to 2004). Without one it notifies 2005 when
// all have been found. It never notifies 2008.

namespace warpline::sim {

// What was found; projectors beyond the record's capacity are left out.
SearchResult ResultOf(const std::vector<DiscoveredProjector>& projectors);

class BeamseekStandin {
 public:
  // Without a factory there are no windows. Port 0 of the range is DiscoveryPort() at each Create.
  BeamseekStandin(SelectionWindowFactory make_window, const DiscoveryRange& range);
  ~BeamseekStandin();
  BeamseekStandin(const BeamseekStandin&) = delete;
  BeamseekStandin& operator=(const BeamseekStandin&) = delete;

  // Fails when a window is wanted and there can be none.
  std::int32_t Create(const csAdapterList* adapters, ConnectSelectCallback* callback, void* user,
                      std::int32_t flags, std::int32_t* handle, const csResData** result);
  std::int32_t SetLastPJ(std::int32_t handle, const char* address);
  // Once for a search; later on only Restart.
  std::int32_t Start(std::int32_t handle);
  std::int32_t Restart(std::int32_t handle, std::int32_t flag);
  std::int32_t Destroy(std::int32_t handle);

 private:
  class Search;
  std::shared_ptr<Search> Find(std::int32_t handle);

  SelectionWindowFactory make_window_;
  DiscoveryRange range_;
  std::mutex mutex_;
  std::map<std::int32_t, std::shared_ptr<Search>> searches_;
  std::int32_t next_handle_ = 1;
};

}  // namespace warpline::sim
