#include "cli/run_command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "app/fault_report.h"
#include "cli/many_projectors.h"
#include "cli/verbs.h"
#include "core/build_info.h"
#include "core/language_word.h"
#include "core/nearest_word.h"
#include "link/library_origin.h"
#include "platform/environment.h"

namespace warpline {

namespace {

constexpr const char* kProgram = "warpline";

// The long name of an option whose short one is its name in the verbs' tables.
std::string NamesOf(const ArgumentRow& row) {
  return row.name == "-o" ? "-o,--output" : std::string(row.name);
}

// The parser only sorts words into options and arguments; what they mean is decided by the verbs.
CLI::Option* AddArgument(CLI::App& app, const ArgumentRow& row, const CliTexts& texts) {
  const std::string name = NamesOf(row);
  if (row.take == Take::kFlag) return app.add_flag(name, texts[row.help]);
  CLI::Option* option = app.add_option(
      name, [](const CLI::results_t&) { return true; }, texts[row.help]);
  option->type_name(std::string(row.value_name))->type_size(1)->expected(1);
  option->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  if (row.take == Take::kMany || row.take == Take::kLists) {
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    option->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args();
    option->inject_separator(row.take == Take::kLists);
  }
  if (row.take == Take::kSeveral) {
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    option->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(false);
  }
  option->required(row.take == Take::kRequired || row.take == Take::kMany);
  return option;
}

constexpr ArgumentRow kLanguageRow{kLanguageOption, "ja|en", Take::kOptional,
                                   CliText::kLanguageOption};

void SetUpProgram(CLI::App& app, const CliTexts& texts) {
  app.name(kProgram);
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.option_defaults()->group(texts[CliText::kOptionsGroup]);
  app.set_help_flag("-h,--help", texts[CliText::kHelpOption]);
  app.set_version_flag("--version", kProgram, texts[CliText::kVersionOption]);
  const auto formatter = std::make_shared<CLI::Formatter>();
  formatter->label("Usage", texts[CliText::kUsageLabel]);
  formatter->label("OPTIONS", texts[CliText::kOptionsLabel]);
  formatter->label("Positionals", texts[CliText::kArgumentsGroup]);
  formatter->label("SUBCOMMAND", texts[CliText::kVerbLabel]);
  formatter->label("REQUIRED", texts[CliText::kRequiredLabel]);
  app.formatter(formatter);
}

void AddVerbs(CLI::App& app, const CliTexts& texts) {
  AddArgument(app, kLanguageRow, texts);
  for (const Verb& verb : Verbs()) {
    CLI::App* sub = app.add_subcommand(std::string(verb.name), texts[verb.help]);
    sub->group(texts[CliText::kVerbsGroup]);
    sub->get_help_ptr()->group(texts[CliText::kOptionsGroup]);
    for (const ArgumentRow& row : verb.arguments) AddArgument(*sub, row, texts);
    AddArgument(*sub, kLanguageRow, texts);
  }
}

// The parser names the argument at the start of its message, in front of one of these.
std::string ArgumentNamed(const std::string& message) {
  const std::size_t end = std::min(message.find(':'), message.find(" is required"));
  return message.substr(0, end);
}

bool LooksLikeOption(const std::string& word) {
  return word.size() > 1 && word.front() == '-';
}

std::vector<std::string> OptionNames(const CLI::App& app) {
  const auto verbs = app.get_subcommands();
  const CLI::App& given = verbs.empty() ? app : *verbs.front();
  std::vector<std::string> names;
  for (const CLI::Option* option : given.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::vector<std::string> VerbNames() {
  std::vector<std::string> names;
  for (const Verb& verb : Verbs()) names.emplace_back(verb.name);
  return names;
}

// What is wrong with a word, and the known one that was probably meant.
int TellUnknown(const Session& session, CliText key, const std::string& word,
                const std::vector<std::string>& known) {
  const std::string nearest = NearestWord(word.substr(0, word.find('=')), known);
  if (nearest.empty()) return session.UsageError(key, {word});
  return session.UsageError(CliText::kDidYouMean, {session.texts.Fill(key, {word}), nearest});
}

// Words that fit nowhere; said before anything that is missing, which they were probably meant to
// be.
std::optional<int> TellUnknownWords(const CLI::App& app, const Session& session) {
  const std::vector<std::string> words = app.remaining(true);
  if (words.empty()) return std::nullopt;
  const auto option = std::find_if(words.begin(), words.end(), LooksLikeOption);
  if (option != words.end()) {
    return TellUnknown(session, CliText::kUnknownOption, *option, OptionNames(app));
  }
  if (app.get_subcommands().empty()) {
    return TellUnknown(session, CliText::kUnknownVerb, words.front(), VerbNames());
  }
  return session.UsageError(CliText::kUnexpectedArgument, {words.front()});
}

// The parser's own messages are English; what they say is said again in the user's language.
int TellUsageError(const CLI::App& app, const CLI::ParseError& error, const Session& session) {
  if (const std::optional<int> told = TellUnknownWords(app, session)) return *told;
  const std::string message = error.what();
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
    if (app.get_subcommands().empty()) {
      const int told = session.UsageError(CliText::kMissingVerb);
      session.err << app.help();
      return told;
    }
    return session.UsageError(CliText::kMissingArgument, {ArgumentNamed(message)});
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return session.UsageError(CliText::kMissingValue, {ArgumentNamed(message)});
  }
  return session.UsageError(CliText::kOtherUsageError, {message});
}

void TellWhereHelpIs(const CLI::App& app, const Session& session) {
  const auto verbs = app.get_subcommands();
  const std::string name = verbs.empty() ? kProgram : kProgram + (" " + verbs.front()->get_name());
  session.TellUser(CliText::kSeeHelp, {name});
}

int RunOnProjectors(const Verb& verb, const VerbInput& input, Session& session) {
  int exit_code = kExitOk;
  const auto projectors = ProjectorsOf(input, session, exit_code);
  if (!projectors) return exit_code;
  return projectors->empty() ? verb.run(input, session)
                             : RunOnMany(verb, input, *projectors, session);
}

VerbInput InputOf(const CLI::App& sub, const Verb& verb, Session& session) {
  VerbInput input(session);
  for (const ArgumentRow& row : verb.arguments) {
    const CLI::Option* option = sub.get_option(std::string(row.name));
    if (option->count() > 0) input.Set(row.name, option->reduced_results());
  }
  return input;
}

int RunVerb(const CLI::App& app, Session& session) {
  const CLI::App& given = *app.get_subcommands().front();
  const auto verb = std::find_if(Verbs().begin(), Verbs().end(), [&given](const Verb& row) {
    return row.name == given.get_name();
  });
  const VerbInput input = InputOf(given, *verb, session);
  if (input.Has(kJsonOption)) session.report.Begin(verb->name);
  int exit_code = kExitFailed;
  ReportingFaults(session.engine.messages, [&] {
    exit_code = RunOnProjectors(*verb, input, session);
    return exit_code == kExitOk;
  });
  if (session.report.Wanted()) {
    session.out << session.report.Line(exit_code == kExitOk) << '\n';
  }
  return exit_code;
}

int ParseAndRun(const std::vector<std::string>& words, Session& session) {
  CLI::App app(session.texts[CliText::kProgram]);
  SetUpProgram(app, session.texts);
  AddVerbs(app, session.texts);
  int exit_code = kExitOk;
  try {
    app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
    exit_code = RunVerb(app, session);
  } catch (const CLI::CallForVersion&) {
    session.out << VersionText(kProgram, "") << LibraryVersionText(ProgramFolder());
  } catch (const CLI::Success&) {
    session.out << app.help();
  } catch (const CLI::ParseError& error) {
    exit_code = TellUsageError(app, error, session);
  }
  if (exit_code == kExitUsage) TellWhereHelpIs(app, session);
  return exit_code;
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& words, std::ostream& out, std::ostream& err,
                   bool errors_seen, std::istream& in) {
  const std::string language = LanguageWord(words);
  Session session(out, err, LanguageOfWord(language), in);
  session.busy.SetSeen(errors_seen);
  if (!language.empty() && language != "ja" && language != "en") {
    return session.UsageError(CliText::kBadLanguage, {language});
  }
  const int exit_code = ParseAndRun(words, session);
  if (out.flush()) return exit_code;
  session.TellUser(CliText::kOutputFailed);
  return exit_code == kExitOk ? kExitFailed : exit_code;
}

}  // namespace warpline
