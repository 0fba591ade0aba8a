#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace warpline {

// What the tool prints, and ends then, when --help or --version stands among its words (UTF-8);
// nothing when neither does. The help is in the language that the other words, or the system, ask
// for. folder is the program's own.
std::optional<std::string> StartAnswer(std::vector<std::string> words, std::string_view toolkit,
                                       const std::filesystem::path& folder);

}  // namespace warpline
