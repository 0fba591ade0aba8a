#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/LSSglobal.h"
#include "files/LSSfile.h"
#include "files/format_module.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

// Everything that a file is read into or written from, in English, with recorded messages.

namespace warpline {

struct FileWorld {
  FileWorld() { ResetToScreenType(global.Correction); }

  // Reads a text as a file of the type; nothing when it was accepted.
  std::optional<FileErrorCode> Read(std::string_view type, std::string_view text) {
    const auto module = MakeFormatModule(type, {global, messages, file.Staging()});
    module->ResetRead();
    return ReadLines(text, *module);
  }

  // What a file of the type would hold now; nothing when it cannot be written.
  std::optional<std::string> Written(std::string_view type) {
    std::vector<std::string> lines;
    const auto module = MakeFormatModule(type, {global, messages, file.Staging()});
    if (!module->Write(lines)) return std::nullopt;
    return JoinLines(lines);
  }

  LSSglobal global;
  RecordingDisplay display;
  Messages messages{global, display};
  LSSfile file{global, messages};
};

inline const std::filesystem::path kSourceFolder = WARPLINE_SOURCE_DIR;

constexpr std::string_view kTitle = "Warpline Tool 3.0";

inline RecordedMessage Critical(std::string text) {
  return {std::string(kTitle), std::move(text), MessageIcon::kCritical};
}

}  // namespace warpline
