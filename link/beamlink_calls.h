#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "link/beamlink.h"

// The one place through which every call of the control library goes, so that somebody can look on.

namespace warpline {

// A call that has come back.
struct LibraryCall {
  using Clock = std::chrono::steady_clock;

  std::string_view name;  // of the entry point
  std::int32_t result = 0;
  Clock::time_point begun{};
  Clock::time_point ended{};
  // Its parameters and what it told, "key=value" with blanks between.
  std::string details{};
  std::string address{};  // the value of theirs that tells where on the network the projector is
  std::span<const std::uint8_t> received{};  // of a raw command; valid during the call of Returned
};

// Sees the calls on the thread that makes them, and must not keep it.
class CallObserver {
 public:
  virtual ~CallObserver() = default;

  // A raw command is about to be sent.
  virtual void Sends(std::span<const std::uint8_t> frame) = 0;

  virtual void Returned(const LibraryCall& call) = 0;
};

// The library's entry points under their own names, parameters and results.
class BeamlinkCalls {
 public:
  // Both must outlive their use. Without an observer, null, nobody looks on.
  void Use(const BeamlinkFunctions& library) { library_ = &library; }
  void Observe(CallObserver* observer) { observer_ = observer; }

  std::int32_t PJCommDevOpen(std::int32_t kind, const char* first, const char* second,
                             std::int32_t mode) const;
  std::int32_t PJCommDevClose(std::int32_t handle) const;
  std::int32_t PJCommDevSetAckTimeout(std::int32_t handle, std::int32_t milliseconds) const;
  std::int32_t PJGetRunningStatus(std::int32_t handle, PJRunningStatus* status) const;
  std::int32_t PJAnyCommand(std::int32_t handle, const std::uint8_t* send, std::int32_t send_length,
                            std::uint8_t* reply, std::int32_t* reply_length) const;
  std::int32_t PJGetStatus(std::int32_t handle, PJStatus* status) const;
  std::int32_t PJSetInput(std::int32_t handle, std::int32_t input) const;
  std::int32_t PJGetPcViewerInformation(std::int32_t handle,
                                        PJPcViewerInformation* information) const;

 private:
  template <typename Call, typename Describe>
  std::int32_t Watched(std::string_view name, Call call, Describe describe) const;

  const BeamlinkFunctions* library_ = nullptr;
  CallObserver* observer_ = nullptr;
};

}  // namespace warpline
