#include "cli/many_projectors.h"

#include <algorithm>
#include <chrono>
#include <list>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "core/conversions.h"
#include "core/language_word.h"
#include "platform/child_process.h"
#include "platform/environment.h"
#include "platform/files.h"

namespace warpline {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::chrono::milliseconds kPatience{20};  // with one process, while others may write

struct Worker {
  const ListedProjector* projector = nullptr;
  ChildProcess process;
  std::string output;
};

// Where the calls of one projector are recorded: its name stands before the file's ending, without
// the letters that a file's name cannot have.
std::filesystem::path RecordOf(const ListedProjector& projector,
                               const std::filesystem::path& file) {
  std::string name = projector.name;
  for (char& letter : name) {
    if (std::string_view("<>:\"/\\|?*").find(letter) != std::string_view::npos) letter = '_';
  }
  return file.parent_path() / PathOf(Utf8Of(file.stem()) + "-" + name + Utf8Of(file.extension()));
}

// What the process of one projector is started with: the verb's own words, but for this projector
// alone and with a report that is read here.
std::vector<std::string> WordsFor(const ListedProjector& projector, const Verb& verb,
                                  const VerbInput& input, const Session& session) {
  std::vector<std::string> words{std::string(verb.name)};
  for (const ArgumentRow& row : verb.arguments) {
    if (row.name == "--lan" || row.name == "--projectors" || row.name == kJsonOption) continue;
    const bool is_file = row.name == "FILE";
    if (!input.Has(row.name) && !(is_file && projector.file)) continue;
    if (row.name.starts_with('-')) words.emplace_back(row.name);
    if (row.take == Take::kFlag) continue;
    if (row.name == kRecordOption) {
      words.push_back(Utf8Of(RecordOf(projector, input.Path(kRecordOption))));
      continue;
    }
    words.push_back(is_file && projector.file ? Utf8Of(*projector.file) : input.Text(row.name));
  }
  const bool japanese = LanguageOf(session.engine.global) == Language::kJapanese;
  words.insert(words.end(), {"--lan", projector.address, std::string(kJsonOption),
                             std::string(kLanguageOption), japanese ? "ja" : "en"});
  return words;
}

// The report in place of one that no process has written.
Json ReportWithout(const ListedProjector& projector, const Verb& verb, const std::string& text) {
  const Json message{{"about", nullptr}, {"kind", nullptr}, {"code", nullptr}, {"text", text}};
  return {{"verb", verb.name},
          {"ok", false},
          {"target", projector.address},
          {"messages", Json::array({message})}};
}

// The report that a process has written, or what became of the process.
Json ReportOf(const Worker& worker, const ProcessEnd& end, const Verb& verb,
              const Session& session) {
  Json report = Json::parse(worker.output, nullptr, false);
  if (report.is_object() && report.contains("messages")) return report;
  const std::string code = std::to_string(end.code);
  return ReportWithout(*worker.projector, verb, session.texts.Fill(CliText::kProcessEnded, {code}));
}

// What one says of itself is not said twice.
std::string MessageText(const Json& message, const Json& target) {
  const std::string text = OneLine(message.value("text", ""));
  const Json about = message.value("about", Json());
  return about.is_string() && about != target ? about.get<std::string>() + ": " + text : text;
}

std::string LineFor(const std::string& name, const Json& report, const Session& session) {
  const bool ok = report.value("ok", false);
  std::string line = ok ? session.texts[CliText::kDone] : "";
  if (ok && report.contains("mode")) line = report["mode"].dump();
  if (report.contains("verdict")) line = report.value("verdict", "");
  std::string told;
  for (const Json& message : report["messages"]) {
    told.append(told.empty() ? "" : " ")
        .append(MessageText(message, report.value("target", Json())));
  }
  const char* const between = line.empty() || told.empty() ? "" : "; ";
  return name + ": " + line + between + told;
}

void TellReport(const std::string& name, const Json& report, Session& session) {
  if (session.report.Wanted()) {
    Json named{{"name", name}};
    named.update(report);
    session.out << LineOf(named) << std::endl;
  } else {
    session.out << LineFor(name, report, session) << std::endl;
  }
}

// Tells what became of one; the exit code of its process.
int TellEnd(Worker& worker, const Verb& verb, Session& session) {
  const ProcessEnd end = worker.process.Wait();
  const Json report = ReportOf(worker, end, verb, session);
  TellReport(worker.projector->name, report, session);
  if (!end.crashed && end.code == kExitUsage) return kExitUsage;
  return report.value("ok", false) ? kExitOk : kExitFailed;
}

bool HasEnded(Worker& worker) {
  return worker.process.ReadOutput(worker.output, kPatience) == ChildProcess::Read::kEnd;
}

int TellEndsOf(std::list<Worker>& workers, const Verb& verb, Session& session) {
  int exit_code = kExitOk;
  while (!workers.empty()) {
    for (auto worker = workers.begin(); worker != workers.end();) {
      if (HasEnded(*worker)) {
        exit_code = std::max(exit_code, TellEnd(*worker, verb, session));
        worker = workers.erase(worker);
      } else {
        ++worker;
      }
    }
  }
  return exit_code;
}

// Whether each has a file, where the verb takes one.
bool FilesAreThere(const Verb& verb, const VerbInput& input,
                   const std::vector<ListedProjector>& projectors, Session& session) {
  const bool takes_file = std::ranges::count(verb.arguments, "FILE", &ArgumentRow::name) > 0;
  if (!takes_file) return true;
  if (input.Text("FILE") == kStandardName) {
    session.UsageError(CliText::kInputForOne);
    return false;
  }
  const bool all = input.Has("FILE") || std::ranges::all_of(projectors, [](const auto& projector) {
                     return projector.file.has_value();
                   });
  if (!all) session.UsageError(CliText::kMissingArgument, {"FILE"});
  return all;
}

// Whether each can be recorded in a file of its own, where that is asked for.
bool RecordsAreApart(const VerbInput& input, const std::vector<ListedProjector>& projectors,
                     Session& session) {
  if (!input.Has(kRecordOption)) return true;
  const std::filesystem::path file = input.Path(kRecordOption);
  if (file == kStandardName) {
    session.UsageError(CliText::kOutputTwice);
    return false;
  }
  std::set<std::filesystem::path> records;
  for (const ListedProjector& projector : projectors) {
    const auto [record, first] = records.insert(RecordOf(projector, file));
    if (first) continue;
    session.UsageError(CliText::kRecordedTwice, {Utf8Of(*record)});
    return false;
  }
  return true;
}

}  // namespace

int RunOnMany(const Verb& verb, const VerbInput& input,
              const std::vector<ListedProjector>& projectors, Session& session) {
  if (!RecordsAreApart(input, projectors, session)) return kExitUsage;
  if (!FilesAreThere(verb, input, projectors, session)) return kExitUsage;
  std::list<Worker> workers;
  int exit_code = kExitOk;
  for (const ListedProjector& projector : projectors) {
    Worker& worker = workers.emplace_back();
    worker.projector = &projector;
    const std::vector<std::string> words = WordsFor(projector, verb, input, session);
    if (worker.process.Start(ProgramFile(), words)) continue;
    TellReport(projector.name, ReportWithout(projector, verb, session.texts[CliText::kNoProcess]),
               session);
    exit_code = kExitFailed;
    workers.pop_back();
  }
  exit_code = std::max(exit_code, TellEndsOf(workers, verb, session));
  session.report.Drop();
  return exit_code;
}

}  // namespace warpline
