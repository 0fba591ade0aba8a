#include "files/formats.h"

#include <algorithm>
#include <array>

#include "core/conversions.h"
#include "files/inifile.h"
#include "files/wlrfile.h"
#include "files/wlsfile.h"
#include "files/wltfile.h"
#include "platform/files.h"

namespace warpline {
namespace {

using Module = std::unique_ptr<FormatModule>;

Module MakeIni(FileData& data, const Messages&) {
  return std::make_unique<IniFile>(data.Settings);
}

Module MakeWlt(FileData& data, const Messages&) {
  return std::make_unique<WltFile>(data.Correction);
}

Module MakeWls(FileData& data, const Messages&) {
  return std::make_unique<WlsFile>(data.Correction.Curves[kHorizontal]);
}

Module MakeWlr(FileData& data, const Messages& messages) {
  return std::make_unique<WlrFile>(data.Registers, messages);
}

struct FormatRow {
  std::string_view type;
  std::uintmax_t space_needed;  // bytes
  std::string_view header;      // how the one of each version begins
  Module (*make)(FileData& data, const Messages& messages);
};

constexpr std::array<FormatRow, 4> kFormats{{
    {kTypeIni, 2048, "[Warpline Tool 3.0]", MakeIni},
    {kTypeWlt, 2048, "[Warpline Tool Data File", MakeWlt},
    {kTypeWls, 1024, "[Warpline Shape File", MakeWls},
    {kTypeWlr, 4096, "[Warpline Register File]", MakeWlr},
}};

const FormatRow* FindFormat(std::string_view type) {
  const auto* row = std::find_if(kFormats.begin(), kFormats.end(),
                                 [type](const FormatRow& format) { return format.type == type; });
  return row == kFormats.end() ? nullptr : row;
}

}  // namespace

std::unique_ptr<FormatModule> MakeFormatModule(std::string_view type, FileData& data,
                                               const Messages& messages) {
  const FormatRow* format = FindFormat(type);
  return format == nullptr ? nullptr : format->make(data, messages);
}

std::uintmax_t SpaceNeeded(std::string_view type) {
  const FormatRow* format = FindFormat(type);
  return format == nullptr ? 0 : format->space_needed;
}

std::optional<std::string> TypeOf(const std::filesystem::path& path) {
  std::string word = InLowerCase(Utf8Of(path.extension()));
  if (!word.empty()) word.erase(0, 1);
  return FindFormat(word) == nullptr ? std::nullopt : std::optional(word);
}

std::optional<std::string> TypeOfText(std::string_view text) {
  for (const FormatRow& row : kFormats) {
    if (text.find(row.header) != std::string_view::npos) return std::string(row.type);
  }
  return std::nullopt;
}

bool IsRegisterFile(const std::filesystem::path& path) {
  return TypeOf(path) == kTypeWlr;
}

}  // namespace warpline
