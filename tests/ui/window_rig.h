#pragma once

#include <gtest/gtest.h>
#include <wx/evtloop.h>
#include <wx/uiaction.h>
#include <wx/wx.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "link/beamlink.h"
#include "platform/shared_library.h"
#include "tests/support/projector_server.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"
#include "ui/LSSmain.h"
#include "ui/LSSmain_menu.h"
#include "ui/LSSview.h"
#include "ui/wx_text.h"

// A real main window with a simulated projector behind it, and scripts for its modal dialogs. Tests
// find controls by their product names and act through their events.

namespace warpline {

namespace fs = std::filesystem;

// What the tool asked for, one word a frame: the number of a command, "probe" for the frame that
// finds out whether the projector takes commands, "class" for the question for its model class.
inline std::string WordOf(const sim::Bytes& frame) {
  if (frame.at(1) == 0x1A) return "20";
  if (frame.at(1) == 0x85) return "class";
  if (frame.at(1) == 0xDE) return "18";
  if (frame.size() == 6) return "probe";
  return frame.at(5) == 0x12 ? "21" : std::to_string(frame.at(5));
}

inline std::string CommandsOf(const std::vector<sim::Bytes>& frames) {
  std::string words;
  for (const sim::Bytes& frame : frames) {
    words.append(words.empty() ? "" : " ").append(WordOf(frame));
  }
  return words;
}

inline constexpr const char* kApplyWords = "probe 20 0 2 3 16 17 1";
inline constexpr const char* kInitializeWords = "probe 20 0 1";

// Handles all that the window system has to say. Asking it for the mouse first makes it answer what
// came before: a window that hides before the news of its showing would count as shown.
inline void Settle() {
  wxGetMouseState();
  wxEventLoopBase::GetActive()->YieldFor(wxEVT_CATEGORY_ALL);
  wxTheApp->ProcessPendingEvents();
  wxTheApp->ProcessIdle();  // deletes closed windows too
}

// Settles until something has come true; false when it does not within some seconds.
template <typename Condition>
bool SettleUntil(Condition condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Settle();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

template <typename Control = wxWindow>
Control& ControlOf(const wxWindow& owner, const std::string& name) {
  auto* found = dynamic_cast<Control*>(wxWindow::FindWindowByName(WxText(name), &owner));
  if (found == nullptr) throw std::out_of_range("no control " + name);
  return *found;
}

inline std::string TextOf(const wxWindow& owner, const std::string& box) {
  return ControlOf<wxTextCtrl>(owner, box).GetValue().utf8_string();
}

inline void Handle(wxWindow& window, wxEvent& event) {
  window.ProcessWindowEvent(event);
  Settle();
}
inline void Send(wxWindow& control, wxCommandEvent&& event, int value = 0) {
  event.SetEventObject(&control);
  event.SetId(control.GetId());
  event.SetInt(value);
  Handle(control, event);
}
inline void SendKey(wxWindow& control, wxEventType type, int key, int modifiers = 0) {
  wxKeyEvent event(type);
  event.m_keyCode = key;
  event.SetShiftDown((modifiers & wxMOD_SHIFT) != 0);
  event.SetControlDown((modifiers & wxMOD_CONTROL) != 0);
  Handle(control, event);
}

inline void PressIn(wxWindow& owner, const std::string& button) {
  EXPECT_TRUE(ControlOf(owner, button).IsEnabled()) << button;
  Send(ControlOf(owner, button), wxCommandEvent(wxEVT_BUTTON));
}
inline void ChooseIn(wxWindow& owner, const std::string& list, int index) {
  ControlOf<wxChoice>(owner, list).SetSelection(index);
  Send(ControlOf(owner, list), wxCommandEvent(wxEVT_CHOICE), index);
}
inline void SelectIn(wxWindow& owner, const std::string& option) {
  ControlOf<wxRadioButton>(owner, option).SetValue(true);
  Send(ControlOf(owner, option), wxCommandEvent(wxEVT_RADIOBUTTON), 1);
}
inline void CheckIn(wxWindow& owner, const std::string& box, bool checked) {
  ControlOf<wxCheckBox>(owner, box).SetValue(checked);
  Send(ControlOf(owner, box), wxCommandEvent(wxEVT_CHECKBOX), checked ? 1 : 0);
}

// Waits for the modal dialog of that name, acts on it, and cancels it if it is open then.
class ModalScript : public wxTimer {
 public:
  ModalScript(std::string name, std::function<void(wxDialog&)> script)
      : name_(std::move(name)), script_(std::move(script)) {
    Start(5);
  }
  ~ModalScript() override { EXPECT_TRUE(met_) << name_ << " did not open"; }

  void Notify() override {
    for (wxWindow* window : wxTopLevelWindows) {
      auto* dialog = dynamic_cast<wxDialog*>(window);
      if (dialog == nullptr || !dialog->IsModal() || dialog->GetName() != name_) continue;
      Stop();
      met_ = true;
      script_(*dialog);
      if (dialog->IsModal() && dialog->IsShown()) dialog->EndModal(wxID_CANCEL);
      return;
    }
  }

 private:
  std::string name_;
  std::function<void(wxDialog&)> script_;
  bool met_ = false;
};

class WindowRig {
 public:
  explicit WindowRig(std::int16_t language = 0) {
    fs::create_directory(program);
    temp.Write("program/" + SharedLibrary::FileName(kBeamlinkName), kStandInMark);
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
    window = new LSSmain({engine, busy, Choosers(), Choosers(), beamseek, temp.Path(), program,
                          show_text, Choosers(), show_text, Choosers().open,
                          [this](const auto&...) { return record; }, Choosers(),
                          [this](const auto&) -> TrialRunner {
                            return [this](const auto&, const auto& take) {
                              for (const std::string& line : trial_lines) take(line);
                              return TrialOutcome();
                            };
                          },
                          [this] { return displays; }});
    wxTheApp->SetTopWindow(window);
    window->ShowFirst();
    Settle();
    Settle();  // the preview, which comes last, is on the screen only then
    return *window;
  }

  // Choose what stands in choices, and then cancel.
  FileChoosers Choosers() {
    const auto next = [this](const auto&...) {
      const fs::path choice = choices.empty() ? fs::path() : choices.front();
      if (!choices.empty()) choices.pop_front();
      return choice;
    };
    return {next, next};
  }

  template <typename Control = wxWindow>
  Control& Find(const std::string& name) const {
    return ControlOf<Control>(*window, name);
  }
  bool Shown(const std::string& name) const { return Find(name).IsShownOnScreen(); }
  bool Enabled(const std::string& name) const { return Find(name).IsEnabled(); }
  int Value(const std::string& slider) const { return Find<wxSlider>(slider).GetValue(); }
  int Screen() const { return Find<wxChoice>("scr_select").GetSelection(); }
  std::string Text(const std::string& box) const { return TextOf(*window, box); }
  std::string Title() const { return window->GetTitle().utf8_string(); }
  wxMenuItem& Item(const std::string& name) const {
    return *window->GetMenuBar()->FindItem(MenuId(name));
  }

  // Each tells the commands sent meanwhile; nothing when no link was opened.
  std::string Press(const std::string& button) {
    return SentBy([&] { PressIn(*window, button); });
  }
  std::string Choose(const std::string& list, int index) {
    return SentBy([&] { ChooseIn(*window, list, index); });
  }
  std::string Check(const std::string& box, bool checked) {
    return SentBy([&] { CheckIn(*window, box, checked); });
  }
  std::string Pick(const std::string& item) {
    wxCommandEvent event(wxEVT_MENU, MenuId(item));
    return SentBy([&] { Handle(*window, event); });
  }
  std::string Move(const std::string& slider, int value) {
    Find<wxSlider>(slider).SetValue(value);
    return SentBy([&] { Send(Find(slider), wxCommandEvent(wxEVT_SLIDER), value); });
  }
  std::string Release(const std::string& slider) {
    wxMouseEvent event(wxEVT_LEFT_UP);
    const std::string sent = SentBy([&] { Handle(Find(slider), event); });
    EXPECT_TRUE(event.GetSkipped()) << "the native slider sees it too";
    return sent;
  }
  void SelectGroup(int group) { SelectIn(*window, "ctrl_select" + std::to_string(group)); }

  std::uint64_t Links() const { return server.Snapshot().Links; }
  template <typename Action>
  std::string SentBy(Action action) const {
    const std::uint64_t before = Links();
    action();
    return Links() == before ? std::string() : CommandsOf(server.Snapshot().ToolFrames);
  }

  AxisParameters& H() { return global.Correction.Axes[kHorizontal]; }
  AxisParameters& V() { return global.Correction.Axes[kVertical]; }

  TempFolder temp;
  fs::path program = temp / "program";
  ProjectorServer server;
  RecordingDisplay display;
  WindowBusy busy;
  Engine engine{display, busy};
  LSSglobal& global = engine.global;
  BeamseekProvider beamseek;
  std::vector<DisplayPlace> displays;
  std::deque<fs::path> choices;
  RecordChoice record;                   // the file to record into
  std::vector<std::string> trial_lines;  // what each process of the check says
  std::vector<fs::path> texts_shown;
  std::function<bool(const fs::path&)> show_text = [this](const fs::path& file) {
    texts_shown.push_back(file);
    return true;
  };
  wxWeakRef<LSSmain> window;
};

class OpenedWindow : public testing::Test {
 protected:
  OpenedWindow() { rig.Open(); }
  WindowRig rig;
};

}  // namespace warpline
