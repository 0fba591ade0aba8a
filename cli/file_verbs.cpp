#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/fault_report.h"
#include "cli/verbs.h"
#include "platform/files.h"

// check, convert: files as the tool reads and writes them, each from a fresh start.

namespace warpline {

namespace {

// Keeps what would have been shown, on one line.
class CollectingDisplay : public MessageDisplay {
 public:
  std::size_t Show(const UserMessage& message) override {
    if (message.text != last_) {
      last_ = message.text;
      if (!line.empty()) line += ' ';
      line += message.text;
    }
    return message.choices.size() - 1;
  }

  std::string line;

 private:
  std::string last_;
};

// A missing settings file is no news to the tool, but it is to somebody who asked for that file.
void TellMissingFile(const Messages& messages) {
  messages.ShowSystemError(
      SystemErrorText(std::make_error_code(std::errc::no_such_file_or_directory)));
}

bool ReadAny(LSSfile& file, const std::filesystem::path& path, std::string_view type,
             const Messages& messages) {
  std::error_code ignored;
  const bool is_file = path != kStandardName;
  if (is_file && type == kTypeIni && !std::filesystem::exists(path, ignored)) {
    TellMissingFile(messages);
    return false;
  }
  return file.OpenDataFile(path, type);
}

struct CheckedFile {
  bool accepted = false;
  std::string text;                          // why it was not
  FilePlace place;                           // and where
  std::optional<CorrectionData> correction;  // of an accepted correction data file
};

CheckedFile CheckOne(const std::filesystem::path& path, Session& session) {
  CollectingDisplay display;
  NoBusyIndicator busy;
  Engine engine(display, busy);
  ApplyLanguage(engine.global, LanguageOf(session.engine.global));
  engine.files.SetReader([&session](const std::filesystem::path& file, std::string& bytes) {
    return session.Read(file, bytes);
  });
  const std::string type = session.KindOf(path).value_or(std::string(kTypeWlt));
  const auto read = [&] { return ReadAny(engine.files, path, type, engine.messages); };
  const bool accepted = ReportingFaults(engine.messages, read);
  CheckedFile checked{accepted, display.line, engine.files.Place(), std::nullopt};
  if (accepted && type == kTypeWlt) checked.correction = engine.files.Staging().Correction;
  return checked;
}

nlohmann::ordered_json JsonOf(const std::string& name, const CheckedFile& file) {
  using Json = nlohmann::ordered_json;
  const std::string key = file.place.Key();
  return {{"file", name},
          {"ok", file.accepted},
          {"line", file.place.line == 0 ? Json() : Json(file.place.line)},
          {"key", key.empty() ? Json() : Json(key)},
          {"text", file.accepted ? Json() : Json(file.text)}};
}

std::string LineOfCheck(const std::string& name, const CheckedFile& file, const CliTexts& texts) {
  if (file.accepted) return texts.Fill(CliText::kCheckOk, {name});
  return texts.Fill(CliText::kCheckFailed, {NameOfPlace(PathOf(name), file.place), file.text});
}

}  // namespace

int RunCheck(const VerbInput& input, Session& session) {
  const std::optional<PanelSize> panel = input.Panel();
  if (!panel) return kExitUsage;
  int exit_code = kExitOk;
  nlohmann::ordered_json files = nlohmann::ordered_json::array();
  for (const std::string& name : input.Texts("FILE")) {
    const CheckedFile file = CheckOne(PathOf(name), session);
    if (!file.accepted) exit_code = kExitFailed;
    files.push_back(JsonOf(name, file));
    if (!session.report.Wanted()) session.out << LineOfCheck(name, file, session.texts) << '\n';
    if (!file.correction || !input.Has("--panel")) continue;
    TellDeviation(session, PathOf(name), *file.correction, *panel);
  }
  session.report.Set("files", std::move(files));
  return exit_code;
}

int RunConvert(const VerbInput& input, Session& session) {
  const std::filesystem::path from = input.Path("IN");
  const std::filesystem::path to = input.Path("OUT");
  const std::optional<std::string> type = session.KindOf(from);
  const std::optional<std::string> out_type = to == kStandardName ? type : TypeOf(to);
  if (!type) return session.UsageError(CliText::kUnknownKind, {input.Text("IN")});
  if (!out_type) return session.UsageError(CliText::kUnknownKind, {input.Text("OUT")});
  if (type != out_type) {
    return session.UsageError(CliText::kKindsDiffer, {input.Text("IN"), input.Text("OUT")});
  }
  const auto read = [&] {
    return ReadAny(session.engine.files, from, *type, session.engine.messages);
  };
  if (!session.OnFile(from, read)) return kExitFailed;
  return session.Save(to, *type, session.engine.files.Staging()) ? kExitOk : kExitFailed;
}

}  // namespace warpline
