#pragma once

#include <wx/app.h>
#include <wx/snglinst.h>

#include <memory>

#include "app/projector_commands.h"
#include "core/LSSglobal.h"
#include "core/messages.h"
#include "files/LSSfile.h"
#include "link/projector_link.h"
#include "ui/LSSmain.h"
#include "ui/window_busy.h"
#include "ui/window_messages.h"

// The program from its start to its end.

namespace warpline {

class Application : public wxApp {
 public:
  bool OnInit() override;
  int OnRun() override;
  int OnExit() override;

 private:
  // One run's objects, in the order in which they need each other.
  struct Run {
    Run();

    LSSglobal global;
    WindowMessages display;
    WindowBusy busy;
    Messages messages{global, display};
    LSSfile files{messages};
    ProjectorLink link;
    ProjectorCommands commands;
    MainDialogs dialogs;
  };

  bool AnotherInstanceRuns();
  void PrepareState();
  void ShowMainWindow();

  wxSingleInstanceChecker instance_;
  std::unique_ptr<Run> run_;
};

}  // namespace warpline
