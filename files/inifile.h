#pragma once

#include "files/format_module.h"

// The settings file. Every line is valid, and a file without its section line is read all the same.

namespace warpline {

class IniFile : public FormatModule {
 public:
  explicit IniFile(const FormatTargets& targets) : settings_(targets.global.Settings) {}

  void ResetRead() override;
  bool ParseLine(std::string_view line) override;
  bool CheckContents() override { return true; }
  void Commit() override { settings_ = read_; }
  bool Write(std::vector<std::string>& lines) const override;

 private:
  Settings& settings_;
  Settings read_;  // a copy, so that a file that breaks off leaves no mixture
};

}  // namespace warpline
