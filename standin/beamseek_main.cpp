#include <cstdint>
#include <exception>

#include "link/beamseek.h"
#include "standin/beamseek_standin.h"

// The entry points of the stand-in search library. No exception leaves them.

namespace {

using warpline::sim::BeamseekStandin;

BeamseekStandin& Library() {
  static BeamseekStandin library(warpline::sim::MakeSelectionWindow, {.Port = 0});
  return library;
}

template <typename Call>
std::int32_t Guarded(Call call) {
  try {
    return call(Library());
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace

#define STANDIN_EXPORT extern "C" WARPLINE_EXPORT std::int32_t WARPLINE_LIBRARY_CALL

STANDIN_EXPORT ConnectSelectCreate(const warpline::csAdapterList* adapters,
                                   warpline::ConnectSelectCallback* callback, void* user,
                                   std::int32_t flags, std::int32_t* handle,
                                   const warpline::csResData** result) {
  return Guarded([=](BeamseekStandin& library) {
    return library.Create(adapters, callback, user, flags, handle, result);
  });
}

STANDIN_EXPORT ConnectSelectSetLastPJ(std::int32_t handle, const char* address) {
  return Guarded([=](BeamseekStandin& library) { return library.SetLastPJ(handle, address); });
}

STANDIN_EXPORT ConnectSelectStart(std::int32_t handle) {
  return Guarded([=](BeamseekStandin& library) { return library.Start(handle); });
}

STANDIN_EXPORT ConnectSelectRestart(std::int32_t handle, std::int32_t flag) {
  return Guarded([=](BeamseekStandin& library) { return library.Restart(handle, flag); });
}

STANDIN_EXPORT ConnectSelectDestroy(std::int32_t handle) {
  return Guarded([=](BeamseekStandin& library) { return library.Destroy(handle); });
}

// Says what the library is; see link/beamlink.h.
STANDIN_EXPORT WarplineStandIn() {
  return 1;
}

// The simulation does not offer these.
#define STANDIN_NOT_OFFERED(name) \
  STANDIN_EXPORT name() {         \
    return 0;                     \
  }
WARPLINE_BEAMSEEK_DECLARED(STANDIN_NOT_OFFERED)
