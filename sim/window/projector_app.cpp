#include "sim/window/projector_app.h"

#include <wx/app.h>
#include <wx/display.h>
#include <wx/init.h>
#include <wx/log.h>

#include <optional>

#include "core/LSSglobal.h"
#include "platform/environment.h"
#include "sim/window/first_size.h"
#include "sim/window/projector_frame.h"
#include "toolkit/wheel_guard.h"
#include "toolkit/window_place.h"

namespace warpline::sim {
namespace {

// What the system may lay around a window, in DIP.
constexpr int kFrameWidth = 8;
constexpr int kFrameHeight = 36;
constexpr const char* kWindowFileName = "warpline-projector.ini";

// In the lower left corner of the screen.
void PlaceFirst(wxTopLevelWindow& window) {
  const wxRect screen = wxDisplay(0U).GetClientArea();
  const wxSize size = window.FromDIP(FirstSize(window.ToDIP(screen.GetSize())));
  // By its client area: after SetSize GTK puts the window up only when it knows the frame around
  // it, and has lost the position by then.
  const wxSize inside = size - window.FromDIP(wxSize(kFrameWidth, kFrameHeight));
  window.SetClientSize(window.WindowToClientSize(inside));
  window.SetPosition({screen.x, screen.GetBottom() + 1 - size.y});
}

class ProjectorApp : public wxApp {
 public:
  explicit ProjectorApp(const WindowRequest& request) : request_(request) {}

  bool OnInit() override {
    SetAppName("warpline-projector");
    guard_.emplace();
    places_.emplace(DataFolder(ApplicationDataFolder()) / kWindowFileName);
    auto* const frame = new ProjectorFrame(request_);
    if (!KeepPlace(*frame)) PlaceFirst(*frame);
    frame->Show();
    return true;
  }

  int OnExit() override {
    places_.reset();
    guard_.reset();
    return wxApp::OnExit();
  }

 private:
  const WindowRequest& request_;
  std::optional<WheelGuard> guard_;
  std::optional<WindowPlaces> places_;
};

}  // namespace

bool RunApplication(const WindowRequest& request) {
  const wxLogNull quiet;  // a missing display is told by the caller
  wxApp::SetInstance(new ProjectorApp(request));
  int argc = 0;
  char** const argv = nullptr;
  if (!wxEntryStart(argc, argv)) return false;
  if (wxTheApp->CallOnInit()) wxTheApp->OnRun();
  wxTheApp->OnExit();
  wxEntryCleanup();
  return true;
}

}  // namespace warpline::sim
