#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>

#include "cli/run_command_line.h"
#include "platform/child_process.h"
#include "platform/environment.h"
#include "tests/support/temp_folder.h"

// Runs the command line in process and keeps what it said.

namespace warpline {

using Words = std::vector<std::string>;

inline Words operator+(Words words, const Words& more) {
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

struct CliResult {
  int exit_code = 0;
  std::string out;
  std::string err;
};

inline CliResult RunCli(const Words& words, const std::string& language = "en") {
  std::ostringstream out;
  std::ostringstream err;
  const int exit_code = RunCommandLine(words + Words{"--language", language}, out, err);
  return {exit_code, out.str(), err.str()};
}

inline constexpr std::chrono::milliseconds kLookMs{100};

// The program itself, which some verbs start once more; its lines end as the system's lines do.
inline CliResult RunProgram(const Words& words) {
  ChildProcess process;
  const std::filesystem::path own = ProgramFile();
  CliResult result;
  EXPECT_TRUE(process.Start(ProgramFolder() / ("warpline" + own.extension().string()), words));
  while (process.ReadOutput(result.out, kLookMs) != ChildProcess::Read::kEnd) {
  }
  const ProcessEnd end = process.Wait();
  EXPECT_FALSE(end.crashed);
  result.exit_code = static_cast<int>(end.code);
  std::erase(result.out, '\r');
  return result;
}

inline Words LinesOf(const std::string& text) {
  std::istringstream stream(text);
  Words lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

inline bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
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

// A folder for the files of a test, and their names in it.
class FilesTest : public testing::Test {
 protected:
  std::string Put(const char* name, const std::string& text) const {
    return folder_.Write(name, text).string();
  }
  std::string Name(const char* name) const { return (folder_ / name).string(); }

  TempFolder folder_;
};

}  // namespace warpline
