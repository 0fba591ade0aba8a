#include "app/link_trial.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <optional>

#include "app/trial_lines.h"
#include "core/conversions.h"
#include "core/messages.h"
#include "core/no_busy_indicator.h"
#include "link/exchange_recorder.h"
#include "link/library_loader.h"
#include "platform/environment.h"
#include "platform/files.h"
#include "platform/program_kind.h"

namespace warpline {
namespace {

constexpr const char* kTrialWord = "--trial";
constexpr const char* kLibraryWord = "library";
constexpr const char* kLinkWord = "link";

// The numbers of a trial of the link stand behind its address and port, in this order.
constexpr std::size_t kFirstNumber = 4;
constexpr std::size_t kNumbers = 7;
constexpr std::size_t kLinkWords = kFirstNumber + kNumbers;

using Clock = std::chrono::steady_clock;

// What a step found.
struct Finding {
  CheckState state = CheckState::kGood;
  std::string told{};
  std::optional<LinkFailure> failure{};
};

Finding Failed(std::string told) {
  return {CheckState::kFailed, std::move(told)};
}

// Writes each step as it goes.
class Steps {
 public:
  explicit Steps(std::ostream& out) : out_(out) {}

  // True when it did not fail.
  bool Do(const std::string& step, const std::function<Finding()>& work) const {
    out_ << BeginLine(step) << std::flush;
    const Clock::time_point begun = Clock::now();
    const Finding found = work();
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begun);
    TrialStep told{.step = step, .state = found.state, .milliseconds = time.count()};
    told.told = found.told;
    if (found.failure) {
      told.category = static_cast<int>(found.failure->category);
      told.code = found.failure->code;
    }
    out_ << EndLine(told) << std::flush;
    return found.state != CheckState::kFailed;
  }

 private:
  std::ostream& out_;
};

Finding FileFinding(const std::filesystem::path& file) {
  std::error_code ignored;
  const bool there = std::filesystem::is_regular_file(file, ignored);
  return {there ? CheckState::kGood : CheckState::kFailed, Utf8Of(file)};
}

// The widths of the library and of this program; of a file that is no library the second alone.
Finding KindFinding(const std::filesystem::path& file) {
  const auto own = ProgramKindOf(ProgramFile());
  const auto its = ProgramKindOf(file);
  const std::string wanted = std::to_string(own ? own->bits : 0);
  if (!its) return Failed(wanted);
  const std::string bits = std::to_string(its->bits);
  return its == own ? Finding{CheckState::kGood, bits} : Failed(bits + ' ' + wanted);
}

Finding OthersFinding(const SharedLibrary& loaded, const LibraryNames& names) {
  std::string missing;
  for (const std::string_view name : names.declared) {
    if (loaded.Symbol(std::string(name).c_str()) != nullptr) continue;
    missing.append(missing.empty() ? "" : ", ").append(name);
  }
  return {missing.empty() ? CheckState::kGood : CheckState::kNote, missing};
}

class NobodyIsTold : public MessageDisplay {
 public:
  std::size_t Show(const UserMessage& message) override { return message.choices.size() - 1; }
};

class RecordToLines : public RecordSink {
 public:
  explicit RecordToLines(std::ostream& out) : out_(out) {}
  void Write(std::string lines) override { out_ << RecordLine(lines) << std::flush; }
  void Complete() override {}

 private:
  std::ostream& out_;
};

// One link from its opening to its closing.
class LinkSteps {
 public:
  LinkSteps(const BeamlinkProvider& provider, std::ostream& out)
      : steps_(out), link_(messages_, busy_, provider) {}

  void Observe(CallObserver& observer) { link_.Observe(&observer); }

  void Run(const Settings& settings) {
    if (!Do(kTrialOpen, [&] { return link_.OpenLink(settings) ? Told("") : std::nullopt; })) return;
    const bool takes_commands =
        Do(kTrialRunning, [this] { return Running(); }) &&
        Do(kTrialProbe, [this] { return link_.Probe() ? Told("") : std::nullopt; });
    if (takes_commands) AskRest();
    Do(kTrialClose, [this] { return link_.CloseLink() ? Told("") : std::nullopt; });
  }

 private:
  using Answer = std::optional<Finding>;

  static Answer Told(std::string told, CheckState state = CheckState::kGood) {
    return Finding{state, std::move(told)};
  }

  bool Do(const char* step, const std::function<Answer()>& ask) const {
    return steps_.Do(step, [&]() -> Finding {
      if (Answer answer = ask()) return *std::move(answer);
      return {CheckState::kFailed, "", link_.LastFailure()};
    });
  }

  // Each stands for itself while the link does.
  void AskRest() {
    Do(kTrialClass, [this] { return ModelClass(); });
    if (!IsLost()) Do(kTrialPanel, [this] { return Panel(); });
    if (!IsLost()) Do(kTrialMode, [this] { return Mode(); });
  }

  bool IsLost() const {
    const auto& failure = link_.LastFailure();
    return failure && failure->category == MessageCategory::kExchange &&
           failure->code == kBeamlinkSendError;
  }

  Answer Running() {
    constexpr std::int32_t kPowerOn = 1;
    const auto status = link_.AskRunning();
    if (!status) return std::nullopt;
    return Told(std::to_string(status->Power),
                status->Power == kPowerOn ? CheckState::kGood : CheckState::kNote);
  }

