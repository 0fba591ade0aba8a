#include "tests/support/fake_beamseek.h"
#include "tests/ui/window_rig.h"
#include "ui/LSSset.h"

// The dialogs that choose a connection or the projector's mode, opened by the main window's menu.

namespace warpline {
namespace {

class ConnectionDialogs : public testing::Test {
 protected:
  ConnectionDialogs() {
    search.AddProjector({10, 0, 0, 8}, "Left", true);
    search.AddProjector({10, 0, 0, 9}, "Right", true);
    rig.global.Settings.TestPattern = 0;
    rig.beamseek = [this] { return has_library ? search.Functions() : nullptr; };
    rig.Open();
  }

  std::string SettingsText() const {
    return TempFolder::Read(DataFolder(rig.temp.Path()) / kSettingsFileName);
  }
  std::size_t Said() const { return rig.display.messages.size(); }

  void InSettings(std::function<void(wxDialog&)> act) {
    rig.global.Settings.CommunicationMode = 1;
    const ModalScript script("LSSset", std::move(act));
    rig.Pick("menu_opt_setting");
  }

  FakeBeamseek search;
  bool has_library = true;
  WindowRig rig;
};

TEST_F(ConnectionDialogs, CancelledSettingsChangeNothing) {
  const CommunicationEntry before = CommunicationEntryOf(rig.global.Settings);
  InSettings([](wxDialog& dialog) {
    const auto enabled = [&dialog] {
      std::string names;
      for (const char* name : {"Combo1", "Combo2", "Text1", "Combo3"}) {
        if (ControlOf(dialog, name).IsEnabled()) names.append(name).append(" ");
      }
      return names;
    };
    EXPECT_EQ(enabled(), "Text1 ") << "the chosen device's fields alone";
    SelectIn(dialog, "com_option");
    EXPECT_EQ(enabled(), "Combo1 Combo2 ");
    SelectIn(dialog, "usb_option");
    EXPECT_EQ(enabled(), "Combo3 ");
    PressIn(dialog, "CancelButton");
  });
  EXPECT_EQ(CommunicationEntryOf(rig.global.Settings), before);
  EXPECT_EQ(SettingsText(), "");
}

TEST_F(ConnectionDialogs, ConfirmedSettingsAreStoredAndWritten) {
  InSettings([](wxDialog& dialog) {
    ChooseIn(dialog, "Combo1", 6);
    ChooseIn(dialog, "Combo2", 1);
    ControlOf<wxTextCtrl>(dialog, "Text1").SetValue("10.1.2.3");
    ChooseIn(dialog, "Combo3", 4);
    SelectIn(dialog, "com_option");
    PressIn(dialog, "OKButton");
  });
  const CommunicationEntry stored = CommunicationEntryOf(rig.global.Settings);
  EXPECT_EQ(stored, (CommunicationEntry{kSerial, 6, 1, "10.1.2.3", 4}));
  EXPECT_NE(SettingsText().find("IPAddress=10.1.2.3\r\n"), std::string::npos);
  InSettings([](wxDialog& dialog) {
    wxString chosen;
    for (const char* list : {"Combo1", "Combo2", "Combo3"}) {
      chosen += ControlOf<wxChoice>(dialog, list).GetStringSelection();
    }
    EXPECT_EQ(chosen, "COM79600USB5");
    EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, "com_option").GetValue());
    EXPECT_EQ(TextOf(dialog, "Text1"), "10.1.2.3");
  });
}

TEST_F(ConnectionDialogs, AddressTakesNoLettersAndIsChecked) {
  InSettings([this](wxDialog& dialog) {
    auto& address = ControlOf<wxTextCtrl>(dialog, "Text1");
    address.Clear();
    address.SetFocus();
    wxUIActionSimulator keys;
    keys.MouseMove(address.GetScreenRect().GetPosition() + wxPoint(8, 8));
    ASSERT_TRUE(SettleUntil([&address] { return address.HasFocus(); }));
    for (const char c : {'a', '1', 'Z', '0', '.', ' ', '-', '7', ','}) keys.Char(c);
    EXPECT_TRUE(SettleUntil([&] { return address.GetValue() == "10.7"; })) << address.GetValue();
    keys.Char(WXK_BACK);
    EXPECT_TRUE(SettleUntil([&] { return address.GetValue() == "10."; })) << address.GetValue();
    address.SetValue("224.0.0.1");
    ControlOf(dialog, "OKButton").SetFocus();
    PressIn(dialog, "OKButton");
    EXPECT_EQ(rig.display.messages,
              (std::vector<RecordedMessage>{
                  {"Warpline Tool 3.0", "IP Address is invalid entry.", MessageIcon::kCritical}}));
    EXPECT_TRUE(dialog.IsShown());
    EXPECT_TRUE(SettleUntil([&address] { return address.HasFocus(); }));
    for (const int key : {int{'x'}, int{WXK_END}, int{'7'}}) keys.Char(key);
    EXPECT_TRUE(SettleUntil([&] { return address.GetValue() == "224.0.0.17"; }))
        << address.GetValue();
    SelectIn(dialog, "usb_option");
    PressIn(dialog, "OKButton");
  });
  EXPECT_EQ(Said(), 1U) << "asked of a LAN connection alone";
  EXPECT_EQ(rig.global.Settings.ConnectDevice, kUsb);
}

