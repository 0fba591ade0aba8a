#pragma once

#include <cstdint>

// The result codes that this side believes the projector maker's control library to return. They
// stand apart from the library's other declarations because the messages of the program name them.

namespace warpline {

// Opening returns a link handle (zero or more) or one of these.
enum BeamlinkOpenResult : std::int32_t {
  kOpenBadPort = -2,
  kOpenPortInUse = -3,
  kOpenWinSock = -4,
  kOpenSocket = -5,
  kOpenBind = -6,
  kOpenHost = -7,
  kOpenConnect = -8,
  kOpenSelect = -9,
  kOpenCancelled = -99,
};

enum BeamlinkCloseResult : std::int32_t {
  kCloseBadHandle = -1,
  kCloseAlreadyClosed = -2,
};

// Of every other entry point.
enum BeamlinkResult : std::int32_t {
  kBeamlinkOk = 0,
  kBeamlinkNotInitialized = -1,
  kBeamlinkBadHandle = -2,
  kBeamlinkNoResponse = -3,
  kBeamlinkSendError = -4,
  kBeamlinkReceiveError = -5,
  kBeamlinkCommandFailed = -6,
  kBeamlinkNoPanelInformation = -20,  // the projector does not report its panel; no failure
};

}  // namespace warpline
