#pragma once

#include <cstdint>

#include WARPLINE_PLATFORM_HEADER

// Everything that this side believes about the projector maker's search library "Beamseek2": entry
// points, records and notification codes. When the maker's library turns out to differ, this is the
// one place to correct.

namespace warpline {

inline constexpr const char* kBeamseekName = "Beamseek2";

// Capacities. Texts are closed by a NUL, which is included.
inline constexpr int kSearchAddressSize = 17;  // the buffer of ConnectSelectSetLastPJ
inline constexpr int kSearchNameSize = 32;     // UTF-8
inline constexpr int kMostSearchAdapters = 16;
inline constexpr int kMostSearchProjectors = 64;

// Flags of ConnectSelectCreate.
inline constexpr std::int32_t kSearchShowWindow =
    1;                                              // else it only looks and tells when it is done
inline constexpr std::int32_t kSearchJapanese = 2;  // language of the window; else English

// Flags of ConnectSelectRestart.
inline constexpr std::int32_t kRestartGoOn = 0;       // with what has been found
inline constexpr std::int32_t kRestartFromStart = 1;  // looks for projectors once more

// Notification codes.
enum ConnectSelectCode : std::uint32_t {
  kSearchSelected = 2000,  // first parameter: index of the projector in the result record
  kSearchClosed = 2001,
  kSearchCancelled = 2002,
  kSearchReadMe = 2003,
  kSearchRepeat = 2004,
  kSearchFinished = 2005,  // without a window: all have been found. Only the stand-in tells this.
  kSearchRepeatOther = 2008,
};

// The local network adapters to search through.
struct csAdapterList {
  std::int32_t iAdapterNum;  // 0..kMostSearchAdapters
  struct {
    std::uint8_t ucIP[4];  // in the order in which an address is written
  } Adapter[kMostSearchAdapters];
};

// What was found. The record belongs to the library and stays where it is until the search is
// destroyed.
struct csResData {
  std::int32_t iPjNum;  // 0..kMostSearchProjectors
  struct {
    std::int32_t bSelectable;  // 0: it cannot be chosen
    std::uint8_t ucIP[4];      // in the order in which an address is written
    char cName[kSearchNameSize];
  } PJData[kMostSearchProjectors];
};

// Called by the library, from whatever thread, between ConnectSelectStart and the return of
// ConnectSelectDestroy.
using ConnectSelectCallback = void WARPLINE_LIBRARY_CALL(std::uint32_t code, std::uint32_t first,
                                                         std::uint32_t second, void* user);

// The entry points that the tool calls: X(name, parameters). All return 0 for failure.
// ConnectSelectCreate gives back a handle (0 is invalid) and the address of the result record.
#define WARPLINE_BEAMSEEK_REQUIRED(X)                                                             \
  X(ConnectSelectCreate,                                                                          \
    (const ::warpline::csAdapterList* adapters, ::warpline::ConnectSelectCallback* callback,      \
     void* user, std::int32_t flags, std::int32_t* handle, const ::warpline::csResData** result)) \
  X(ConnectSelectSetLastPJ, (std::int32_t handle, const char* address))                           \
  X(ConnectSelectStart, (std::int32_t handle))                                                    \
  X(ConnectSelectRestart, (std::int32_t handle, std::int32_t flag))                               \
  X(ConnectSelectDestroy, (std::int32_t handle))

// Entry points that the library has and the tool never calls; their parameters are not known here.
#define WARPLINE_BEAMSEEK_DECLARED(X) \
  X(ConnectSelectClose)               \
  X(ConnectSelectOpen)                \
  X(CS_IPInputCreate)                 \
  X(CS_IPInputDestroy)                \
  X(CS_PJListCreate)                  \
  X(CS_PJListDestroy)                 \
  X(CS_GetPJList)                     \
  X(PjSearchGetOption)

// The functions' types: ConnectSelectCreateFunction and so on.
#define WARPLINE_DECLARE_TYPE(name, parameters) \
  using name##Function = std::int32_t WARPLINE_LIBRARY_CALL parameters;
WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_DECLARE_TYPE)
#undef WARPLINE_DECLARE_TYPE

// The loaded library. The required pointers are never null; the declared ones may be.
struct BeamseekFunctions {
// NOLINTBEGIN(bugprone-macro-parentheses): the argument is the name of a member
#define WARPLINE_DECLARE_POINTER(name, parameters) name##Function* name = nullptr;
  WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_DECLARE_POINTER)
#undef WARPLINE_DECLARE_POINTER
#define WARPLINE_DECLARE_ADDRESS(name) void* name = nullptr;
  WARPLINE_BEAMSEEK_DECLARED(WARPLINE_DECLARE_ADDRESS)
#undef WARPLINE_DECLARE_ADDRESS
  // NOLINTEND(bugprone-macro-parentheses)
};

}  // namespace warpline