  Answer ModelClass() {
    const auto model = link_.AskModelClass();
    if (!model) return std::nullopt;
    return Told(std::to_string(model->model_class),
                model->model_class < kWholeBlockClass ? CheckState::kNote : CheckState::kGood);
  }

  Answer Panel() {
    const auto panel = link_.AskPanel();
    if (!panel) return std::nullopt;
    return Told(std::to_string(panel->size.Width) + 'x' + std::to_string(panel->size.Height),
                panel->told ? CheckState::kGood : CheckState::kNote);
  }

  Answer Mode() {
    const auto mode = link_.QueryMode();
    return mode ? Told(std::to_string(*mode)) : std::nullopt;
  }

  Steps steps_;
  LSSglobal global_;
  NobodyIsTold nobody_;
  NoBusyIndicator busy_;
  Messages messages_{global_, nobody_};
  ProjectorLink link_;
};

std::array<std::int64_t, kNumbers> NumbersOf(const Settings& settings, const TrialRecord& record) {
  return {settings.ConnectDevice,
          settings.ComPort,
          settings.ComSpeed,
          settings.USBPort,
          TimeOutOf(settings),
          (record.wanted ? 1 : 0) + (record.redacted ? 2 : 0),
          static_cast<std::int64_t>(record.link)};
}

// No address or port holds what a command line gives a meaning of its own.
std::string AsWord(std::string text) {
  std::erase_if(text, [](char c) { return c == '"' || c == '\\'; });
  return text;
}

bool ReadLinkWords(const std::vector<std::string>& words, Settings& settings, TrialRecord& record) {
  if (words.size() != kLinkWords) return false;
  settings.IPAddress = words[2];
  settings.LANPort = words[3];
  std::array<std::int64_t, kNumbers> numbers{};
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const auto number = WholeNumber<std::int64_t>(words[kFirstNumber + i], 0, 1'000'000'000);
    if (!number) return false;
    numbers[i] = *number;
  }
  settings.ConnectDevice = static_cast<std::int16_t>(numbers[0]);
  settings.ComPort = static_cast<std::int16_t>(numbers[1]);
  settings.ComSpeed = static_cast<std::int16_t>(numbers[2]);
  settings.USBPort = static_cast<std::int16_t>(numbers[3]);
  settings.SerialTimeOut = settings.LANTimeOut = settings.USBTimeOut =
      static_cast<std::int32_t>(numbers[4]);
  record = {(numbers[5] & 1) != 0, (numbers[5] & 2) != 0, static_cast<std::uint64_t>(numbers[6])};
  return true;
}

}  // namespace

std::vector<std::string> LibraryTrialWords(std::string_view library) {
  return {kTrialWord, kLibraryWord, std::string(library)};
}

std::vector<std::string> LinkTrialWords(const Settings& settings, const TrialRecord& record) {
  std::vector<std::string> words{kTrialWord, kLinkWord, AsWord(settings.IPAddress),
                                 AsWord(settings.LANPort)};
  for (const std::int64_t number : NumbersOf(settings, record)) {
    words.push_back(std::to_string(number));
  }
  return words;
}

bool IsTrial(const std::vector<std::string>& words) {
  return words.size() > 2 && words.front() == kTrialWord;
}

int RunTrial(const std::vector<std::string>& words, std::ostream& out) {
  constexpr int kBadWords = 2;
  if (words[1] == kLibraryWord) {
    TryLibrary(ProgramFolder(), words[2], out);
    return 0;
  }
  Settings settings;
  TrialRecord record;
  if (words[1] != kLinkWord || !ReadLinkWords(words, settings, record)) return kBadWords;
  TryLink(BeamlinkFromProgramFolder(), settings, record, out);
  return 0;
}

void TryLibrary(const std::filesystem::path& folder, std::string_view library, std::ostream& out) {
  const auto all = MakersLibraries();
  const auto names = std::find_if(all.begin(), all.end(), [library](const LibraryNames& each) {
    return each.library == library;
  });
  if (names == all.end()) return;
  const std::filesystem::path file = folder / PathOf(SharedLibrary::FileName(library));
  const std::string own = std::string(library) + '.';
  const Steps steps(out);
  SharedLibrary loaded;
  if (!steps.Do(own + kTrialFile, [&] { return FileFinding(file); }) ||
      !steps.Do(own + kTrialKind, [&] { return KindFinding(file); }) ||
      !steps.Do(own + kTrialLoad,
                [&] { return loaded.Load(file) ? Finding{} : Failed(loaded.Failure()); })) {
    return;
  }
  for (const std::string_view entry : names->required) {
    const std::string name(entry);
    steps.Do(own + name,
             [&] { return loaded.Symbol(name.c_str()) != nullptr ? Finding{} : Failed(""); });
  }
  steps.Do(own + kTrialOthers, [&] { return OthersFinding(loaded, *names); });
}

void TryLink(const BeamlinkProvider& provider, const Settings& settings, const TrialRecord& record,
             std::ostream& out) {
  RecordToLines sink(out);
  ExchangeRecorder recorder(sink, record.redacted, record.link);
  LinkSteps link(provider, out);
  if (record.wanted) link.Observe(recorder);
  link.Run(settings);
}

}  // namespace warpline
