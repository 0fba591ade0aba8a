#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>

#include "link/beamlink.h"
#include "platform/sockets.h"
#include "standin/exchange.h"

// The control library's operations against the simulated projector: LAN is TCP to a loopback
// address, USBn is 127.0.0.1:(7200 + n), COMn a serial port. May be called from several threads;
// the calls of one link wait for each other. Results and records are those of link/beamlink.h.

namespace warpline::sim {

inline constexpr std::int32_t kOpenInvalidDevice = -1;  // no such connection kind or mode

class BeamlinkStandin {
 public:
  // A handle, or a BeamlinkOpenResult. An address that is not of this machine's loopback is
  // kOpenHost; nothing is contacted then, and standard error says so.
  std::int32_t Open(std::int32_t kind, const char* first, const char* second, std::int32_t mode);
  std::int32_t Close(std::int32_t handle);
  std::int32_t SetAckTimeout(std::int32_t handle, std::int32_t time_out_ms);

  // A reply that does not fit the buffer is kBeamlinkReceiveError.
  std::int32_t AnyCommand(std::int32_t handle, const std::uint8_t* send, std::int32_t send_length,
                          std::uint8_t* reply, std::int32_t* reply_length);

  std::int32_t GetRunningStatus(std::int32_t handle, PJRunningStatus* status);
  std::int32_t GetStatus(std::int32_t handle, PJStatus* status);
  std::int32_t SetInput(std::int32_t handle, std::int32_t input);
  std::int32_t GetPcViewerInformation(std::int32_t handle, PJPcViewerInformation* information);

 private:
  struct OpenedLink {
    std::mutex mutex;
    std::unique_ptr<Requester> requester;
    milliseconds time_out = kDefaultAckTimeOutMs;
  };

  std::int32_t Keep(std::unique_ptr<Channel> channel, bool stale);
  std::int32_t OpenSerial(const char* first, const char* second);
  std::int32_t OpenLan(const char* first, const char* second);
  std::int32_t OpenUsb(const char* first);
  std::int32_t OpenTcp(const Endpoint& endpoint);
  std::shared_ptr<OpenedLink> Find(std::int32_t handle);
  std::int32_t Operation(std::int32_t handle, ByteView payload, std::size_t answer_size,
                         Bytes& answer);

  std::mutex mutex_;
  std::map<std::int32_t, std::shared_ptr<OpenedLink>> links_;
  std::int32_t next_handle_ = 0;
};

}  // namespace warpline::sim
