#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/engine.h"
#include "cli/cli_texts.h"
#include "cli/report.h"
#include "core/no_busy_indicator.h"

// What one run of the command line works with.

namespace warpline {

// Exit codes of the program.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;  // the work failed: a bad file, a projector that refused
inline constexpr int kExitUsage = 2;   // the command line is wrong

// The name that stands for standard input where a file is read, and for standard output where one
// is written.
inline constexpr std::string_view kStandardName = "-";

// Messages become lines of standard error, or of the report. There is nobody to answer a question:
// the answer is the choice that gives up.
class StreamDisplay : public MessageDisplay {
 public:
  // The file or projector that messages are about, asked for when there is one.
  using Subject = std::function<std::string()>;

  // Both must outlive this object.
  StreamDisplay(std::ostream& stream, Report& report) : stream_(stream), report_(report) {}
  std::size_t Show(const UserMessage& message) override;

  // The next messages are about this: it begins their lines. Null: about nothing.
  void SetSubject(Subject subject) { subject_ = std::move(subject); }

 private:
  std::ostream& stream_;
  Report& report_;
  Subject subject_;
};

// Shows on one line of a terminal how far the work has come, and takes it away at the end.
class TerminalProgress : public NoBusyIndicator {
 public:
  // stream must outlive this object. text says what a step is.
  TerminalProgress(std::ostream& stream, std::function<std::string(int step, int steps)> text)
      : stream_(stream), text_(std::move(text)) {}

  // Somebody looks at the stream: without that nothing is shown.
  void SetSeen(bool seen) { seen_ = seen; }

  void ShowStep(int step, int steps) override;
  void EndSteps() override;

 private:
  std::ostream& stream_;
  std::function<std::string(int step, int steps)> text_;
  bool seen_ = false;
};

class Session {
 public:
  // The streams must outlive this object.
  Session(std::ostream& out_stream, std::ostream& err_stream, Language language,
          std::istream& in_stream = std::cin);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Says on standard error what is wrong with the command line. Returns kExitUsage.
  int UsageError(CliText key, std::initializer_list<std::string> arguments = {}) const;

  // Says a text of the command line's own as a message.
  void Tell(CliText key, std::initializer_list<std::string> arguments = {});

  // Says it on standard error in any case.
  void TellUser(CliText key, std::initializer_list<std::string> arguments = {}) const;

  // Runs work whose messages are about something. A fault is shown too, and makes it false.
  bool About(StreamDisplay::Subject subject, const std::function<bool()>& work);

  // Runs work on a file, whose messages name it, and the line at which reading has ended.
  bool OnFile(const std::filesystem::path& path, const std::function<bool()>& work);

  // A file's bytes, or those of standard input, which is read once.
  std::error_code Read(const std::filesystem::path& path, std::string& bytes);

  // The type word of a file by its name, of standard input by what comes there. Nothing when it is
  // none of the four.
  std::optional<std::string> KindOf(const std::filesystem::path& path);

  // As the file layer reads and writes.
  bool Open(const std::filesystem::path& path, std::string_view type);
  bool Save(const std::filesystem::path& path, std::string_view type, const FileData& data);

  // Writes a file of no kind that the file layer knows: what make returns.
  bool Write(const std::filesystem::path& path, const std::function<std::string()>& make);

  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  const CliTexts& texts;
  mutable Report report;  // a wrong command line is reported too
  StreamDisplay display;
  TerminalProgress busy;
  Engine engine{display, busy};

 private:
  std::optional<std::string> input_;  // of standard input, once it was read
};

// A file's name and, when reading has ended at a line, its number and key: "a.wlt:3: ScreenType".
std::string NameOfPlace(const std::filesystem::path& path, const FilePlace& place);

// Reads a correction data file into the session's model, or a register file into its register
// texts. False when the file was refused, which has been said.
bool ReadCorrection(Session& session, const std::filesystem::path& path);
bool ReadRegisters(Session& session, const std::filesystem::path& path);

// Says on standard error where a projector with that panel cannot follow the correction that was
// read from the file, or that no registers can be built from it.
void TellDeviation(Session& session, const std::filesystem::path& path,
                   const CorrectionData& correction, PanelSize panel);

}  // namespace warpline
