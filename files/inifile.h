#pragma once

#include "core/settings.h"
#include "files/format_module.h"

// The settings file: "key=value" under one section line. Every line is valid: comments, unknown
// keys, malformed numbers (the key's default counts instead) and values outside their range leave
// the record as it is. A file without its section line is read all the same.

namespace warpline {

class IniFile : public FormatModule {
 public:
  explicit IniFile(Settings& settings) : settings_(settings) {}

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
