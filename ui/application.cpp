#include "ui/application.h"

#include <wx/msgdlg.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <thread>

#include "app/hand_over.h"
#include "app/link_trial.h"
#include "app/setup_sheet.h"
#include "app/start_answer.h"
#include "app/startup.h"
#include "core/build_info.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "platform/console.h"
#include "platform/environment.h"
#include "toolkit/layout.h"
#include "toolkit/native/drawn_marks.h"
#include "toolkit/native/foreground.h"
#include "toolkit/native/instant_states.h"
#include "toolkit/native/open_file.h"
#include "ui/LSSmain.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr const char* kLockFileName = "WarplineTool.lock";
constexpr const char* kWindowPlacesFileName = "WarplineTool.windows";

// How long a start waits until the tool that runs has taken its file: longer than a command takes
// that goes well, and no longer than a user waits without looking what is the matter.
constexpr std::chrono::seconds kHandOverTime{5};
constexpr std::chrono::milliseconds kLookAgain{20};

// The width that the preview takes beside the main window at first, in DIP.
constexpr int kPreviewWidth = 640;

// Where the main window stands when no settings say so: in the middle of the first screen together
// with the preview, which opens at its right.
wxPoint DefaultPosition() {
  wxSize both = LSSmain::FirstSize();
  both.x += wxWindow::FromDIP(kPreviewWidth, nullptr);
  const wxRect screen = UsableScreen({});
  wxPoint position = HeldInside(screen, wxRect(both).CentreIn(screen).GetPosition(), both);
  if (both.x > screen.width) position.y = screen.y;  // the preview opens below
  return position;
}

}  // namespace

// Before the toolkit's own start, which fails where there is no display.
bool Application::Initialize(int& count, wxChar** words) {
  answer_ = StartAnswer(CommandLineWords(), BuildToolkit(), ProgramFolder());
  if (answer_ && PrintToStarter(*answer_)) std::exit(0);
  return wxApp::Initialize(count, words);
}

// The toolkit's own start would read switches of its own from the command line.
bool Application::OnInit() {
  SetAppName("WarplineTool");
  const std::vector<std::string> words = CommandLineWords();
  if (IsTrial(words)) {
    RunTrial(words, std::cout);
    return true;  // without a run, OnRun ends the program
  }
  if (answer_) {
    wxMessageBox(WxText(*answer_), GetAppName());
    return true;
  }
  words_ = SortWords(words);
  if (AnotherInstanceRuns() && EndsForOther()) return true;  // and that is no failure
  std::error_code ignored;
  std::filesystem::current_path(ProgramFolder(), ignored);
  run_ = std::make_unique<Run>();
  PrepareState();
  ShowStatesAtOnce();
  DrawMarks();
  ShowMainWindow();
  return true;
}

int Application::OnRun() {
  return run_ ? wxApp::OnRun() : 0;
}

int Application::OnExit() {
  run_.reset();
  return wxApp::OnExit();
}

// One instance a user and settings folder. A folder in which no file can be made is no reason not
// to start.
bool Application::AnotherInstanceRuns() {
  const std::filesystem::path folder = MakeDataFolder(ApplicationDataFolder());
  return instance_.Take(folder / kLockFileName) == FileLock::Result::kOwned;
}

std::filesystem::path Application::WindowPlacesFile() {
  return MakeDataFolder(ApplicationDataFolder()) / kWindowPlacesFileName;
}

// A start without a file ends at once; one with a file hands it over, says so when the other does
// not take it, and goes on in its place when it ends meanwhile.
bool Application::EndsForOther() {
  if (words_.file.empty()) return true;
  GiveForegroundAway();
  HandOver request(RequestFolder(ApplicationDataFolder()), words_.file);
  const auto end = std::chrono::steady_clock::now() + kHandOverTime;
  while (request.Look() == HandOver::Answer::kWaiting && std::chrono::steady_clock::now() < end) {
    if (!AnotherInstanceRuns()) return request.Withdraw() == HandOver::Answer::kTaken;
    std::this_thread::sleep_for(kLookAgain);
  }
  if (request.Withdraw() == HandOver::Answer::kTaken) return true;
  LSSglobal global;
  ApplyLanguage(global, WantedLanguage());
  WindowMessages display;
  const Messages messages(global, display);
  messages.Choose(FilledText(TextOf(global, ToolText::kToolBusy), {Utf8Of(words_.file)}),
                  MessageIcon::kInformation, {TextOf(global, kMsgOk)});
  return true;
}

std::int16_t Application::WantedLanguage() const {
  return DecideLanguage(SystemLanguageIsJapanese(), words_.switches);
}

void Application::PrepareState() {
  LSSglobal& global = run_->engine.global;
  const wxPoint position = DefaultPosition();
  LoadSettings(global, ApplicationDataFolder(), position.x, position.y);
  ApplyLanguage(global, WantedLanguage());
}

// That no program takes a file may show later, while the user goes on.
ShowFile Application::Opening(bool (*open)(const std::filesystem::path&,
                                           const std::function<void()>&)) {
  return [this, open](const std::filesystem::path& file) {
    return open(file, [this, file] {
      CallAfter([this, file] {
        if (run_) TellNotShown(run_->engine, file);
      });
    });
  };
}

void Application::ShowMainWindow() {
  const LSSglobal& global = run_->engine.global;
  auto* window = new LSSmain({run_->engine, run_->busy, SystemFileChoosers(global, kTypeWlt),
                              SystemFileChoosers(global, kTypeWls), BeamseekFromProgramFolder(),
                              ApplicationDataFolder(), ProgramFolder(), Opening(OpenInTextEditor),
                              SystemFileChoosers(global, kTypeHtml), Opening(OpenInBrowser),
                              SystemFileChoosers(global, "png;*.jpg;*.jpeg").open,
                              SystemRecordChooser(global), SystemFileChoosers(global, "txt")});
  SetTopWindow(window);
  window->ShowFirst();
  window->CallAfter([window, file = words_.file] {
    window->OfferUnsavedWork();
    if (!file.empty()) window->OpenNamed(file);
  });
}

}  // namespace warpline
