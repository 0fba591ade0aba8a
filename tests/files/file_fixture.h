#pragma once

#include <gtest/gtest.h>

#include "files/LSSfile.h"
#include "tests/support/recorder.h"
#include "tests/support/source_folder.h"
#include "tests/support/temp_folder.h"

// Everything that a file is read into or written from, in English, with recorded messages.

namespace warpline {

struct FileWorld : Recorded {
  // Reads a text as a file of the type; nothing when it was accepted.
  std::optional<FileErrorCode> Read(std::string_view type, std::string_view text) {
    const auto module = MakeFormatModule(type, data, messages);
    module->ResetRead();
    return ReadLines(text, *module);
  }

  // What a file of the type would hold now; nothing when it cannot be written.
  std::optional<std::string> Written(std::string_view type) {
    std::vector<std::string> lines;
    const auto module = MakeFormatModule(type, data, messages);
    if (!module->Write(lines)) return std::nullopt;
    return JoinLines(lines);
  }

  LSSfile file{messages};
  FileData& data = file.Staging();
};

using Texts = std::vector<std::string>;
using Refusal = std::optional<FileErrorCode>;
constexpr Refusal kAccepted;

constexpr const char* kBadValue = "The parameter value is not correct.";
constexpr const char* kBadLength = "The length of parameter is not correct.";
constexpr const char* kCorrupted = "The file format is corrupted.";

}  // namespace warpline
