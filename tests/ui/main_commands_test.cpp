#include <wx/filedlg.h>
#include <wx/listctrl.h>
#include <wx/modalhook.h>
#include <wx/stattext.h>

#include <algorithm>

#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "tests/support/source_folder.h"
#include "tests/ui/window_rig.h"
#include "toolkit/layout.h"
#include "ui/window_messages.h"

// Buttons, menus, files, closing, and what a failing projector does to the window.

namespace warpline {
namespace {

TEST(MainCommands, ButtonsAndProjectionItemsReachTheProjector) {
  WindowRig rig;
  rig.H().Distortion = 40;
  rig.Open();
  EXPECT_EQ(rig.Pick("menu_opt_lr_reverse"), kApplyWords);
  EXPECT_EQ(rig.H().Distortion, 0);
  EXPECT_TRUE(rig.Item("menu_opt_lr_reverse").IsChecked());
  EXPECT_EQ(rig.Item("menu_opt_lr_reverse").GetItemLabelText(), "Projecting right");
  EXPECT_EQ(rig.Item("menu_opt_ud_reverse").GetItemLabelText(), "Ceiling/Projecting downward");
  EXPECT_FALSE(rig.Item("menu_opt_ud_reverse").IsChecked());
  rig.Pick("menu_opt_ud_reverse");
  EXPECT_EQ(rig.V().Optical, 32);
  rig.Move("ctrl_bar1", 30);
  EXPECT_EQ(rig.Press("applybutton"), kApplyWords);
  EXPECT_EQ(rig.Press("storebutton"), "probe class 21 18");
  EXPECT_EQ(rig.Press("initbutton"), kInitializeWords);
  EXPECT_EQ(rig.Value("ctrl_bar1"), 0);
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(MainCommands, SettingsDecideWhatCanBeUsed) {
  WindowRig rig;
  Settings& settings = rig.global.Settings;
  settings.AutoApplyMenu = settings.AutoApply = settings.TestPattern = 0;
  settings.CommunicationMode = 1;
  settings.DialogPosX = -30000;
  settings.DialogPosY = 25000;
  rig.Open();
  EXPECT_TRUE(SettleUntil([&] { return UsableScreen({}).Contains(rig.window->GetScreenRect()); }));
  EXPECT_FALSE(rig.Enabled("applybutton"));
  EXPECT_FALSE(rig.Item("menu_opt_auto").IsEnabled());
  EXPECT_TRUE(rig.Item("menu_opt_auto_off").IsChecked());
  EXPECT_TRUE(rig.Item("menu_opt_detailed").IsChecked());
  EXPECT_FALSE(rig.Find<wxCheckBox>("testpattern").GetValue());
  EXPECT_FALSE(rig.Shown("LSSview"));
  rig.Pick("menu_opt_simple");
  EXPECT_EQ(settings.CommunicationMode, 0);
}

TEST(MainCommands, StoredPlacesAreHeldInsideTheScreen) {
  const wxRect screen = UsableScreen({});
  const std::pair<wxPoint, bool> places[] = {{{0, 0}, true}, {{5000, 5000}, false}};
  for (const auto& [place, kept] : places) {
    WindowRig rig;
    rig.global.Settings.DialogPosX = place.x;
    rig.global.Settings.DialogPosY = place.y;
    rig.Open();
    EXPECT_TRUE(SettleUntil([&, stored = place, stays = kept] {
      return stays ? rig.window->GetPosition() == stored
                   : screen.Contains(rig.window->GetScreenRect());
    })) << place.x;
  }
}

TEST(MainCommands, OpenBringsTheFileToTheScreenAndTheProjector) {
  WindowRig rig;
  rig.choices = {SourceFolder() / "examples/sphere.wlt"};
  rig.Open();
  rig.Pick("menu_opt_auto_off");
  EXPECT_EQ(rig.Pick("menu_file_open"), kApplyWords);
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 (simulator) - sphere.wlt");
  EXPECT_EQ(rig.Screen(), 2);
  rig.SelectGroup(1);
  EXPECT_EQ(rig.Text("ctrl_value0"), "22%");
}

TEST_F(OpenedWindow, SaveQuestionHoldsTheListAndTheWindowBack) {
  rig.Move("ctrl_bar1", 30);
  EXPECT_EQ(rig.Choose("scr_select", 5), "");
  EXPECT_EQ(rig.Screen(), 0) << "the list goes back";
  rig.Press("exitbutton");
  ASSERT_NE(rig.window, nullptr);
  rig.display.answers = {MessageAnswer::kNo, MessageAnswer::kNo};
  EXPECT_EQ(rig.Choose("scr_select", 5), kInitializeWords);
  EXPECT_EQ(rig.Screen(), 5);
  EXPECT_EQ(rig.Text("ctrl_value1"), "0%");
  rig.Move("ctrl_bar1", 32);
  const auto kept = [&] {
    const fs::recursive_directory_iterator files(rig.temp.Path());
    return std::any_of(begin(files), end(files), [](const fs::path& file) {
      return file.filename().string().starts_with("recovery-");
    });
  };
  EXPECT_TRUE(SettleUntil(kept));
  rig.Press("exitbutton");
  EXPECT_EQ(rig.window, nullptr);
  EXPECT_FALSE(kept());
  EXPECT_EQ(rig.display.Texts(), std::vector<std::string>(4, "Do you want to save the change?"));
}

TEST(MainCommands, SaveWritesAndNamesAndExitKeepsThePlace) {
  WindowRig rig;
  rig.global.Settings.DialogPosX = 70;
  rig.global.Settings.DialogPosY = 50;
  rig.Open();
  EXPECT_TRUE(SettleUntil([&] { return rig.window->GetPosition() == wxPoint(70, 50); }));
  rig.global.Settings.DialogPosX = rig.global.Settings.DialogPosY = 0;
  rig.Move("ctrl_bar1", 31);
  rig.choices = {rig.temp / "first", rig.temp / "second.wlt"};
  rig.Pick("menu_file_save");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 (simulator) - first.wlt");
  EXPECT_NE(TempFolder::Read(rig.temp / "first.wlt").find("DistortionV=31"), std::string::npos);
  rig.Pick("menu_file_saveas");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 (simulator) - second.wlt");
  rig.Pick("menu_file_exit");
  EXPECT_EQ(rig.window, nullptr);
  EXPECT_TRUE(rig.display.messages.empty()) << "nothing to ask about";
  const std::string settings = TempFolder::Read(DataFolder(rig.temp.Path()) / kSettingsFileName);
  EXPECT_NE(settings.find("DialogPosX=70\r\nDialogPosY=50\r\n"), std::string::npos);
}

TEST(MainCommands, SetupSheetIsWrittenAndShown) {
  WindowRig rig;
  rig.global.CurrentFile = rig.temp / "hall.wlt";
  rig.Open();
  rig.Move("ctrl_bar1", 30);
  const fs::path sheet = rig.temp / "hall.html";
  rig.choices = {rig.temp / "none/hall.html", sheet};
  const ModalScript script("SheetDialog", [](wxDialog& dialog) {
    ControlOf<wxTextCtrl>(dialog, "note").SetValue("over there\n<there>");
    CheckIn(dialog, "ask_projector", true);
    PressIn(dialog, "OKButton");
    ASSERT_TRUE(dialog.IsModal()) << "the note is lost";
    PressIn(dialog, "OKButton");
  });
  EXPECT_EQ(rig.Pick("menu_file_sheet"), "probe class 18");
  EXPECT_EQ(rig.display.messages.size(), 1U);
  EXPECT_EQ(rig.texts_shown, std::vector<fs::path>{sheet});
  const std::string page = TempFolder::Read(sheet);
  for (const char* part : {"hall.wlt, with changes that are not saved", ">30%<",
                           "over there\n&lt;there&gt;", "1024 x 768 pixels"}) {
    EXPECT_NE(page.find(part), std::string::npos) << part;
  }
}

TEST(MainCommands, HelpOpensWhatIsOfTheLanguage) {
  for (const int language : {0, 1}) {
    WindowRig rig(static_cast<std::int16_t>(language));
    bool shows = true;
    rig.show_text = [&rig, &shows](const fs::path& file) {
      rig.texts_shown.push_back(file);
      return shows;
    };
    rig.Open();
    rig.Pick("menu_help_doc");
    ASSERT_EQ(rig.display.messages.size(), 1U) << "there is no guide";
    const std::string name = language == 1 ? "ReadMe(Japanese).txt" : "ReadMe(English).txt";
    EXPECT_NE(rig.display.messages[0].text.find(name), std::string::npos);
    const fs::path guide = rig.temp.Write("program/" + name, "guide");
    rig.Pick("menu_help_doc");
    fs::create_directory(rig.program / "docs");
    const std::string page_name = language == 1 ? "guide_ja.html" : "guide_en.html";
    const fs::path page = rig.temp.Write("program/docs/" + page_name, "page").make_preferred();
    rig.Pick("menu_help_guide");
    EXPECT_EQ(rig.texts_shown, (std::vector<fs::path>{guide, page}));
    shows = false;
    rig.Pick("menu_help_guide");
    ASSERT_EQ(rig.display.messages.size(), 2U);
    EXPECT_EQ(rig.display.messages[1].text,
              FilledText(TextOf(rig.global, ToolText::kFileNotShown), {page.string()}));
  }
}

// Answers every modal dialog and keeps its title, texts, owner and style.
class DialogRecorder : public wxModalDialogHook {
 public:
  DialogRecorder() { Register(); }
  ~DialogRecorder() override { Unregister(); }

  int answer = wxID_CANCEL;
  std::string texts;
  std::vector<wxWindow*> owners;
  long style = 0;

 protected:
  int Enter(wxDialog* dialog) override {
    texts += dialog->GetTitle().utf8_string() + "|";
    owners.push_back(dialog->GetParent());
    auto* box = dynamic_cast<wxMessageDialogBase*>(dialog);
    style = box != nullptr ? box->GetMessageDialogStyle() : dialog->GetWindowStyle();
    if (auto* file = dynamic_cast<wxFileDialog*>(dialog)) texts += file->GetWildcard() + "|";
    for (wxWindow* child : dialog->GetChildren()) {
      if (dynamic_cast<wxStaticText*>(child) == nullptr) continue;
      texts += child->GetLabel().utf8_string() + "|";
    }
    return answer;
  }
};

TEST_F(OpenedWindow, BoxesBelongToTheMainWindow) {
  DialogRecorder dialogs;
  WindowMessages boxes;
  boxes.Show({"A", "Wrong value.", MessageIcon::kCritical, {"OK"}});
  EXPECT_EQ(dialogs.style & wxICON_MASK, wxICON_ERROR);
  const std::tuple<int, std::size_t, std::vector<std::string>> answers[] = {
      {wxID_YES, 0, {"Y", "N", "C"}},
      {wxID_NO, 1, {"Y", "N", "C"}},
      {wxID_CANCEL, 2, {"Y", "N", "C"}},
      {wxID_OK, 0, {"Again", "Close"}},
      {wxID_CANCEL, 1, {"Again", "Close"}}};
  for (const auto& [pressed, answer, choices] : answers) {
    dialogs.answer = pressed;
    EXPECT_EQ(boxes.Show({"B", "Wrong?", MessageIcon::kQuestion, choices}), answer);
  }
  rig.Pick("menu_help_about");
  EXPECT_EQ(dialogs.owners, std::vector<wxWindow*>(7, rig.window));
  EXPECT_EQ(dialogs.texts.find("A|B|B|B|B|B|"), 0U) << dialogs.texts;
  EXPECT_NE(dialogs.texts.find("|Warpline Tool 3.0|Version 3.0|"), std::string::npos);
}

TEST_F(OpenedWindow, FileDialogsOpenWhatExistsAndAskBeforeReplacing) {
  DialogRecorder dialogs;
  const FileChoosers choosers = SystemFileChoosers(rig.global, kTypeWls);
  EXPECT_EQ(choosers.open(rig.window, rig.temp.Path()), fs::path());
  EXPECT_TRUE((dialogs.style & wxFD_FILE_MUST_EXIST) != 0);
  EXPECT_EQ(choosers.save(rig.window, rig.temp.Path(), {}), fs::path());
  EXPECT_TRUE((dialogs.style & wxFD_OVERWRITE_PROMPT) != 0);
  const std::string filter = "|Data Files (*.wls)|*.wls|All Files (*.*)|";
  EXPECT_EQ(dialogs.texts.find(filter), dialogs.texts.find('|')) << dialogs.texts;
  EXPECT_NE(dialogs.texts.rfind(filter), dialogs.texts.find(filter)) << dialogs.texts;
}

TEST_F(OpenedWindow, FocusSurvivesWorkDialogsAndDisabledRows) {
  auto& bar = rig.Find("ctrl_bar1");
  const auto focus_name = [] {
    const wxWindow* focus = wxWindow::FindFocus();
    return focus != nullptr && focus->IsEnabled() ? focus->GetName().utf8_string() : "none";
  };
  const auto activate = [](wxTopLevelWindow& window, wxWindow& control) {
    window.Raise();
    control.SetFocus();
    EXPECT_TRUE(SettleUntil([&] { return window.IsActive() && control.HasFocus(); }));
  };
  activate(*rig.window, bar);
  {
    const BusyBracket bracket(rig.busy);
    rig.window->Controller().MoveSlider(1, 1);  // the row above can be used now
    rig.busy.ProcessPendingEvents();
  }
  Settle();
  bar.Navigate();
  EXPECT_EQ(focus_name(), "testpattern") << "Tab still finds its way";

  const struct {
    const char *before, *after;
    int distortion;
  } rows[] = {{"ctrl_bar1", "ctrl_bar1", 1}, {"ctrl_bar0", "ctrl_select0", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.before);
    activate(*rig.window, rig.Find(row.before));
    auto* box = new wxDialog(rig.window, wxID_ANY, "");
    box->Show();
    activate(*box, *new wxButton(box, wxID_OK));
    delete box;  // behind a dialog GTK knows of no focus for a moment, Windows of that before it
    {
      const BusyBracket bracket(rig.busy);
      rig.window->Controller().MoveSlider(1, row.distortion);
    }
    EXPECT_EQ(focus_name(), row.after);
  }
}

TEST_F(OpenedWindow, BusyWindowRepaintsAndTakesNoCommands) {
  const BusyBracket bracket(rig.busy);
  EXPECT_FALSE(rig.window->IsEnabled());
  bool painted = false;
  auto& canvas = rig.Find("preview_canvas");
  canvas.Bind(wxEVT_PAINT, [&painted](wxPaintEvent& event) {
    painted = true;
    event.Skip();
  });
  canvas.Refresh();
  for (int step = 0; step < 5000 && !painted; ++step) {  // nothing else handles events here
    rig.busy.ProcessPendingEvents();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  EXPECT_TRUE(painted);
  EXPECT_EQ(rig.SentBy([&] { rig.window->Run("applybutton"); }), "");
  EXPECT_EQ(rig.Release("ctrl_bar1"), "");
  rig.window->Close();
  Settle();
  EXPECT_NE(rig.window, nullptr);
}

// Acts, once, on the first event round in which it finds what it waits for.
class Meanwhile : public wxTimer {
 public:
  explicit Meanwhile(std::function<bool()> act) : act_(std::move(act)) { Start(5); }
  ~Meanwhile() override { EXPECT_TRUE(acted_); }
  void Notify() override {
    Stop();  // what it does lets time pass, too
    acted_ = act_();
    if (!acted_) Start(5);
  }

 private:
  std::function<bool()> act_;
  bool acted_ = false;
};

TEST_F(OpenedWindow, LongWorkShowsProgressThatCanBeCancelled) {
  rig.server.SetFaults({"always:late=150"});
  rig.Move("ctrl_bar1", 30);
  const Meanwhile cancel([&] {
    wxWindow* dialog = wxWindow::FindWindowByName("work_progress");
    if (dialog == nullptr) return false;
    EXPECT_EQ(dialog->FindWindow(wxID_CANCEL)->GetLabel(), "Cancel");
    wxCommandEvent pressed(wxEVT_BUTTON, wxID_CANCEL);
    dialog->ProcessWindowEvent(pressed);
    return true;
  });
  const std::string sent = rig.Press("applybutton");
  EXPECT_EQ(std::string(kApplyWords).find(sent), 0U) << sent;
  EXPECT_LT(sent.size(), std::string(kApplyWords).size());
  EXPECT_EQ(ControlOf(*rig.window, "status_note").GetLabel(), "Stopped");
  EXPECT_TRUE(rig.window->IsEnabled());
  Settle();
  EXPECT_EQ(wxWindow::FindWindowByName("work_progress"), nullptr);
}

TEST_F(OpenedWindow, CommandsWaitUntilTheProjectorHasFollowed) {
  rig.server.SetFaults({"kind=20:late=50"});
  rig.Move("ctrl_bar1", 30);
  const Meanwhile press([&] {
    if (!rig.busy.IsFollowing() || rig.busy.Step() == 0) return false;
    EXPECT_TRUE(rig.window->IsEnabled());
    EXPECT_EQ(ControlOf(*rig.window, "status_note").GetLabel(), "Sending 1 of 7");
    rig.window->Run("initbutton");
    rig.window->Close();
    rig.window->Run("storebutton");  // the last one counts
    SendKey(rig.Find("ctrl_bar1"), wxEVT_KEY_DOWN, WXK_RIGHT);
    SendKey(rig.Find("ctrl_bar1"), wxEVT_KEY_UP, WXK_RIGHT);
    return true;
  });
  rig.window->Controller().ReleaseSlider();
  ASSERT_TRUE(SettleUntil([&] { return rig.server.Snapshot().Count.Stores == 1; }));
  EXPECT_EQ(rig.V().Distortion, 31);
  EXPECT_EQ(rig.server.Snapshot().Count.Shows, 2U);
  EXPECT_EQ(ControlOf(*rig.window, "status_shown").GetLabel(), "shows this correction, kept");
}

TEST_F(OpenedWindow, RecordsTheExchangeWhileItsItemIsChecked) {
  const auto link = [this] { return rig.Find<wxStaticText>("status_link").GetLabelText(); };
  rig.Pick("menu_help_record");
  EXPECT_FALSE(rig.Item("menu_help_record").IsChecked()) << "no file was chosen";
  rig.record = {rig.temp / "record.txt", true};
  rig.Pick("menu_help_record");
  EXPECT_TRUE(rig.Item("menu_help_record").IsChecked());
  EXPECT_TRUE(link().StartsWith("Recording - LAN"));
  rig.Press("applybutton");
  const std::string text = TempFolder::Read(rig.record.file);
  EXPECT_TRUE(text.ends_with("\tclosed\n")) << text;
  EXPECT_EQ(text.find(rig.server.Address()), std::string::npos);
  rig.Pick("menu_help_record");
  EXPECT_FALSE(rig.Item("menu_help_record").IsChecked());
  EXPECT_TRUE(link().StartsWith("LAN"));
  rig.Press("applybutton");
  EXPECT_EQ(TempFolder::Read(rig.record.file), text);
}

TEST_F(OpenedWindow, ShowsTheCheckAsATableThatCanBeSaved) {
  rig.trial_lines = {"end\tprobe\tfailed\t12\t0\t3\t"};
  rig.choices = {rig.temp / "check.txt"};
  const ModalScript script("connection_check", [this](wxDialog& dialog) {
    SettleUntil([&] { return ControlOf(dialog, "check_save").IsEnabled(); });
    const auto& list = ControlOf<wxListCtrl>(dialog, "check_rows");
    ASSERT_EQ(list.GetItemCount(), 6);
    for (const auto& [column, text] : {std::pair(1, "Probe"),
                                       {2, "failed"},
                                       {4, "3"},
                                       {5, "Cannot send. Switch on the power of the projector."},
                                       {6, "Switch the projector on and wait until it is warm."}}) {
      EXPECT_EQ(list.GetItemText(1, column), text);
    }
    PressIn(dialog, "check_save");
    PressIn(dialog, "check_close");
  });
  rig.Pick("menu_help_check");
  EXPECT_NE(TempFolder::Read(rig.temp / "check.txt").find("Verdict: Probe: Cannot send."),
            std::string::npos);
}

}  // namespace
}  // namespace warpline
