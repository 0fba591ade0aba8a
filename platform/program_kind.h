#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace warpline {

// What a program or library file was built for.
struct ProgramKind {
  int bits = 0;           // 32 or 64
  std::string processor;  // the bytes that tell it, of use for comparing alone

  bool operator==(const ProgramKind&) const = default;
};

// By the file's first bytes, of this system or the other. Nothing when it is neither program nor
// library.
std::optional<ProgramKind> ProgramKindOf(const std::filesystem::path& file);

}  // namespace warpline
