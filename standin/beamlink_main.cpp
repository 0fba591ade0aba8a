#include <cstdint>
#include <exception>

#include "link/beamlink.h"
#include "standin/beamlink_standin.h"

// The entry points of the stand-in library. No exception leaves them.

namespace {

using warpline::sim::BeamlinkStandin;

BeamlinkStandin& Library() {
  static BeamlinkStandin library;
  return library;
}

template <typename Call>
std::int32_t Guarded(Call call) {
  try {
    return call(Library());
  } catch (const std::exception&) {
    return warpline::kBeamlinkCommandFailed;
  }
}

}  // namespace

#define STANDIN_EXPORT extern "C" WARPLINE_EXPORT std::int32_t WARPLINE_LIBRARY_CALL

STANDIN_EXPORT PJCommDevOpen(std::int32_t kind, const char* first, const char* second,
                             std::int32_t mode) {
  return Guarded([=](BeamlinkStandin& library) { return library.Open(kind, first, second, mode); });
}

STANDIN_EXPORT PJCommDevClose(std::int32_t handle) {
  return Guarded([=](BeamlinkStandin& library) { return library.Close(handle); });
}

STANDIN_EXPORT PJCommDevSetAckTimeout(std::int32_t handle, std::int32_t milliseconds) {
  return Guarded(
      [=](BeamlinkStandin& library) { return library.SetAckTimeout(handle, milliseconds); });
}

STANDIN_EXPORT PJGetRunningStatus(std::int32_t handle, warpline::PJRunningStatus* status) {
  return Guarded(
      [=](BeamlinkStandin& library) { return library.GetRunningStatus(handle, status); });
}

STANDIN_EXPORT PJAnyCommand(std::int32_t handle, const std::uint8_t* send, std::int32_t send_length,
                            std::uint8_t* reply, std::int32_t* reply_length) {
  return Guarded([=](BeamlinkStandin& library) {
    return library.AnyCommand(handle, send, send_length, reply, reply_length);
  });
}

STANDIN_EXPORT PJGetStatus(std::int32_t handle, warpline::PJStatus* status) {
  return Guarded([=](BeamlinkStandin& library) { return library.GetStatus(handle, status); });
}

STANDIN_EXPORT PJSetInput(std::int32_t handle, std::int32_t input) {
  return Guarded([=](BeamlinkStandin& library) { return library.SetInput(handle, input); });
}

STANDIN_EXPORT PJGetPcViewerInformation(std::int32_t handle,
                                        warpline::PJPcViewerInformation* information) {
  return Guarded([=](BeamlinkStandin& library) {
    return library.GetPcViewerInformation(handle, information);
  });
}

// Says what the library is; see link/beamlink.h.
STANDIN_EXPORT WarplineStandIn() {
  return 1;
}

// The simulation does not offer these.
#define STANDIN_NOT_OFFERED(name)            \
  STANDIN_EXPORT name() {                    \
    return warpline::kBeamlinkCommandFailed; \
  }
WARPLINE_BEAMLINK_DECLARED(STANDIN_NOT_OFFERED)
