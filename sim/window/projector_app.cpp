#include "sim/window/projector_app.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>

#include "sim/window/projector_frame.h"

namespace warpline::sim {
namespace {

class ProjectorApp : public wxApp {
 public:
  explicit ProjectorApp(const WindowRequest& request) : request_(request) {}

  bool OnInit() override {
    SetAppName("warpline-projector");
    (new ProjectorFrame(request_))->Show();
    return true;
  }

 private:
  const WindowRequest& request_;
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
