#pragma once

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "app/engine.h"
#include "cli/cli_texts.h"
#include "core/interfaces.h"

// What one run of the command line works with.

namespace warpline {

// Exit codes of the program.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;  // the work failed: a bad file, a projector that refused
inline constexpr int kExitUsage = 2;   // the command line is wrong

// Messages become lines of standard error. There is nobody to answer a question: the answer is the
// choice that gives up.
class StreamDisplay : public MessageDisplay {
 public:
  explicit StreamDisplay(std::ostream& stream) : stream_(stream) {}
  std::size_t Show(const UserMessage& message) override;

  // The file that the next messages are about: its name begins their lines. Empty: none.
  void SetFile(std::string name) { file_name_ = std::move(name); }

 private:
  std::ostream& stream_;
  std::string file_name_;
};

// A command line shows no hourglass, and is ended by its signals.
class NoBusyIndicator : public BusyIndicator {
 public:
  void BeginBusy(BusyKind) override {}
  void EndBusy() override {}
  void ProcessPendingEvents() override {}
  void ShowStep(int, int) override {}
  void EndSteps() override {}
  bool Cancelled() const override { return false; }
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
  Session(std::ostream& out_stream, std::ostream& err_stream, Language language);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Says on standard error what is wrong with the command line. Returns kExitUsage.
  int UsageError(CliText key, std::initializer_list<std::string> arguments = {}) const;

  // Says a text of the command line's own on standard error.
  void Tell(CliText key, std::initializer_list<std::string> arguments = {}) const;

  // Runs work on a file; what it shows names that file. A fault is shown too, and makes it false.
  bool OnFile(const std::filesystem::path& path, const std::function<bool()>& work);

  // As the file layer reads and writes.
  bool Open(const std::filesystem::path& path, std::string_view type);
  bool Save(const std::filesystem::path& path, std::string_view type, const FileData& data);

  // Writes a file of no kind that the file layer knows: what make returns.
  bool Write(const std::filesystem::path& path, const std::function<std::string()>& make);

  std::ostream& out;
  std::ostream& err;
  const CliTexts& texts;
  StreamDisplay display;
  TerminalProgress busy;
  Engine engine{display, busy};
};

// Reads a correction data file into the session's model, or a register file into its register
// texts. False when the file was refused, which has been said.
bool ReadCorrection(Session& session, const std::filesystem::path& path);
bool ReadRegisters(Session& session, const std::filesystem::path& path);

// Says on standard error where a projector with that panel cannot follow the correction that was
// read from the file, or that no registers can be built from it.
void TellDeviation(Session& session, const std::filesystem::path& path,
                   const CorrectionData& correction, PanelSize panel);

}  // namespace warpline
