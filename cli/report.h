#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "core/interfaces.h"

namespace warpline {

// What --json prints: one object on one line, whose names and values are the same in every
// language but for the texts of messages.
class Report {
 public:
  // From now on messages and results are kept for it.
  void Begin(std::string_view verb);

  // Others have printed their own in its place.
  void Drop() { wanted_ = false; }

  bool Wanted() const { return wanted_; }

  // A message, and the file or projector that it is about, which may be empty.
  void Add(const std::string& about, const UserMessage& message);

  // A result.
  template <typename Value>
  void Set(const char* name, Value&& value) {
    if (wanted_) results_[name] = std::forward<Value>(value);
  }

  // The line without its end.
  std::string Line(bool ok) const;

 private:
  bool wanted_ = false;
  std::string verb_;
  nlohmann::ordered_json results_ = nlohmann::ordered_json::object();
  nlohmann::ordered_json messages_ = nlohmann::ordered_json::array();
};

// On one line; bytes of foreign files that are no UTF-8 are replaced.
std::string LineOf(const nlohmann::ordered_json& json);

}  // namespace warpline
