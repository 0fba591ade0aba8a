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
  global.Correction = file.Staging().Correction;
  global.SecondCopy = global.Correction.Axes;
  global.CurrentFile = path;
  return true;
}

bool OpenRegisters(LSSfile& file, LSSglobal& global, const Messages& messages,
                   const std::filesystem::path& path) {
  if (!Read(file, messages, path, kTypeWlr)) return false;
  global.Registers = file.Staging().Registers;
  return true;
}

bool SaveCorrection(const LSSfile& file, LSSglobal& global, const Messages& messages,
                    const std::filesystem::path& path) {
  FileData data;
  data.Correction = global.Correction;
  const auto save = [&] { return file.SaveDataFile(path, kTypeWlt, data); };
  if (!ReportingFaults(messages, save)) return false;
  global.CurrentFile = path;
  return true;
}

}  // namespace warpline
