#include "files/inifile.h"

namespace warpline {

void IniFile::ResetRead() {
  read_ = settings_;
  read_.SectionFound = false;
}

bool IniFile::ParseLine(std::string_view line) {
  ReadSettingsLine(line, read_);
  return true;
}

bool IniFile::Write(std::vector<std::string>& lines) const {
  lines = SettingsLines(settings_);
  return true;
}

}  // namespace warpline
