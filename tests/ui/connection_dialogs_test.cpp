#include <array>
#include <cstring>

#include "tests/ui/window_rig.h"
#include "ui/LSSset.h"

// The dialogs that choose a connection or the projector's mode, opened by the main window's menu.

namespace warpline {
namespace {

// A search library whose user decides at once. The functions have no place for an object of ours.
struct FakeSearch {
  ConnectSelectCallback* callback = nullptr;
  void* user = nullptr;
  csResData result{};
  std::vector<std::uint32_t> notifications;  // raised at the start, the last one at a restart

  std::int32_t Raise(std::uint32_t code) {
    callback(code, 1, 0, user);
    return 1;
  }
};
FakeSearch* fake_search = nullptr;

std::int32_t FakeCreate(const csAdapterList*, ConnectSelectCallback* callback, void* user,
                        std::int32_t, std::int32_t* handle, const csResData** result) {
  fake_search->callback = callback;
  fake_search->user = user;
  *handle = 7;
  *result = &fake_search->result;
  return 1;
}

BeamseekFunctions FakeLibrary() {
  BeamseekFunctions library;
  library.ConnectSelectCreate = FakeCreate;
  library.ConnectSelectSetLastPJ = [](std::int32_t, const char*) { return std::int32_t{1}; };
  library.ConnectSelectStart = [](std::int32_t) {
    return fake_search->Raise(fake_search->notifications.front());
  };
  library.ConnectSelectRestart = [](std::int32_t, std::int32_t) {
    return fake_search->Raise(fake_search->notifications.back());
  };
  library.ConnectSelectDestroy = [](std::int32_t) { return std::int32_t{1}; };
  return library;
}

class ConnectionDialogs : public testing::Test {
 protected:
  ConnectionDialogs() {
    fake_search = &search;
    search.result.iPjNum = 2;
    const std::array<std::uint8_t, 4> address{10, 0, 0, 9};
    std::memcpy(search.result.PJData[1].ucIP, address.data(), address.size());
    rig.global.Settings.TestPattern = 0;
    rig.UseDialogs([this] { return has_library ? &library : nullptr; });
    rig.Open();
  }
  ~ConnectionDialogs() override { fake_search = nullptr; }

  std::string SettingsText() const {
    return TempFolder::Read(DataFolder(rig.temp.Path()) / kSettingsFileName);
  }
  std::size_t Said() const { return rig.display.messages.size(); }

  void InSettings(std::function<void(wxDialog&)> act) {
    rig.Pick("menu_opt_detailed");
    const ModalScript script("LSSset", std::move(act));
    rig.Pick("menu_opt_setting");
  }

  FakeSearch search;
  const BeamseekFunctions library = FakeLibrary();
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
    const auto chosen = [&](const char* list) {
      return ControlOf<wxChoice>(dialog, list).GetStringSelection();
    };
    EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, "com_option").GetValue());
    EXPECT_EQ(chosen("Combo1") + chosen("Combo2") + chosen("Combo3"), "COM79600USB5");
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
    SelectIn(dialog, "usb_option");
    PressIn(dialog, "OKButton");
  });
  EXPECT_EQ(Said(), 1U) << "asked of a LAN connection alone";
  EXPECT_EQ(rig.global.Settings.ConnectDevice, kUsb);
}

TEST_F(ConnectionDialogs, ModeDialogShowsAndSetsTheMode) {
  const struct {
    const char* name;
    int before, shown, chosen, after;
    bool sends;
  } rows[] = {
      {"normal stays", 0, 0, 0, 0, false},           {"normal to corrected", 0, 0, 1, 1, true},
      {"normal to other", 0, 0, 2, 2, true},         {"corrected to normal", 1, 1, 0, 0, true},
      {"corrected stays", 1, 1, 1, 1, false},        {"corrected to other", 1, 1, 2, 2, true},
      {"other counts as normal", 2, 0, 0, 2, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    rig.commands.SetMode(static_cast<std::int16_t>(row.before));
    const std::uint64_t links = rig.Links();
    const ModalScript script("LSSapmode", [&](wxDialog& dialog) {
      const auto option = [](int mode) { return "Option1" + std::to_string(mode); };
      EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, option(row.shown)).GetValue());
      EXPECT_FALSE(ControlOf(dialog, "applybutton").IsEnabled());
      SelectIn(dialog, option(row.chosen));
      EXPECT_EQ(ControlOf(dialog, "applybutton").IsEnabled(), row.sends);
      PressIn(dialog, "OKButton");
    });
    rig.Pick("menu_opt_pjmode");
    EXPECT_EQ(rig.server.Snapshot().Mode, row.after);
    EXPECT_EQ(rig.Links() - links, row.sends ? 2U : 1U);
    EXPECT_TRUE(rig.window->IsEnabled());
  }
  EXPECT_EQ(Said(), 0U);
}

TEST_F(ConnectionDialogs, ModeDialogAppliesAndCancels) {
  const ModalScript script("LSSapmode", [&](wxDialog& dialog) {
    SelectIn(dialog, "Option11");
    ControlOf(dialog, "applybutton").SetFocus();
    PressIn(dialog, "applybutton");
    EXPECT_TRUE(SettleUntil([&dialog] { return ControlOf(dialog, "OKButton").HasFocus(); }));
    EXPECT_EQ(rig.server.Snapshot().Mode, 1);
    EXPECT_FALSE(ControlOf(dialog, "applybutton").IsEnabled());
    EXPECT_TRUE(dialog.IsEnabled()) << "after the work";
    rig.server.SetFaults({"kind=mode:refuse"});
    SelectIn(dialog, "Option12");
    PressIn(dialog, "applybutton");
    EXPECT_EQ(Said(), 1U);
    EXPECT_TRUE(ControlOf(dialog, "applybutton").IsEnabled()) << "still to be sent";
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
  const ModalScript script("LSSapmode", [](wxDialog& dialog) {
    EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, "Option10").GetValue());
    SelectIn(dialog, "Option12");
    PressIn(dialog, "OKButton");
  });
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(Said(), 1U);
}

TEST_F(ConnectionDialogs, SearchTakesTheChosenProjectorOver) {
  const fs::path guide = rig.temp.Write("program/ReadMe(English).txt", "guide");
  search.notifications = {kSearchReadMe, kSearchSelected};
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(rig.texts_shown, std::vector<fs::path>{guide});
  EXPECT_EQ(rig.global.Settings.IPAddress, "10.0.0.9");
  EXPECT_NE(SettingsText().find("IPAddress=10.0.0.9\r\n"), std::string::npos);
  EXPECT_TRUE(rig.window->IsEnabled());
}

TEST_F(ConnectionDialogs, SearchWithoutAChoiceChangesNothing) {
  search.notifications = {kSearchRepeat, kSearchFinished};
  wxTimer during;
  int closes = 0;
  during.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
    EXPECT_FALSE(rig.window->IsEnabled()) << "while it runs";
    closes += rig.window->Close() ? 10 : 1;
    search.Raise(kSearchCancelled);
  });
  during.StartOnce(100);
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(closes, 1);
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
