#include "cli/session.h"

#include "app/correction_file.h"
#include "app/deviation_report.h"
#include "app/fault_report.h"
#include "app/status_line.h"
#include "platform/files.h"

namespace warpline {

std::size_t StreamDisplay::Show(const UserMessage& message) {
  if (!file_name_.empty()) stream_ << file_name_ << ": ";
  stream_ << message.text << '\n';
  return message.choices.size() - 1;
}

// What stood on the line goes.
constexpr const char* kFreshLine = "\r\x1b[K";

void TerminalProgress::ShowStep(int step, int steps) {
  if (seen_) stream_ << kFreshLine << text_(step, steps) << std::flush;
}

void TerminalProgress::EndSteps() {
  if (seen_) stream_ << kFreshLine << std::flush;
}

Session::Session(std::ostream& out_stream, std::ostream& err_stream, Language language)
    : out(out_stream),
      err(err_stream),
      texts(CliTextsOf(language)),
      display(err_stream),
      busy(err_stream,
           [this](int step, int steps) { return ProgressText(engine.global, step, steps); }) {
  ApplyLanguage(engine.global, language);
}

int Session::UsageError(CliText key, std::initializer_list<std::string> arguments) const {
  Tell(CliText::kErrorPrefix, {texts.Fill(key, arguments)});
  return kExitUsage;
}

void Session::Tell(CliText key, std::initializer_list<std::string> arguments) const {
  err << texts.Fill(key, arguments) << '\n';
}

bool Session::OnFile(const std::filesystem::path& path, const std::function<bool()>& work) {
  display.SetFile(Utf8Of(path));
  const bool done = ReportingFaults(engine.messages, work);
  display.SetFile("");
  return done;
}

bool Session::Open(const std::filesystem::path& path, std::string_view type) {
  return OnFile(path, [&] { return engine.files.OpenDataFile(path, type); });
}

bool Session::Save(const std::filesystem::path& path, std::string_view type, const FileData& data) {
  return OnFile(path, [&] { return engine.files.SaveDataFile(path, type, data); });
}

bool Session::Write(const std::filesystem::path& path, const std::function<std::string()>& make) {
  return OnFile(path, [&] {
    if (!engine.files.MayWrite(path)) return false;
    const std::error_code error = ReplaceFileContents(path, make());
    if (error) engine.messages.ShowSystemError(SystemErrorText(error));
    return !error;
  });
}

bool ReadCorrection(Session& session, const std::filesystem::path& path) {
  return session.OnFile(path, [&] {
    return OpenCorrection(session.engine.files, session.engine.global, session.engine.messages,
                          path);
  });
}

bool ReadRegisters(Session& session, const std::filesystem::path& path) {
  return session.OnFile(path, [&] {
    return OpenRegisters(session.engine.files, session.engine.global, session.engine.messages,
                         path);
  });
}

void TellDeviation(Session& session, const std::filesystem::path& path,
                   const CorrectionData& correction, PanelSize panel) {
  session.OnFile(path, [&] {
    const Deviation deviation = DeviationOf(correction, panel);
    for (const Axis axis : {kHorizontal, kVertical}) {
      const std::string text = DeviationText(session.engine.global, axis, deviation[axis]);
      if (!text.empty()) session.engine.messages.ShowSystemError(text);
    }
    return true;
  });
}

}  // namespace warpline