TEST_F(ConnectionDialogs, ModeDialogShowsAndSetsTheMode) {
  const struct {
    const char* name;
    std::int16_t before;
    int shown, chosen, after;
    bool sends;
  } rows[] = {
      {"normal stays", 0, 0, 0, 0, false},
      {"normal to corrected", 0, 0, 1, 1, true},
      {"normal to other", 0, 0, 2, 2, true},
      {"corrected to normal", 1, 1, 0, 0, true},
      {"other is shown as normal", 2, 0, 0, 0, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    rig.engine.commands.SetMode(row.before);
    const std::uint64_t links = rig.Links();
    const ModalScript script("LSSapmode", [&](wxDialog& dialog) {
      const auto option = [](int mode) { return "Option1" + std::to_string(mode); };
      EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, option(row.shown)).GetValue());
      EXPECT_EQ(ControlOf(dialog, "applybutton").IsEnabled(), row.before == 2);
      SelectIn(dialog, option(row.chosen));
      EXPECT_EQ(ControlOf(dialog, "applybutton").IsEnabled(), row.sends);
      PressIn(dialog, "OKButton");
    });
    rig.Pick("menu_opt_pjmode");
    EXPECT_EQ(rig.server.Snapshot().Mode, row.after);
    EXPECT_EQ(rig.Links() - links, row.sends ? 2U : 1U);
  }
  EXPECT_EQ(Said(), 0U);
}

TEST_F(ConnectionDialogs, ModeDialogAppliesAndCancels) {
  const ModalScript script("LSSapmode", [&](wxDialog& dialog) {
    auto& apply = ControlOf(dialog, "applybutton");
    SelectIn(dialog, "Option11");
    apply.SetFocus();
    PressIn(dialog, "applybutton");
    EXPECT_TRUE(SettleUntil([&dialog] { return ControlOf(dialog, "OKButton").HasFocus(); }));
    EXPECT_EQ(rig.server.Snapshot().Mode, 1);
    EXPECT_FALSE(apply.IsEnabled());
    EXPECT_TRUE(dialog.IsEnabled()) << "after the work";
    rig.server.SetFaults({"kind=mode:refuse"});
    SelectIn(dialog, "Option12");
    PressIn(dialog, "applybutton");
    EXPECT_EQ(Said(), 1U);
    EXPECT_TRUE(apply.IsEnabled()) << "still to be sent";
    PressIn(dialog, "CancelButton");
  });
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(rig.server.Snapshot().Mode, 1);
  const BusyBracket bracket(rig.busy);
  EXPECT_FALSE(rig.window->IsEnabled()) << "work is the main window's again";
}

TEST_F(ConnectionDialogs, ModeDialogNeedsTheProjectorUnlessInDemoMode) {
  rig.server.Stop();
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(Said(), 1U) << "and no dialog that would wait here";
  rig.global.Settings.DemoMode = 1;
  const ModalScript script("LSSapmode", [](wxDialog&) {});
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(Said(), 1U);
}

TEST_F(ConnectionDialogs, SearchTakesTheChosenProjectorOver) {
  const fs::path guide = rig.temp.Write("program/ReadMe(English).txt", "guide");
  search.on_start = [this] { search.Notify(kSearchReadMe); };
  search.on_restart = [this] { search.Notify(kSearchSelected, 1); };
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(rig.texts_shown, std::vector<fs::path>{guide});
  EXPECT_EQ(rig.global.Settings.IPAddress, "10.0.0.9");
  EXPECT_NE(SettingsText().find("IPAddress=10.0.0.9\r\n"), std::string::npos);
  EXPECT_TRUE(rig.window->IsEnabled());
}

TEST_F(ConnectionDialogs, SearchWithoutAChoiceChangesNothing) {
  wxTimer during;
  during.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
    EXPECT_FALSE(rig.window->IsEnabled()) << "while it runs";
    EXPECT_FALSE(rig.window->Close());
    search.Notify(kSearchCancelled);
  });
  during.StartOnce(100);
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(search.calls.back(), "Destroy");
  EXPECT_EQ(Said(), 0U);
  has_library = false;
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(Said(), 1U);
  ASSERT_NE(rig.window, nullptr);
  EXPECT_EQ(rig.global.Settings.IPAddress, rig.server.Address());
  EXPECT_EQ(SettingsText(), "");
  EXPECT_TRUE(rig.window->IsEnabled());
}

}  // namespace
}  // namespace warpline
