#pragma once

#include <iostream>
#include <string>
#include <vector>

namespace warpline {

// Runs `warpline` with these words (UTF-8, the program's name left out): results on out, messages
// on err; where a file is named "-" it is in, or out. errors_seen: err is a terminal, which shows
// how far the work has come. Returns the exit code: 0 success, 1 the work failed, 2 wrong usage.
int RunCommandLine(const std::vector<std::string>& words, std::ostream& out, std::ostream& err,
                   bool errors_seen = false, std::istream& in = std::cin);

}  // namespace warpline
