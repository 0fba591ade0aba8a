#include "link/beamlink_calls.h"

#include <cstddef>
#include <initializer_list>
#include <utility>

#include "core/settings.h"

namespace warpline {
namespace {

using Number = std::pair<std::string_view, std::int32_t>;

std::string Numbers(std::initializer_list<Number> numbers) {
  std::string text;
  for (const auto& [key, value] : numbers) {
    if (!text.empty()) text += ' ';
    text.append(key).append("=").append(std::to_string(value));
  }
  return text;
}

// Anything may stand in the settings file; here it stays one word.
std::string Word(const char* text) {
  std::string word(text);
  for (char& c : word) {
    if (c <= ' ' || c > '~') c = '?';
  }
  return word;
}

// A library that failed has told nothing.
std::string Told(std::int32_t result, std::initializer_list<Number> numbers) {
  return result == kBeamlinkOk ? ' ' + Numbers(numbers) : std::string();
}

// A library that failed may have left the length as it was.
std::size_t ReceivedLength(std::int32_t result, std::int32_t capacity, std::int32_t length) {
  const bool told = length > 0 && length <= capacity;
  if (!told || (result != kBeamlinkOk && length == capacity)) return 0;
  return static_cast<std::size_t>(length);
}

}  // namespace

// describe says what belongs to the call when it has come back.
template <typename Call, typename Describe>
std::int32_t BeamlinkCalls::Watched(std::string_view name, Call call, Describe describe) const {
  if (observer_ == nullptr) return call();
  LibraryCall seen{.name = name, .begun = LibraryCall::Clock::now()};
  seen.result = call();
  seen.ended = LibraryCall::Clock::now();
  describe(seen);
  observer_->Returned(seen);
  return seen.result;
}

std::int32_t BeamlinkCalls::PJCommDevOpen(std::int32_t kind, const char* first, const char* second,
                                          std::int32_t mode) const {
  return Watched(
      "PJCommDevOpen", [&] { return library_->PJCommDevOpen(kind, first, second, mode); },
      [&](LibraryCall& seen) {
        if (kind == kLan) seen.address = Word(first);
        seen.details = Numbers({{"kind", kind}}) + " first=" + Word(first) +
                       " second=" + Word(second) + ' ' + Numbers({{"mode", mode}});
      });
}

std::int32_t BeamlinkCalls::PJCommDevClose(std::int32_t handle) const {
  return Watched(
      "PJCommDevClose", [&] { return library_->PJCommDevClose(handle); },
      [&](LibraryCall& seen) {
        seen.details = Numbers({{"handle", handle}});
      });
}

std::int32_t BeamlinkCalls::PJCommDevSetAckTimeout(std::int32_t handle,
                                                   std::int32_t milliseconds) const {
  return Watched(
      "PJCommDevSetAckTimeout",
      [&] { return library_->PJCommDevSetAckTimeout(handle, milliseconds); },
      [&](LibraryCall& seen) {
        seen.details = Numbers({{"handle", handle}, {"milliseconds", milliseconds}});
      });
}

std::int32_t BeamlinkCalls::PJGetRunningStatus(std::int32_t handle, PJRunningStatus* status) const {
  return Watched(
      "PJGetRunningStatus", [&] { return library_->PJGetRunningStatus(handle, status); },
      [&](LibraryCall& seen) {
        seen.details =
            Numbers({{"handle", handle}}) + Told(seen.result, {{"Power", status->Power}});
      });
}

std::int32_t BeamlinkCalls::PJAnyCommand(std::int32_t handle, const std::uint8_t* send,
                                         std::int32_t send_length, std::uint8_t* reply,
                                         std::int32_t* reply_length) const {
  const std::int32_t capacity = *reply_length;
  if (observer_ != nullptr) observer_->Sends({send, static_cast<std::size_t>(send_length)});
  return Watched(
      "PJAnyCommand",
      [&] { return library_->PJAnyCommand(handle, send, send_length, reply, reply_length); },
      [&](LibraryCall& seen) {
        seen.received = {reply, ReceivedLength(seen.result, capacity, *reply_length)};
        seen.details = Numbers({{"handle", handle},
                                {"send_length", send_length},
                                {"capacity", capacity},
                                {"reply_length", *reply_length}});
      });
}

std::int32_t BeamlinkCalls::PJGetStatus(std::int32_t handle, PJStatus* status) const {
  return Watched(
      "PJGetStatus", [&] { return library_->PJGetStatus(handle, status); },
      [&](LibraryCall& seen) {
        seen.details = Numbers({{"handle", handle}}) +
                       Told(seen.result, {{"Power", status->Power}, {"Input", status->Input}});
      });
}

std::int32_t BeamlinkCalls::PJSetInput(std::int32_t handle, std::int32_t input) const {
  return Watched(
      "PJSetInput", [&] { return library_->PJSetInput(handle, input); },
      [&](LibraryCall& seen) {
        seen.details = Numbers({{"handle", handle}, {"input", input}});
      });
}

std::int32_t BeamlinkCalls::PJGetPcViewerInformation(std::int32_t handle,
                                                     PJPcViewerInformation* information) const {
  return Watched(
      "PJGetPcViewerInformation",
      [&] { return library_->PJGetPcViewerInformation(handle, information); },
      [&](LibraryCall& seen) {
        seen.details = Numbers({{"handle", handle}}) +
                       Told(seen.result, {{"PanelWidth", information->PanelWidth},
                                          {"PanelHeight", information->PanelHeight}});
      });
}

}  // namespace warpline
