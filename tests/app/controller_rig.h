#pragma once

#include <gtest/gtest.h>

#include <deque>

#include "app/main_controller.h"
#include "tests/support/engine_rig.h"

// A main controller over the recording library, with real files in a folder of its own.

namespace warpline {

namespace fs = std::filesystem;

inline const Texts kInitializeFrames{"01DF000000E0", "021A000002020121", "01DF0000020000E2",
                                     "01DF0000020100E3"};
inline const Texts kAppliedCommands{"01DF ",   "021A 02", "01DF 00", "01DF 02",
                                    "01DF 03", "01DF 10", "01DF 11", "01DF 01"};

// A window of which only the two file dialogs have a will of their own.
class FakeView : public MainView {
 public:
  void ShowModel() override { ++models_shown; }
  void ShowValues() override { ++values_shown; }
  fs::path ChooseFileToOpen(const fs::path& folder) override {
    folders.push_back(folder);
    return Next(opens);
  }
  fs::path ChooseFileToSave(const fs::path& folder, const fs::path& current) override {
    folders.push_back(folder);
    offered.push_back(current);
    return Next(saves);
  }

  void FileUsed(const fs::path&) override {}

  int models_shown = 0, values_shown = 0;
  std::deque<fs::path> opens, saves;  // what the user chooses in each dialog; then cancels
  std::vector<fs::path> folders, offered;

 private:
  static fs::path Next(std::deque<fs::path>& choices) {
    const fs::path choice = choices.empty() ? fs::path() : choices.front();
    if (!choices.empty()) choices.pop_front();
    return choice;
  }
};

struct ControllerRig : EngineRig {
  // The frames sent since the last call.
  Texts Frames() {
    Texts frames;
    for (const std::string& call : library.calls) {
      if (call.starts_with("send ")) frames.push_back(call.substr(5));
    }
    library.calls.clear();
    return frames;
  }

  // Their header and sub-command alone: what a command is, whatever it carries.
  Texts Commands() {
    Texts starts = Frames();
    for (std::string& frame : starts) {
      frame = frame.substr(0, 4) + " " + (frame.size() > 12 ? frame.substr(10, 2) : "");
    }
    return starts;
  }

  // What was sent is the correction, or nothing.
  void ExpectApplied(bool applied) { EXPECT_EQ(Commands(), applied ? kAppliedCommands : Texts{}); }

  // A correction for a spherical screen, as a file.
  fs::path WriteSphere() const {
    FileData data;
    data.Correction.ScreenType = 2;
    ResetToScreenType(data.Correction);
    data.Correction.Axes[kHorizontal].Distortion = 25;
    EXPECT_TRUE(files.SaveDataFile(temp / "sphere.wlt", kTypeWlt, data));
    return temp / "sphere.wlt";
  }

  fs::path SettingsFile() const { return DataFolder(temp.Path()) / kSettingsFileName; }

  FakeView view;
  MainController controller{engine, view, temp.Path()};
};

}  // namespace warpline
