#include <iostream>
#include <memory>
#include <random>
#include <set>

#include "tests/support/source_folder.h"
#include "tests/ui/window_rig.h"

// A user of the tool without a plan: keys, clicks, menus, dialogs, files, answers and closed
// windows at random.
//   soak_user SEED EVENTS
// Each action is told before it is done. At the end stands what was never reached. scripts/soak
// runs it.

namespace warpline {
namespace {

constexpr std::array kKeys{WXK_LEFT, WXK_RIGHT, WXK_UP,  WXK_DOWN,   WXK_PAGEUP, WXK_PAGEDOWN,
                           WXK_HOME, WXK_END,   WXK_TAB, WXK_RETURN, WXK_ESCAPE, WXK_DELETE,
                           WXK_F1,   WXK_SPACE, WXK_F5,  WXK_BACK,   WXK_SHIFT,  WXK_CONTROL};
constexpr std::array kTexts{"", "0", "-5", "0.5", "127.0.0.1", "999999999999", "1,5", "x\xC3\xA4"};
constexpr std::array kMouse{&wxEVT_LEFT_DOWN, &wxEVT_MOTION,      &wxEVT_LEFT_UP,
                            &wxEVT_MOTION,    &wxEVT_LEFT_DCLICK, &wxEVT_RIGHT_DOWN};

class User {
 public:
  User(unsigned seed, std::size_t events) : random_(seed), left_(events) {
    for (const char* name : {"sphere.wlt", "other_bspline.wlt", "old_version_2.wlt",
                             "registers.wlr", "shape_version_1.wls", "shape_version_2.wls"}) {
      fs::copy(SourceFolder() / "examples" / name, rig_.temp / name);
      files_.push_back(rig_.temp / name);
    }
    files_.push_back(rig_.temp.Write("broken.wlt", "[Warpline Tool Data File 3.0]\r\nX=\r\n"));
    rig_.beamseek = [] { return nullptr; };
    rig_.Open();
    connection_ = rig_.global.Settings;
    Next();
  }

  void TellUnreached() const {
    for (const std::string& name : seen_) {
      if (!reached_.contains(name)) std::cout << "never reached: " << name << "\n";
    }
    std::cout << reached_.size() << " of " << seen_.size() << " reached" << std::endl;
  }

 private:
  class Timer : public wxTimer {
   public:
    explicit Timer(User& user) : user_(user) { StartOnce(1); }
    void Notify() override { user_.Step(); }

   private:
    User& user_;
  };

  std::size_t Below(std::size_t end) { return random_() % end; }

  // A timer of its own for each step, as one that is at work stays silent in a dialog's loop.
  void Next() { timers_.push_back(std::make_unique<Timer>(*this)); }

  void Step() {
    // A hand is slower than what waits to be done.
    if (wxTheApp->HasPendingEvents() || wxTheApp->IsScheduledForDestruction(rig_.window)) {
      return Next();
    }
    if (rig_.busy.IsBusy() && (!rig_.busy.IsFollowing() || left_ == 0)) return Next();
    if (left_ == 0) return Leave();
    --left_;
    if (!rig_.window) rig_.Open();
    Next();
    if (left_ % 200 == 0) rig_.global.Settings = connection_;
    rig_.display.messages.clear();
    rig_.display.answers.clear();
    if (Below(3) != 0) rig_.display.answers.push_back(static_cast<MessageAnswer>(Below(2)));
    rig_.choices = {files_[Below(files_.size())]};
    if (Below(6) == 0) rig_.choices.clear();
    Act(Window());
  }

  // The innermost modal dialog, or any window when there is none.
  wxWindow& Window() {
    std::vector<wxWindow*> shown;
    for (wxWindow* window : wxTopLevelWindows) {
      if (window->IsShown()) shown.push_back(window);
    }
    for (auto at = shown.rbegin(); at != shown.rend(); ++at) {
      const auto* dialog = dynamic_cast<wxDialog*>(*at);
      if (dialog != nullptr && dialog->IsModal()) return **at;
    }
    return shown.empty() ? *rig_.window : *shown[Below(shown.size())];
  }

  void Leave() {
    auto* dialog = dynamic_cast<wxDialog*>(&Window());
    if (dialog == nullptr || !dialog->IsModal()) return wxTheApp->ExitMainLoop();
    Next();
    dialog->EndModal(wxID_CANCEL);
  }

  void Collect(wxWindow& window, const std::string& owner, std::vector<wxWindow*>& controls) {
    for (wxWindow* child : window.GetChildren()) {
      if (child->IsTopLevel()) continue;
      seen_.insert(owner + "/" + child->GetName().utf8_string());
      if (child->IsShownOnScreen() && child->IsEnabled()) controls.push_back(child);
      Collect(*child, owner, controls);
    }
  }

  void Tell(const std::string& what, const char* how) {
    std::cout << left_ << '\t' << what << '\t' << how << std::endl;
    reached_.insert(what);
  }

  void Act(wxWindow& window) {
    const std::string owner = window.GetName().utf8_string();
    auto* frame = dynamic_cast<wxFrame*>(&window);
    if (Below(100) == 0) {
      Tell(owner, "close");
      window.Close();
      return;
    }
    if (frame != nullptr && frame->GetMenuBar() != nullptr && Below(8) == 0) {
      return PickSomething(*frame);
    }
    std::vector<wxWindow*> controls;
    Collect(window, owner, controls);
    wxWindow& control = controls.empty() ? window : *controls[Below(controls.size())];
    const std::string what = owner + "/" + control.GetName().utf8_string();
    if (Below(4) == 0) return Press(control, what);
    Tell(what, "use");
    Use(control);
  }

