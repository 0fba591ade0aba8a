#include "app/correction_file.h"

#include <string_view>

#include "app/fault_report.h"

namespace warpline {
namespace {

bool Read(LSSfile& file, const Messages& messages, const std::filesystem::path& path,
          std::string_view type) {
  return ReportingFaults(messages, [&] { return file.OpenDataFile(path, type); });
}

}  // namespace

bool OpenCorrection(LSSfile& file, LSSglobal& global, const Messages& messages,
                    const std::filesystem::path& path) {
  if (!Read(file, messages, path, kTypeWlt)) return false;
  global.Correction = file.Staging();
  global.SecondCopy = global.Correction.Axes;
  global.CurrentFile = path;
  return true;
}

bool OpenRegisters(LSSfile& file, const Messages& messages, const std::filesystem::path& path) {
  return Read(file, messages, path, kTypeWlr);
}

bool SaveCorrection(LSSfile& file, LSSglobal& global, const Messages& messages,
                    const std::filesystem::path& path) {
  if (!ReportingFaults(messages, [&] { return file.SaveDataFile(path, kTypeWlt); })) return false;
  global.CurrentFile = path;
  return true;
}

}  // namespace warpline
