#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/conversions.h"
#include "link/beamlink.h"
#include "link/command_frames.h"

// A control library that only notes what it is asked. Every call is one text: the operation and
// what matters of its parameters, "send " with the frame in hex. Any call can be made to fail.
// The entry points are plain functions: the object made last is the one that is called.

namespace warpline {

class FakeBeamlink {
 public:
  FakeBeamlink() : previous_(std::exchange(Current(), this)) {}
  ~FakeBeamlink() { Current() = previous_; }
  FakeBeamlink(const FakeBeamlink&) = delete;
  FakeBeamlink& operator=(const FakeBeamlink&) = delete;

  // The result of the call with that number, counted over all operations from 0.
  std::map<std::size_t, std::int32_t> results;
  // The reply to the exchange with that number, counted in the same way.
  std::map<std::size_t, Frame> replies;

  // What the projector behind it would say.
  std::uint8_t model_class = 5;
  std::uint8_t reply5 = 0;
  std::uint8_t mode = 0;
  PJPcViewerInformation panel{16, 12};
  std::int32_t input = 7;

  std::vector<std::string> calls;

  const BeamlinkFunctions* Functions() const { return &functions; }
  BeamlinkFunctions functions = MakeFunctions();

 private:
  static constexpr std::int32_t kHandle = 0;  // the lowest handle is a good one

  static FakeBeamlink*& Current() {
    static FakeBeamlink* current = nullptr;
    return current;
  }

  std::int32_t Note(std::string call, std::int32_t good = kBeamlinkOk) {
    calls.push_back(std::move(call));
    const auto result = results.find(calls.size() - 1);
    return result == results.end() ? good : result->second;
  }

  Frame ReplyTo(const std::string& frame) const {
    const auto reply = replies.find(calls.size() - 1);
    if (reply != replies.end()) return reply->second;
    if (frame == "00850000010086") return {0x20, 0x85, 0, 0, 3, reply5, 0, model_class};
    if (frame == "01DE0000020100E2") return {0x21, 0xDE, 0, 0, 2, 0xEE, mode, 0};
    return {0x21, 0xDF, 0, 0, 1, 0, 1};
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJCommDevOpen(std::int32_t kind, const char* first,
                                                          const char* second, std::int32_t mode) {
    return Current()->Note("open " + std::to_string(kind) + " '" + first + "' '" + second + "' " +
                               std::to_string(mode),
                           kHandle);
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJCommDevClose(std::int32_t handle) {
    return Current()->Note("close" + Suffix(handle));
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJCommDevSetAckTimeout(std::int32_t handle,
                                                                   std::int32_t milliseconds) {
    return Current()->Note("timeout " + std::to_string(milliseconds) + Suffix(handle));
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJGetRunningStatus(std::int32_t handle,
                                                               PJRunningStatus* status) {
    status->Power = 1;
    return Current()->Note("running" + Suffix(handle));
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJAnyCommand(std::int32_t handle,
                                                         const std::uint8_t* send,
                                                         std::int32_t send_length,
                                                         std::uint8_t* reply,
                                                         std::int32_t* reply_length) {
    const std::string frame = HexOf(Frame(send, send + send_length));
    const std::int32_t result = Current()->Note("send " + frame + Suffix(handle));
    if (result != kBeamlinkOk) return result;
    const Frame answer = Current()->ReplyTo(frame);
    if (answer.size() > static_cast<std::size_t>(*reply_length)) return kBeamlinkReceiveError;
    // What lies behind a reply is nobody's; here it looks like a good one.
    std::memset(reply, 5, static_cast<std::size_t>(*reply_length));
    if (!answer.empty()) std::memcpy(reply, answer.data(), answer.size());
    *reply_length = static_cast<std::int32_t>(answer.size());
    return result;
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJGetStatus(std::int32_t handle, PJStatus* status) {
    *status = {1, Current()->input};
    return Current()->Note("status" + Suffix(handle));
  }

  static std::int32_t WARPLINE_LIBRARY_CALL PJSetInput(std::int32_t handle, std::int32_t input) {
    return Current()->Note("input " + std::to_string(input) + Suffix(handle));
  }

  static std::int32_t WARPLINE_LIBRARY_CALL
  PJGetPcViewerInformation(std::int32_t handle, PJPcViewerInformation* information) {
    *information = Current()->panel;
    return Current()->Note("panel" + Suffix(handle));
  }

  // Shows a call with a handle that is not the open link's.
  static std::string Suffix(std::int32_t handle) {
    return handle == kHandle ? "" : " on wrong handle " + std::to_string(handle);
  }

  static BeamlinkFunctions MakeFunctions() {
    BeamlinkFunctions functions;
#define WARPLINE_FAKE(name, parameters) functions.name = name;
    WARPLINE_BEAMLINK_REQUIRED(WARPLINE_FAKE)
#undef WARPLINE_FAKE
    return functions;
  }

  FakeBeamlink* previous_;
};

}  // namespace warpline
