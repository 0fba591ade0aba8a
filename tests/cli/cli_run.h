#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "cli/run_command_line.h"

// Runs the command line in process and keeps what it said.

namespace warpline {

struct CliResult {
  int exit_code = 0;
  std::string out;
  std::string err;
};

inline CliResult RunCli(const std::vector<std::string>& words, const std::string& language = "en") {
  std::vector<std::string> all = words;
  all.insert(all.end(), {"--language", language});
  std::ostringstream out;
  std::ostringstream err;
  const int exit_code = RunCommandLine(all, out, err);
  return {exit_code, out.str(), err.str()};
}

inline std::ostream& operator<<(std::ostream& stream, const CliResult& result) {
  return stream << "exit code " << result.exit_code << "\nout: " << result.out
                << "\nerr: " << result.err;
}

// A correction that leaves the picture as it is, and one that does not.
inline constexpr const char* kFlatFile =
    "[Warpline Tool Data File 3.0]\r\nScreenType=0\r\nOpticalH=-32\r\n";
inline constexpr const char* kBentFile =
    "[Warpline Tool Data File 3.0]\r\nScreenType=2\r\nDistortionH=30\r\nDistortionV=40\r\n"
    "OpticalH=-32\r\nOpticalV=-20\r\nCorrePointNumH=3\r\nCorreInterpH=2\r\n"
    "CorreDataPtsX00H=0\r\nCorreDataPtsY00H=800000\r\nCorreDataPtsX01H=500000\r\n"
    "CorreDataPtsY01H=1000000\r\nCorreDataPtsX02H=1000000\r\nCorreDataPtsY02H=800000\r\n";

}  // namespace warpline