  void PickSomething(wxFrame& frame) {
    wxMenuBar& bar = *frame.GetMenuBar();
    const wxMenu& menu = *bar.GetMenu(Below(bar.GetMenuCount()));
    for (const wxMenuItem* item : menu.GetMenuItems()) {
      seen_.insert("menu/" + std::string(MenuName(item->GetId())));
    }
    const wxMenuItem& item = *menu.FindItemByPosition(Below(menu.GetMenuItemCount()));
    if (!item.IsEnabled() || item.IsSeparator()) return;
    Tell("menu/" + std::string(MenuName(item.GetId())), "pick");
    wxCommandEvent event(wxEVT_MENU, item.GetId());
    frame.ProcessWindowEvent(event);
  }

  void Press(wxWindow& control, const std::string& what) {
    const int key = Below(4) == 0 ? static_cast<int>('0' + Below(75)) : kKeys[Below(kKeys.size())];
    Tell(what, ("key " + std::to_string(key)).c_str());
    const wxWeakRef<wxWindow> alive(&control);
    const bool control_down = Below(5) == 0;
    for (const auto& type : {wxEVT_CHAR_HOOK, wxEVT_KEY_DOWN, wxEVT_CHAR, wxEVT_KEY_UP}) {
      if (!alive) return;
      wxKeyEvent event(type);
      event.m_keyCode = key;
      event.SetControlDown(control_down);
      event.SetEventObject(&control);
      control.ProcessWindowEvent(event);
    }
  }

  template <typename Event>
  void Send(wxWindow& control, const wxEventTypeTag<Event>& type, int value = 0) {
    wxCommandEvent event(type, control.GetId());
    event.SetEventObject(&control);
    event.SetInt(value);
    control.ProcessWindowEvent(event);
  }

  void Use(wxWindow& control) {
    if (auto* slider = dynamic_cast<wxSlider*>(&control)) {
      const auto range = static_cast<std::size_t>(slider->GetMax() - slider->GetMin() + 1);
      slider->SetValue(slider->GetMin() + static_cast<int>(Below(range)));
      Send(control, wxEVT_SLIDER, slider->GetValue());
      Click(control);
    } else if (auto* choice = dynamic_cast<wxChoice*>(&control)) {
      choice->SetSelection(static_cast<int>(Below(choice->GetCount())));
      Send(control, wxEVT_CHOICE, choice->GetSelection());
    } else if (auto* radio = dynamic_cast<wxRadioButton*>(&control)) {
      radio->SetValue(true);
      Send(control, wxEVT_RADIOBUTTON, 1);
    } else if (auto* box = dynamic_cast<wxCheckBox*>(&control)) {
      box->SetValue(!box->GetValue());
      Send(control, wxEVT_CHECKBOX, box->GetValue() ? 1 : 0);
    } else if (dynamic_cast<wxAnyButton*>(&control) != nullptr) {
      Send(control, wxEVT_BUTTON);
    } else if (auto* text = dynamic_cast<wxTextCtrl*>(&control)) {
      text->SetValue(wxString::FromUTF8(kTexts[Below(kTexts.size())]));
      if (Below(2) == 0) Send(control, wxEVT_TEXT_ENTER);
    } else {
      Click(control);
    }
  }

  void Click(wxWindow& control) {
    const wxWeakRef<wxWindow> alive(&control);
    const wxSize size = control.GetClientSize();
    for (const auto* type : kMouse) {
      if (!alive || Below(6) == 0) return;
      wxMouseEvent event(*type);
      event.SetEventObject(&control);
      event.m_x = static_cast<int>(Below(static_cast<std::size_t>(size.x) + 20)) - 10;
      event.m_y = static_cast<int>(Below(static_cast<std::size_t>(size.y) + 20)) - 10;
      control.ProcessWindowEvent(event);
    }
  }

  std::mt19937 random_;
  std::size_t left_;
  WindowRig rig_;
  Settings connection_;
  std::vector<fs::path> files_;
  std::vector<std::unique_ptr<Timer>> timers_;
  std::set<std::string> seen_;
  std::set<std::string> reached_;
};

// The toolkit's own checks count as findings.
void TellAssertion(const wxString& file, int line, const wxString&, const wxString& condition,
                   const wxString& message) {
  std::cout << "found: " << file.utf8_string() << ":" << line << ": " << condition.utf8_string()
            << " " << message.utf8_string() << std::endl;
  std::abort();
}

class Application : public wxApp {
 public:
  bool OnInit() override { return true; }

  int OnRun() override {
    wxSetAssertHandler(&TellAssertion);
    SetExitOnFrameDelete(false);
    {
      wxGUIEventLoop loop;
      const wxEventLoopActivator active(&loop);
      const auto user = std::make_unique<User>(std::stoul(argv[1].utf8_string()),
                                               std::stoul(argv[2].utf8_string()));
      wxApp::OnRun();
      user->TellUnreached();
    }
    if (wxTopLevelWindows.empty()) return 0;
    std::cout << "found: a window left behind" << std::endl;
    return 1;
  }
};

}  // namespace
}  // namespace warpline

int main(int argc, char** argv) {
  wxApp::SetInstance(new warpline::Application);
  return wxEntry(argc, argv);
}
