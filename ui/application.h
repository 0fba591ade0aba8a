#pragma once

#include <wx/app.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/engine.h"
#include "app/start_words.h"
#include "platform/file_lock.h"
#include "toolkit/wheel_guard.h"
#include "toolkit/window_place.h"
#include "ui/read_me.h"
#include "ui/window_busy.h"
#include "ui/window_messages.h"

// The program from its start to its end.

namespace warpline {

class Application : public wxApp {
 public:
  bool Initialize(int& count, wxChar** words) override;
  bool OnInit() override;
  int OnRun() override;
  int OnExit() override;
  // That of both languages. The toolkit would go through its list of all languages for it.
  wxLayoutDirection GetLayoutDirection() const override { return wxLayout_LeftToRight; }

 private:
  static std::filesystem::path WindowPlacesFile();

  // One run's objects, in the order in which they need each other.
  struct Run {
    WindowMessages display;
    WindowBusy busy;
    Engine engine{display, busy};
    WheelGuard wheel_guard;
    WindowPlaces places{WindowPlacesFile()};
  };

  bool AnotherInstanceRuns();
  bool EndsForOther();
  std::int16_t WantedLanguage() const;
  void PrepareState();
  ShowFile Opening(bool (*open)(const std::filesystem::path&, const std::function<void()>&));
  void ShowMainWindow();

  std::optional<std::string> answer_;  // to a word that only asks
  StartWords words_;
  FileLock instance_;
  std::unique_ptr<Run> run_;
};

}  // namespace warpline
