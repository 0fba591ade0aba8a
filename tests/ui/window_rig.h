#pragma once

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/bmpbuttn.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/evtloop.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "app/projector_commands.h"
#include "core/LSSglobal.h"
#include "files/LSSfile.h"
#include "link/projector_link.h"
#include "tests/support/projector_server.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "ui/LSSmain.h"
#include "ui/LSSview.h"
#include "ui/main_menu.h"
#include "ui/wx_text.h"

// A real main window with a simulated projector behind it. Tests find controls by their product
// names and act through their events.

namespace warpline {

namespace fs = std::filesystem;

// What the tool asked for, one word a frame: the number of a command, "probe" for the frame that
// finds out whether the projector takes commands, "class" for the question for its model class.
inline std::string WordOf(const sim::Bytes& frame) {
  const int sub_command = frame.at(5);
  switch (frame.at(1)) {
    case 0x1A:
      return "20";
    case 0x85:
      return "class";
    case 0xDE:
      return "18";
    default:
      break;
  }
  if (frame.size() == 6) return "probe";
  return sub_command == 0x12 ? "21" : std::to_string(sub_command);
}

inline std::string CommandsOf(const std::vector<sim::Bytes>& frames) {
  std::string words;
  for (const sim::Bytes& frame : frames) {
    if (!words.empty()) words.push_back(' ');
    words.append(WordOf(frame));
  }
  return words;
}

inline constexpr const char* kApplyWords = "probe 20 0 2 3 16 17 1";
inline constexpr const char* kInitializeWords = "probe 20 0 1";

class WindowRig {
 public:
  explicit WindowRig(std::int16_t language = 0) {
    ResetModel(global);
    ApplyLanguage(global, language);
    global.Settings.IPAddress = server.Address();
    global.Settings.LANPort = server.Port();
    global.Settings.AutoApplyMenu = 1;
    global.Settings.LANTimeOut = 500;
  }

  ~WindowRig() {
    if (window) window->Destroy();
    Settle();
  }

  // The window, as it is at first. Settings are changed before.
  LSSmain& Open() {
    window =
        new LSSmain({global,
                     files,
                     commands,
                     messages,
                     busy,
                     {[this](wxWindow*, const fs::path&) { return NextChoice(); },
                      [this](wxWindow*, const fs::path&, const fs::path&) { return NextChoice(); }},
                     dialogs,
                     temp.Path(),
                     temp / "program",
                     [this](const fs::path& file) {
                       texts_shown.push_back(file);
                       return true;
                     }});
    wxTheApp->SetTopWindow(window);
    window->ShowFirst();
    Settle();
    return *window;
  }

  // Handles all that the window system has to say.
  static void Settle() {
    wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
    wxTheApp->ProcessPendingEvents();
    wxTheApp->ProcessIdle();  // deletes closed windows too
  }

  // Settles until something has come true; false when it does not within some seconds.
  template <typename Condition>
  static bool SettleUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
      if (std::chrono::steady_clock::now() > end) return false;
      Settle();
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
  }

  template <typename Control>
  Control& Find(const std::string& name) const {
    auto* found = dynamic_cast<Control*>(wxWindow::FindWindowByName(WxText(name), window));
    if (found == nullptr) throw std::out_of_range("no control " + name);
    return *found;
  }

  bool Shown(const std::string& name) const { return Find<wxWindow>(name).IsShownOnScreen(); }
  bool Enabled(const std::string& name) const { return Find<wxWindow>(name).IsEnabled(); }
  int Value(const std::string& slider) const { return Find<wxSlider>(slider).GetValue(); }
  std::string Text(const std::string& box) const {
    return Find<wxTextCtrl>(box).GetValue().utf8_string();
  }
  std::string Title() const { return window->GetTitle().utf8_string(); }
  bool Checked(const std::string& item) const {
    return window->GetMenuBar()->IsChecked(MenuId(item));
  }
  bool MenuEnabled(const std::string& item) const {
    return window->GetMenuBar()->IsEnabled(MenuId(item));
  }

  void Press(const std::string& button) { Send(button, wxEVT_BUTTON, 0); }
  void Choose(const std::string& list, int index) {
    Find<wxChoice>(list).SetSelection(index);
    Send(list, wxEVT_CHOICE, index);
  }
  void SelectGroup(int group) {
    const std::string name = "ctrl_select" + std::to_string(group);
    Find<wxRadioButton>(name).SetValue(true);
    Send(name, wxEVT_RADIOBUTTON, 1);
  }
  void Check(const std::string& box, bool checked) {
    Find<wxCheckBox>(box).SetValue(checked);
    Send(box, wxEVT_CHECKBOX, checked ? 1 : 0);
  }
  void Pick(const std::string& item) {
    wxCommandEvent event(wxEVT_MENU, MenuId(item));
    window->ProcessWindowEvent(event);
    Settle();
  }
  void Move(const std::string& slider, int value) {
    Find<wxSlider>(slider).SetValue(value);
    Send(slider, wxEVT_SLIDER, value);
  }
  void ReleaseMouse(const std::string& slider) {
    wxMouseEvent event(wxEVT_LEFT_UP);
    Find<wxWindow>(slider).ProcessWindowEvent(event);
    Settle();
  }
  void KeyDown(const std::string& control, int key, int modifiers = 0) {
    SendKey(control, wxEVT_KEY_DOWN, key, modifiers);
  }
  void KeyUp(const std::string& control, int key, int modifiers = 0) {
    SendKey(control, wxEVT_KEY_UP, key, modifiers);
  }

  // The links that the projector has seen, and what came over the last one.
  std::uint64_t Links() const { return server.Snapshot().Links; }
  std::string LastCommands() const { return CommandsOf(server.Snapshot().ToolFrames); }

  // The commands sent while something is done; empty when no link was opened.
  template <typename Action>
  std::string SentBy(Action action) {
    const std::uint64_t before = Links();
    action();
    return Links() == before ? std::string() : LastCommands();
  }

  AxisParameters& H() { return global.Correction.Axes[kHorizontal]; }
  AxisParameters& V() { return global.Correction.Axes[kVertical]; }

  TempFolder temp;
  ProjectorServer server;
  LSSglobal global;
  RecordingDisplay display;
  WindowBusy busy;
  Messages messages{global, display};
  LSSfile files{global, messages};
  ProjectorLink link{global, messages, busy, BeamlinkFromProgramFolder()};
  ProjectorCommands commands{global, link, messages, busy};
  MainDialogs dialogs;
  std::deque<fs::path> choices;  // what the user chooses in the file dialogs; then cancels
  std::vector<fs::path> texts_shown;
  wxWeakRef<LSSmain> window;

 private:
  fs::path NextChoice() {
    if (choices.empty()) return {};
    const fs::path choice = choices.front();
    choices.pop_front();
    return choice;
  }

  void Send(const std::string& name, wxEventType type, int value) {
    wxWindow& control = Find<wxWindow>(name);
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    event.SetInt(value);
    control.ProcessWindowEvent(event);
    Settle();
  }

  void SendKey(const std::string& name, wxEventType type, int key, int modifiers) {
    wxKeyEvent event(type);
    event.m_keyCode = key;
    event.SetShiftDown((modifiers & wxMOD_SHIFT) != 0);
    event.SetControlDown((modifiers & wxMOD_CONTROL) != 0);
    event.SetAltDown((modifiers & wxMOD_ALT) != 0);
    Find<wxWindow>(name).ProcessWindowEvent(event);
    Settle();
  }
};

}  // namespace warpline
