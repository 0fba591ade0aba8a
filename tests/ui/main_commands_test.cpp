#include <wx/dialog.h>
#include <wx/modalhook.h>
#include <wx/stattext.h>

#include "core/catalogue.h"
#include "tests/ui/window_rig.h"
#include "ui/window_messages.h"

// Buttons, menus, files, closing, and what a failing projector does to the window.

namespace warpline {
namespace {

// A correction for a spherical screen, as a file.
fs::path WriteSphere(const WindowRig& rig) {
  LSSglobal other;
  other.Correction.ScreenType = 2;
  ResetToScreenType(other.Correction);
  other.Correction.Axes[kHorizontal].Distortion = 25;
  LSSfile writer(other, rig.messages);
  EXPECT_TRUE(writer.SaveDataFile(rig.temp / "sphere.wlt", kTypeWlt));
  return rig.temp / "sphere.wlt";
}

TEST(MainCommands, ButtonsReachTheProjector) {
  WindowRig rig;
  rig.Open();
  rig.Move("ctrl_bar1", 30);
  EXPECT_EQ(rig.SentBy([&] { rig.Press("applybutton"); }), kApplyWords);
  EXPECT_NE(rig.server.Snapshot().Working, rig.server.Snapshot().Stored);
  EXPECT_EQ(rig.SentBy([&] { rig.Press("storebutton"); }), "probe class 21 18");
  EXPECT_EQ(rig.SentBy([&] { rig.Press("initbutton"); }), kInitializeWords);
  EXPECT_EQ(rig.V().Distortion, 0);
  EXPECT_EQ(rig.Value("ctrl_bar1"), 0);
  EXPECT_EQ(rig.display.messages.size(), 0U);
}

TEST(MainCommands, DemoModeOpensNothing) {
  WindowRig rig;
  rig.global.Settings.DemoMode = 1;
  rig.Open();
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 (Debug)");
  rig.Move("ctrl_bar1", 30);
  rig.ReleaseMouse("ctrl_bar1");
  for (const char* button : {"applybutton", "storebutton", "initbutton"}) rig.Press(button);
  EXPECT_EQ(rig.Links(), 0U);
  EXPECT_EQ(rig.V().Distortion, 0) << "Initialize still resets the model";
}

TEST(MainCommands, SettingsDecideWhatCanBeUsed) {
  WindowRig rig;
  rig.global.Settings.AutoApplyMenu = 0;
  rig.global.Settings.AutoApply = 0;
  rig.global.Settings.CommunicationMode = 1;
  rig.global.Settings.TestPattern = 0;
  rig.dialogs.communication_settings = [](wxWindow*) {};
  rig.Open();
  EXPECT_FALSE(rig.Enabled("applybutton"));
  EXPECT_FALSE(rig.MenuEnabled("menu_opt_auto"));
  EXPECT_TRUE(rig.Checked("menu_opt_auto_off"));
  EXPECT_TRUE(rig.Checked("menu_opt_detailed"));
  EXPECT_FALSE(rig.Find<wxCheckBox>("testpattern").GetValue());
  EXPECT_FALSE(rig.Shown("LSSview"));
  EXPECT_TRUE(rig.MenuEnabled("menu_opt_setting"));
  EXPECT_FALSE(rig.MenuEnabled("menu_opt_pjmode")) << "its dialog is not there";
  rig.Pick("menu_opt_simple");
  EXPECT_EQ(rig.global.Settings.CommunicationMode, 0);
  EXPECT_FALSE(rig.MenuEnabled("menu_opt_setting"));
}

TEST(MainCommands, EachSettingsModeOpensItsDialog) {
  WindowRig rig;
  std::string opened;
  rig.dialogs.communication_settings = [&](wxWindow*) { opened += "settings "; };
  rig.dialogs.projector_search = [&](wxWindow*) { opened += "search "; };
  rig.dialogs.projector_mode = [&](wxWindow*) { opened += "mode "; };
  rig.Open();
  rig.Pick("menu_opt_setting");
  rig.Pick("menu_opt_detailed");
  rig.Pick("menu_opt_setting");
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(opened, "search settings mode ");
}

TEST(MainCommands, ProjectionTogglesResetAndSend) {
  WindowRig rig;
  rig.H().Distortion = 40;
  rig.Open();
  EXPECT_EQ(rig.SentBy([&] { rig.Pick("menu_opt_lr_reverse"); }), kApplyWords);
  EXPECT_TRUE(rig.Checked("menu_opt_lr_reverse"));
  EXPECT_EQ(rig.H().Distortion, 0);
  EXPECT_EQ(rig.H().Optical, 32);
  rig.Pick("menu_opt_ud_reverse");
  EXPECT_EQ(rig.V().Optical, 32);
  rig.Pick("menu_opt_ud_reverse");
  EXPECT_FALSE(rig.Checked("menu_opt_ud_reverse"));
  EXPECT_EQ(rig.V().Optical, -32);
}

TEST(MainCommands, OpenBringsTheFileToTheScreenAndTheProjector) {
  WindowRig rig;
  const fs::path sphere = WriteSphere(rig);
  rig.Open();
  rig.Pick("menu_opt_auto_off");
  rig.choices = {sphere};
  EXPECT_EQ(rig.SentBy([&] { rig.Pick("menu_file_open"); }), kApplyWords);
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - sphere.wlt");
  EXPECT_EQ(rig.Find<wxChoice>("scr_select").GetSelection(), 2);
  rig.SelectGroup(1);
  EXPECT_EQ(rig.Text("ctrl_value0"), "25%");

  rig.choices = {rig.temp.Write("broken.wlt", "nothing of ours\r\n")};
  const CorrectionData before = rig.global.Correction;
  EXPECT_EQ(rig.SentBy([&] { rig.Pick("menu_file_open"); }), "");
  EXPECT_EQ(rig.display.Texts(), std::vector<std::string>{"The file format is corrupted."});
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - sphere.wlt");
  EXPECT_EQ(rig.global.Correction, before);
}

TEST(MainCommands, OpenAndCloseAskAboutChanges) {
  const struct {
    MessageAnswer answer;
    bool saves;
    bool goes_on;
  } rows[] = {{MessageAnswer::kCancel, false, false},
              {MessageAnswer::kNo, false, true},
              {MessageAnswer::kYes, true, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(static_cast<int>(row.answer));
    WindowRig rig;
    const fs::path sphere = WriteSphere(rig);
    rig.global.CurrentFile = rig.temp / "mine.wlt";
    rig.Open();
    rig.Move("ctrl_bar1", 30);
    rig.display.answers = {row.answer};
    rig.choices = {sphere};
    rig.Pick("menu_file_open");
    EXPECT_EQ(rig.global.Correction.ScreenType, row.goes_on ? 2 : 0);
    EXPECT_EQ(fs::exists(rig.temp / "mine.wlt"), row.saves);

    fs::remove(rig.temp / "mine.wlt");
    rig.global.CurrentFile = rig.temp / "mine.wlt";
    rig.Move("ctrl_bar1", 31);
    rig.display.answers = {row.answer};
    rig.Press("exitbutton");
    EXPECT_EQ(rig.window == nullptr, row.goes_on);
    EXPECT_EQ(fs::exists(rig.temp / "mine.wlt"), row.saves);
  }
}

TEST(MainCommands, SaveWritesAndNames) {
  WindowRig rig;
  rig.Open();
  rig.Move("ctrl_bar1", 30);
  rig.Pick("menu_file_save");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0") << "the dialog was cancelled";
  rig.choices = {rig.temp / "first"};
  rig.Pick("menu_file_save");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - first.wlt");
  rig.Move("ctrl_bar1", 31);
  rig.Pick("menu_file_save");
  EXPECT_NE(TempFolder::Read(rig.temp / "first.wlt").find("DistortionV=31"), std::string::npos);
  rig.choices = {rig.temp / "second.wlt"};
  rig.Pick("menu_file_saveas");
  EXPECT_EQ(rig.Title(), "Warpline Tool 3.0 - second.wlt");
  rig.window->Close();
  WindowRig::Settle();
  EXPECT_EQ(rig.window, nullptr);
  EXPECT_TRUE(rig.display.messages.empty()) << "nothing to ask about";
  EXPECT_TRUE(fs::exists(DataFolder(rig.temp.Path()) / kSettingsFileName));
}

TEST(MainCommands, HelpOpensTheGuideOfTheLanguage) {
  for (const std::int16_t language : {std::int16_t{0}, std::int16_t{1}}) {
    WindowRig rig(language);
    rig.Open();
    rig.Pick("menu_help_doc");
    ASSERT_EQ(rig.display.messages.size(), 1U) << "there is no guide";
    const std::string name = language == 1 ? "ReadMe(Japanese).txt" : "ReadMe(English).txt";
    EXPECT_NE(rig.display.messages[0].text.find(name), std::string::npos);
    fs::create_directory(rig.temp / "program");
    const fs::path guide = rig.temp.Write("program/" + name, "guide");
    rig.Pick("menu_help_doc");
    EXPECT_EQ(rig.texts_shown, std::vector<fs::path>{guide});
  }
}

// Answers every modal dialog with OK and keeps its texts.
class DialogRecorder : public wxModalDialogHook {
 public:
  DialogRecorder() { Register(); }
  ~DialogRecorder() override { Unregister(); }

  std::vector<std::string> names;
  std::vector<std::string> titles;
  std::vector<wxWindow*> owners;
  std::string texts;

 protected:
  int Enter(wxDialog* dialog) override {
    names.push_back(dialog->GetName().utf8_string());
    titles.push_back(dialog->GetTitle().utf8_string());
    owners.push_back(dialog->GetParent());
    for (wxWindow* child : dialog->GetChildren()) {
      if (dynamic_cast<wxStaticText*>(child) == nullptr) continue;
      texts += child->GetLabel().utf8_string() + "|";
    }
    return wxID_OK;
  }
};

TEST(MainCommands, AboutBoxTellsTheVersion) {
  WindowRig rig;
  rig.Open();
  DialogRecorder dialogs;
  rig.Pick("menu_help_about");
  EXPECT_EQ(dialogs.names, std::vector<std::string>{"about_box"});
  EXPECT_EQ(dialogs.texts.find("Warpline Tool 3.0|Version 3.0|"), 0U) << dialogs.texts;
}

TEST(MainCommands, MessageBoxesBelongToTheMainWindow) {
  WindowRig rig;
  rig.Open();
  DialogRecorder dialogs;
  WindowMessages boxes;
  boxes.Show("Warpline Tool 3.0", "Wrong value.", MessageIcon::kCritical);
  boxes.Ask("Warpline Tool 3.0", "Do you want to save the change?");
  EXPECT_EQ(dialogs.titles, std::vector<std::string>(2, "Warpline Tool 3.0"));
  EXPECT_EQ(dialogs.owners, std::vector<wxWindow*>(2, rig.window));
}

TEST(MainCommands, FailingProjectorLeavesWindowAndModelUsable) {
  const struct {
    const char* name;
    const char* fault;
  } rows[] = {{"silent", "kind=20:timeout"},
              {"refusing", "kind=0:refuse"},
              {"cutting", "kind=2:cut"},
              {"garbling", "kind=3:checksum"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    WindowRig rig;
    rig.server.SetFaults({row.fault});
    rig.Open();
    rig.Move("ctrl_bar1", 30);
    rig.Find<wxWindow>("ctrl_bar1").SetFocus();
    rig.KeyUp("ctrl_bar1", WXK_RIGHT);
    EXPECT_EQ(rig.display.messages.size(), 1U);
    EXPECT_EQ(rig.V().Distortion, 30);
    EXPECT_TRUE(rig.window->IsEnabled());
    EXPECT_FALSE(rig.busy.IsBusy());
    EXPECT_EQ(wxWindow::FindFocus(), &rig.Find<wxWindow>("ctrl_bar1"));
    rig.server.SetFaults({});
    EXPECT_EQ(rig.SentBy([&] { rig.Press("applybutton"); }), kApplyWords);
    EXPECT_EQ(rig.display.messages.size(), 1U);
  }
}

TEST(MainCommands, BusyWindowRepaintsAndTakesNoCommands) {
  WindowRig rig;
  LSSmain& window = rig.Open();
  const BusyBracket bracket(rig.busy);
  EXPECT_FALSE(window.IsEnabled());
  bool painted = false;
  auto& icon = rig.Find<wxWindow>("preview_canvas");
  icon.Bind(wxEVT_PAINT, [&painted](wxPaintEvent& event) {
    painted = true;
    event.Skip();
  });
  icon.Refresh();
  EXPECT_TRUE(WindowRig::SettleUntil([&] {
    rig.busy.ProcessPendingEvents();
    return painted;
  }));
  EXPECT_EQ(rig.SentBy([&] { window.Run("applybutton"); }), "");
  EXPECT_EQ(rig.SentBy([&] { rig.ReleaseMouse("ctrl_bar1"); }), "");
  window.Close();
  WindowRig::Settle();
  EXPECT_NE(rig.window, nullptr);
}

}  // namespace
}  // namespace warpline
