#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/correction.h"
#include "core/messages.h"
#include "core/register_set.h"
#include "core/settings.h"
#include "files/format_module.h"

// The four kinds of file, and what each of them holds.

namespace warpline {

// Type words, also the file extensions.
inline constexpr std::string_view kTypeIni = "ini";
inline constexpr std::string_view kTypeWlt = "wlt";
inline constexpr std::string_view kTypeWls = "wls";
inline constexpr std::string_view kTypeWlr = "wlr";

// What files are read into and written from. The field names are those of the shared record.
struct FileData {
  warpline::Settings Settings;  // "ini"
  CorrectionData Correction;    // "wlt"; its horizontal curve: "wls"
  RegisterSet Registers;        // "wlr"
};

// The module of a type word, null when there is none. Data and messages must outlive it.
std::unique_ptr<FormatModule> MakeFormatModule(std::string_view type, FileData& data,
                                               const Messages& messages);

// Free bytes that must be left before a file of this type is written; 0 for an unknown type.
std::uintmax_t SpaceNeeded(std::string_view type);

// The type word that a file name's extension stands for, in any case; nothing when it is none of
// the four.
std::optional<std::string> TypeOf(const std::filesystem::path& path);

// The same for what stands in a file, by its header.
std::optional<std::string> TypeOfText(std::string_view text);

// A register file by its extension; whatever is opened under another name is correction data.
bool IsRegisterFile(const std::filesystem::path& path);

}  // namespace warpline
