#include "cli/session.h"

#include <iterator>
#include <string>

#include "app/correction_file.h"
#include "app/deviation_report.h"
#include "app/fault_report.h"
#include "app/status_line.h"
#include "platform/console.h"
#include "platform/files.h"

namespace warpline {

namespace {

// A text of the command line's own, which nothing has to be answered to.
UserMessage NoteOf(std::string text) {
  UserMessage note;
  note.text = std::move(text);
  note.choices = {""};
  return note;
}

}  // namespace

std::size_t StreamDisplay::Show(const UserMessage& message) {
  const std::string about = subject_ ? subject_() : "";
  if (report_.Wanted()) {
    report_.Add(about, message);
  } else {
    stream_ << about << (about.empty() ? "" : ": ") << message.text << '\n';
  }
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

Session::Session(std::ostream& out_stream, std::ostream& err_stream, Language language,
                 std::istream& in_stream)
    : in(in_stream),
      out(out_stream),
      err(err_stream),
      texts(CliTextsOf(language)),
      display(err_stream, report),
      busy(err_stream,
           [this](int step, int steps) { return ProgressText(engine.global, step, steps); }) {
  ApplyLanguage(engine.global, language);
  engine.files.SetReader(
      [this](const std::filesystem::path& path, std::string& bytes) { return Read(path, bytes); });
}

int Session::UsageError(CliText key, std::initializer_list<std::string> arguments) const {
  const std::string text = texts.Fill(key, arguments);
  if (report.Wanted()) report.Add("", NoteOf(text));
  TellUser(CliText::kErrorPrefix, {text});
  return kExitUsage;
}

void Session::Tell(CliText key, std::initializer_list<std::string> arguments) {
  display.Show(NoteOf(texts.Fill(key, arguments)));
}

void Session::TellUser(CliText key, std::initializer_list<std::string> arguments) const {
  err << texts.Fill(key, arguments) << '\n';
}

bool Session::About(StreamDisplay::Subject subject, const std::function<bool()>& work) {
  display.SetSubject(std::move(subject));
  const bool done = ReportingFaults(engine.messages, work);
  display.SetSubject(nullptr);
  return done;
}

bool Session::OnFile(const std::filesystem::path& path, const std::function<bool()>& work) {
  return About([&] { return NameOfPlace(path, engine.files.Place()); }, work);
}

std::error_code Session::Read(const std::filesystem::path& path, std::string& bytes) {
  if (path != kStandardName) return ReadWholeFile(path, bytes);
  if (!input_) {
    MakeInputBinary();
    input_.emplace(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  bytes = *input_;
  return {};
}

std::optional<std::string> Session::KindOf(const std::filesystem::path& path) {
  if (path != kStandardName) return TypeOf(path);
  std::string bytes;
  Read(path, bytes);
  return TypeOfText(bytes);
}

bool Session::Open(const std::filesystem::path& path, std::string_view type) {
  return OnFile(path, [&] { return engine.files.OpenDataFile(path, type); });
}

bool Session::Save(const std::filesystem::path& path, std::string_view type, const FileData& data) {
  if (path != kStandardName) {
    return OnFile(path, [&] { return engine.files.SaveDataFile(path, type, data); });
  }
  const std::optional<std::string> text = engine.files.TextOf(type, data);
  return text && Write(path, [&text] { return *text; });
}

bool Session::Write(const std::filesystem::path& path, const std::function<std::string()>& make) {
  return OnFile(path, [&] {
    if (path == kStandardName) {
      MakeOutputBinary();
      out << make();
      return true;
    }
    if (!engine.files.MayWrite(path)) return false;
    const std::error_code error = ReplaceFileContents(path, make());
    if (error) engine.messages.ShowSystemError(SystemErrorText(error));
    return !error;
  });
}

std::string NameOfPlace(const std::filesystem::path& path, const FilePlace& place) {
  std::string name = Utf8Of(path);
  if (place.line == 0) return name;
  name.append(":").append(std::to_string(place.line));
  const std::string key = place.Key();
  return key.empty() ? name : name.append(": ").append(key);
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
