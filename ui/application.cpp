#include "ui/application.h"

#include <filesystem>
#include <string>
#include <system_error>

#include "app/startup.h"
#include "platform/environment.h"
#include "platform/text_editor.h"
#include "toolkit/layout.h"
#include "toolkit/native/instant_states.h"
#include "ui/LSSmain.h"
#include "ui/read_me.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// Everything behind the program's name. The words alone decide about the language.
std::string CommandLineOf(int argc, wxChar** argv) {
  std::string line;
  for (int i = 1; i < argc; ++i) line.append(wxString(argv[i]).utf8_string()).append(" ");
  return line;
}

constexpr const char* kLockFileName = "WarplineTool.lock";
constexpr const char* kWindowPlacesFileName = "WarplineTool.windows";

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

// The toolkit's own start would read switches of its own from the command line.
bool Application::OnInit() {
  SetAppName("WarplineTool");
  if (AnotherInstanceRuns()) return true;  // a second start ends at once, and that is no failure
  std::error_code ignored;
  std::filesystem::current_path(ProgramFolder(), ignored);
  run_ = std::make_unique<Run>();
  PrepareState();
  ShowStatesAtOnce();
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

void Application::PrepareState() {
  LSSglobal& global = run_->engine.global;
  const wxPoint position = DefaultPosition();
  LoadSettings(global, ApplicationDataFolder(), position.x, position.y);
  ApplyLanguage(global, DecideLanguage(SystemLanguageIsJapanese(), CommandLineOf(argc, argv)));
}

void Application::ShowMainWindow() {
  const LSSglobal& global = run_->engine.global;
  auto* window = new LSSmain({run_->engine, run_->busy, SystemFileChoosers(global, kTypeWlt),
                              SystemFileChoosers(global, kTypeWls), BeamseekFromProgramFolder(),
                              ApplicationDataFolder(), ProgramFolder(), OpenInTextEditor});
  SetTopWindow(window);
  window->ShowFirst();
  window->CallAfter([window] { window->OfferUnsavedWork(); });
}

}  // namespace warpline
