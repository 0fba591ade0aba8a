#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/environment.h"

// What a test sets for its own time only.

namespace warpline {

// Gives an environment variable this value; nothing takes it away.
void PutEnvironment(const char* name, const std::optional<std::string>& value);

// A variable that has another value as long as the object lives.
class EnvironmentValue {
 public:
  EnvironmentValue(const char* name, const std::optional<std::string>& value)
      : name_(name), before_(EnvironmentVariable(name)) {
    PutEnvironment(name, value);
  }
  ~EnvironmentValue() { PutEnvironment(name_, before_); }
  EnvironmentValue(const EnvironmentValue&) = delete;
  EnvironmentValue& operator=(const EnvironmentValue&) = delete;

 private:
  const char* name_;
  std::optional<std::string> before_;
};

// Keeps the user's own settings out of a test, and the test's out of the user's.
// ApplicationDataFolder holds no settings at first.
class OwnSettings {
 public:
  // folder: an empty one of the test's.
  explicit OwnSettings(const std::filesystem::path& folder);
  ~OwnSettings();
  OwnSettings(const OwnSettings&) = delete;
  OwnSettings& operator=(const OwnSettings&) = delete;

 private:
  std::optional<EnvironmentValue> place_;
  std::filesystem::path aside_;
};

}  // namespace warpline
