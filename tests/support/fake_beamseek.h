#pragma once

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "link/beamseek.h"

// A search library whose answers a test scripts. It keeps the calls that came, and the test sends
// its notifications. Only one at a time: the entry points are plain functions.

namespace warpline {

class FakeBeamseek {
 public:
  FakeBeamseek() { current_ = this; }
  ~FakeBeamseek() { current_ = nullptr; }
  FakeBeamseek(const FakeBeamseek&) = delete;
  FakeBeamseek& operator=(const FakeBeamseek&) = delete;

  const BeamseekFunctions* Functions() {
#define WARPLINE_FAKE(name, parameters) functions_.name = name;
    WARPLINE_BEAMSEEK_REQUIRED(WARPLINE_FAKE)
#undef WARPLINE_FAKE
    return &functions_;
  }

  void Notify(std::uint32_t code, std::uint32_t first = 0) {
    callback_(code, first, 0, user_);
  }

  void AddProjector(std::array<std::uint8_t, 4> address, const char* name, bool selectable) {
    auto& entry = result.PJData[result.iPjNum++];
    entry.bSelectable = selectable ? 1 : 0;
    std::memcpy(entry.ucIP, address.data(), address.size());
    std::string(name).copy(entry.cName, kSearchNameSize - 1);
  }

  // What the operations answer.
  std::int32_t create_result = 1;
  std::int32_t handle = 77;
  std::int32_t start_result = 1;
  std::int32_t restart_result = 1;
  csResData result{};
  std::function<void()> on_start = [] {};
  std::function<void()> on_restart = [] {};

  // What came: "Create 1", "SetLastPJ 192.168.10.10", "Start", "Restart 1", "Destroy". A call with
  // another handle has "?" behind it.
  std::vector<std::string> calls;
  csAdapterList adapters{};

 private:
  static std::int32_t WARPLINE_LIBRARY_CALL ConnectSelectCreate(const csAdapterList* adapters,
                                                                ConnectSelectCallback* callback,
                                                                void* user, std::int32_t flags,
                                                                std::int32_t* handle,
                                                                const csResData** result) {
    current_->calls.push_back("Create " + std::to_string(flags));
    current_->adapters = *adapters;
    current_->callback_ = callback;
    current_->user_ = user;
    *handle = current_->handle;
    *result = &current_->result;
    return current_->create_result;
  }
  static std::int32_t WARPLINE_LIBRARY_CALL ConnectSelectSetLastPJ(std::int32_t handle,
                                                                   const char* address) {
    return current_->Note(handle, std::string("SetLastPJ ") + address, 0);
  }
  static std::int32_t WARPLINE_LIBRARY_CALL ConnectSelectStart(std::int32_t handle) {
    current_->Note(handle, "Start", 0);
    current_->on_start();
    return current_->start_result;
  }
  static std::int32_t WARPLINE_LIBRARY_CALL ConnectSelectRestart(std::int32_t handle,
                                                                 std::int32_t flag) {
    current_->Note(handle, "Restart " + std::to_string(flag), 0);
    current_->on_restart();
    return current_->restart_result;
  }
  static std::int32_t WARPLINE_LIBRARY_CALL ConnectSelectDestroy(std::int32_t handle) {
    return current_->Note(handle, "Destroy", 1);
  }

  std::int32_t Note(std::int32_t called_handle, const std::string& call, std::int32_t answer) {
    calls.push_back(called_handle == handle ? call : call + "?");
    return answer;
  }

  static inline FakeBeamseek* current_ = nullptr;
  BeamseekFunctions functions_;
  ConnectSelectCallback* callback_ = nullptr;
  void* user_ = nullptr;
};

}  // namespace warpline
