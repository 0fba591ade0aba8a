#pragma once

#include <cstdint>

#include WARPLINE_PLATFORM_HEADER

#include "core/link_results.h"

// Everything that this side believes about the projector maker's control library "Beamlink": entry
// points, records and, in core/link_results.h, result codes. When the maker's library turns out to
// differ, these are the places to correct.

namespace warpline {

inline constexpr const char* kBeamlinkName = "Beamlink";

// Capacity of both connection parameters, the closing NUL included.
inline constexpr int kBeamlinkParameterSize = 17;

// Fourth argument of PJCommDevOpen: the call returns when the link is open or has failed.
inline constexpr std::int32_t kBeamlinkBlocking = 1;

// Records that the library fills.
struct PJRunningStatus {
  std::int32_t Power;  // 0 standby, 1 on, 2 warming up, 3 cooling down
};
struct PJStatus {
  std::int32_t Power;  // as above
  std::int32_t Input;  // the input shown, as PJSetInput takes it
};
struct PJPcViewerInformation {
  std::int32_t PanelWidth;   // pixels
  std::int32_t PanelHeight;  // pixels
};

// The entry points that the tool calls: X(name, parameters). All return a 32-bit result.
// PJAnyCommand: reply_length holds the capacity of the reply buffer on entry and the reply's length
// on return.
#define WARPLINE_BEAMLINK_REQUIRED(X)                                                             \
  X(PJCommDevOpen, (std::int32_t kind, const char* first, const char* second, std::int32_t mode)) \
  X(PJCommDevClose, (std::int32_t handle))                                                        \
  X(PJCommDevSetAckTimeout, (std::int32_t handle, std::int32_t milliseconds))                     \
  X(PJGetRunningStatus, (std::int32_t handle, ::warpline::PJRunningStatus * status))              \
  X(PJAnyCommand, (std::int32_t handle, const std::uint8_t* send, std::int32_t send_length,       \
                   std::uint8_t* reply, std::int32_t* reply_length))                              \
  X(PJGetStatus, (std::int32_t handle, ::warpline::PJStatus * status))                            \
  X(PJSetInput, (std::int32_t handle, std::int32_t input))                                        \
  X(PJGetPcViewerInformation,                                                                     \
    (std::int32_t handle, ::warpline::PJPcViewerInformation * information))

// Entry points that the library has and the tool never calls; their parameters are not known here.
#define WARPLINE_BEAMLINK_DECLARED(X) \
  X(PJSetPower)                       \
  X(PJSetPictureMute)                 \
  X(PJSetSoundMute)                   \
  X(PJSetOsdMute)                     \
  X(PJSetGain)                        \
  X(PJGetGain)                        \
  X(PJGetHourMeter)                   \
  X(PJGetSourceInformation)           \
  X(PJGetErrorStatus)                 \
  X(PJInitLogo)                       \
  X(PJSetLogo)                        \
  X(PJCommDevGetLastError)            \
  X(PJCommDevCheckOpenStatus)         \
  X(PJGetFunctionResult)              \
  X(USBStart)                         \
  X(USBConnectPjGet)                  \
  X(USBConnectPjChangeCheck)          \
  X(USBConnectPjUpdate)

// What a library exports beside the maker's entry points when it stands in for the maker's and
// reaches simulated projectors only. Looked for in the library or its file; nobody calls it.
inline constexpr const char* kStandInMark = "WarplineStandIn";

// The functions' types: PJCommDevOpenFunction and so on.
#define WARPLINE_DECLARE_TYPE(name, parameters) \
  using name##Function = std::int32_t WARPLINE_LIBRARY_CALL parameters;
WARPLINE_BEAMLINK_REQUIRED(WARPLINE_DECLARE_TYPE)
#undef WARPLINE_DECLARE_TYPE

// The loaded library. The required pointers are never null; the declared ones may be.
struct BeamlinkFunctions {
// NOLINTBEGIN(bugprone-macro-parentheses): the argument is the name of a member
#define WARPLINE_DECLARE_POINTER(name, parameters) name##Function* name = nullptr;
  WARPLINE_BEAMLINK_REQUIRED(WARPLINE_DECLARE_POINTER)
#undef WARPLINE_DECLARE_POINTER
#define WARPLINE_DECLARE_ADDRESS(name) void* name = nullptr;
  WARPLINE_BEAMLINK_DECLARED(WARPLINE_DECLARE_ADDRESS)
#undef WARPLINE_DECLARE_ADDRESS
  // NOLINTEND(bugprone-macro-parentheses)
  bool stands_in = false;  // it has the mark of a stand-in
};

}  // namespace warpline
