#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/main_controller.h"
#include "model/registers.h"
#include "tests/support/link_rig.h"
#include "tests/support/temp_folder.h"

// A main controller over the recording library, with real files in a folder of its own.

namespace warpline {

namespace fs = std::filesystem;

inline const std::vector<std::string> kInitializeFrames{"01DF000000E0", "021A000002020121",
                                                        "01DF0000020000E2", "01DF0000020100E3"};

inline const std::vector<std::string> kApplyCommands{"01DF ",   "021A 02", "01DF 00", "01DF 02",
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

  int models_shown = 0;
  int values_shown = 0;
  std::deque<fs::path> opens;  // what the user chooses in each dialog; then cancels
  std::deque<fs::path> saves;
  std::vector<fs::path> folders;
  std::vector<fs::path> offered;

 private:
  static fs::path Next(std::deque<fs::path>& choices) {
    if (choices.empty()) return {};
    const fs::path choice = choices.front();
    choices.pop_front();
    return choice;
  }
};

class BusyWithEvents : public RecordingBusy {
 public:
  void BeginBusy() override {
    RecordingBusy::BeginBusy();
    if (event) event();
  }
  std::function<void()> event;
};

struct ControllerRig : LinkRig {
  AxisParameters& H() { return global.Correction.Axes[kHorizontal]; }
  AxisParameters& V() { return global.Correction.Axes[kVertical]; }

  // The frames sent since the last call.
  std::vector<std::string> Frames() {
    std::vector<std::string> frames;
    for (const std::string& call : library.calls) {
      if (call.starts_with("send ")) frames.push_back(call.substr(5));
    }
    library.calls.clear();
    return frames;
  }

  // Their header and sub-command alone: what a command is, whatever it carries.
  std::vector<std::string> Commands() {
    std::vector<std::string> starts;
    for (const std::string& frame : Frames()) {
      starts.push_back(frame.substr(0, 4) + " " + (frame.size() > 12 ? frame.substr(10, 2) : ""));
    }
    return starts;
  }

  // A correction for a spherical screen, as a file.
  fs::path WriteSphere() const {
    LSSglobal other;
    other.Correction.ScreenType = 2;
    ResetToScreenType(other.Correction);
    other.Correction.Axes[kHorizontal].Distortion = 25;
    LSSfile writer(other, messages);
    EXPECT_TRUE(writer.SaveDataFile(temp / "sphere.wlt", kTypeWlt));
    return temp / "sphere.wlt";
  }

  // The registers of a plain correction for the library's panel, as a file.
  fs::path WriteRegisters() const {
    LSSglobal other;
    ResetModel(other);
    other.Registers = BuildRegisters(other.Correction, {16, 12});
    LSSfile writer(other, messages);
    EXPECT_TRUE(writer.SaveDataFile(temp / "plain.wlr", kTypeWlr));
    return temp / "plain.wlr";
  }

  fs::path DataFolderPath() const { return DataFolder(temp.Path()); }
  fs::path SettingsFile() const { return DataFolderPath() / kSettingsFileName; }

  void TurnRealTime(bool on) { global.Settings.AutoApply = on ? 1 : 0; }

  TempFolder temp;
  BusyWithEvents window_busy;
  FakeView view;
  LSSfile files{global, messages};
  ProjectorCommands commands{global, link, messages, window_busy};
  MainController controller{global, files, commands, messages, window_busy, view, temp.Path()};
};

}  // namespace warpline
