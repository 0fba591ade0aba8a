#include <array>
#include <cstring>

#include "tests/ui/dialog_rig.h"
#include "ui/LSSset.h"
#include "ui/open_dialogs.h"

// The dialogs that choose a connection or the projector's mode, opened by the main window's menu.

namespace warpline {
namespace {

// A search library whose user decides at once. The functions have no place for an object of ours.
struct FakeSearch {
  ConnectSelectCallback* callback = nullptr;
  void* user = nullptr;
  csResData result{};
  bool creates = true;
  std::vector<std::uint32_t> notifications;  // raised at the start, the last one at a restart
  std::string last_address;
  int destroyed = 0;

  void Raise(std::uint32_t code) { callback(code, 1, 0, user); }
};
FakeSearch* fake_search = nullptr;

std::int32_t FakeCreate(const csAdapterList*, ConnectSelectCallback* callback, void* user,
                        std::int32_t, std::int32_t* handle, const csResData** result) {
  fake_search->callback = callback;
  fake_search->user = user;
  *handle = 7;
  *result = &fake_search->result;
  return fake_search->creates ? 1 : 0;
}

std::int32_t FakeSetLast(std::int32_t, const char* address) {
  fake_search->last_address = address;
  return 1;
}

std::int32_t FakeStart(std::int32_t) {
  fake_search->Raise(fake_search->notifications.front());
  return 1;
}

std::int32_t FakeRestart(std::int32_t, std::int32_t) {
  fake_search->Raise(fake_search->notifications.back());
  return 1;
}

std::int32_t FakeDestroy(std::int32_t) {
  ++fake_search->destroyed;
  return 1;
}

class ConnectionDialogs : public testing::Test {
 protected:
  ConnectionDialogs() {
    library.ConnectSelectCreate = FakeCreate;
    library.ConnectSelectSetLastPJ = FakeSetLast;
    library.ConnectSelectStart = FakeStart;
    library.ConnectSelectRestart = FakeRestart;
    library.ConnectSelectDestroy = FakeDestroy;
    fake_search = &search;
    search.result.iPjNum = 2;
    const std::array<std::uint8_t, 4> address{10, 0, 0, 9};
    std::memcpy(search.result.PJData[1].ucIP, address.data(), address.size());
    rig.global.Settings.TestPattern = 0;
    rig.dialogs = CreateMainDialogs({rig.global,
                                     rig.files,
                                     rig.commands,
                                     rig.messages,
                                     rig.display,
                                     rig.busy,
                                     [this] { return has_library ? &library : nullptr; },
                                     {},
                                     rig.temp.Path(),
                                     rig.temp.Path(),
                                     [this](const fs::path& file) {
                                       rig.texts_shown.push_back(file);
                                       return true;
                                     }});
    rig.Open();
  }
  ~ConnectionDialogs() override { fake_search = nullptr; }

  std::string SettingsText() const {
    return TempFolder::Read(DataFolder(rig.temp.Path()) / kSettingsFileName);
  }

  void InSettings(std::function<void(wxDialog&)> act) {
    rig.Pick("menu_opt_detailed");
    const ModalScript script("LSSset", std::move(act));
    rig.Pick("menu_opt_setting");
  }

  FakeSearch search;
  BeamseekFunctions library;
  bool has_library = true;
  WindowRig rig;
};

TEST_F(ConnectionDialogs, OnlyTheChosenDevicesFieldsCanBeUsed) {
  InSettings([](wxDialog& dialog) {
    const auto enabled = [&dialog] {
      std::string names;
      for (const char* name : {"Combo1", "Combo2", "Text1", "Combo3"}) {
        if (ControlOf(dialog, name).IsEnabled()) names.append(name).append(" ");
      }
      return names;
    };
    EXPECT_EQ(enabled(), "Text1 ");
    SelectIn(dialog, "com_option");
    EXPECT_EQ(enabled(), "Combo1 Combo2 ");
    SelectIn(dialog, "usb_option");
    EXPECT_EQ(enabled(), "Combo3 ");
  });
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
  const Settings& settings = rig.global.Settings;
  EXPECT_EQ(CommunicationEntryOf(settings), (CommunicationEntry{kSerial, 6, 1, "10.1.2.3", 4}));
  EXPECT_NE(SettingsText().find("IPAddress=10.1.2.3\r\n"), std::string::npos);
  InSettings([](wxDialog& dialog) {
    EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, "com_option").GetValue());
    EXPECT_EQ(ControlOf<wxChoice>(dialog, "Combo1").GetStringSelection(), "COM7");
    EXPECT_EQ(ControlOf<wxChoice>(dialog, "Combo2").GetStringSelection(), "9600");
    EXPECT_EQ(ControlOf<wxChoice>(dialog, "Combo3").GetStringSelection(), "USB5");
    EXPECT_EQ(ControlOf<wxTextCtrl>(dialog, "Text1").GetValue(), "10.1.2.3");
  });
}

TEST_F(ConnectionDialogs, CancelledSettingsChangeNothing) {
  const Settings before = rig.global.Settings;
  InSettings([](wxDialog& dialog) {
    SelectIn(dialog, "usb_option");
    PressIn(dialog, "CancelButton");
  });
  EXPECT_EQ(CommunicationEntryOf(rig.global.Settings), CommunicationEntryOf(before));
  EXPECT_EQ(SettingsText(), "");
}

TEST_F(ConnectionDialogs, TypedLettersDoNotArrive) {
  InSettings([](wxDialog& dialog) {
    auto& address = ControlOf<wxTextCtrl>(dialog, "Text1");
    address.Clear();
    address.SetFocus();
    wxUIActionSimulator keys;
    keys.MouseMove(address.GetScreenRect().GetPosition() + wxPoint(8, 8));
    ASSERT_TRUE(WindowRig::SettleUntil([&address] { return address.HasFocus(); }));
    for (const char c : {'a', '1', 'Z', '0', '.', ' ', '-', '7', ','}) keys.Char(c);
    EXPECT_TRUE(WindowRig::SettleUntil([&address] { return address.GetValue() == "10.7"; }))
        << address.GetValue();
    keys.Char(WXK_BACK);
    keys.Char('8');
    EXPECT_TRUE(WindowRig::SettleUntil([&address] { return address.GetValue() == "10.8"; }))
        << address.GetValue();
  });
}

TEST_F(ConnectionDialogs, BadAddressKeepsTheDialogOpen) {
  const Settings before = rig.global.Settings;
  InSettings([this](wxDialog& dialog) {
    auto& address = ControlOf<wxTextCtrl>(dialog, "Text1");
    address.SetValue("224.0.0.1");
    ControlOf(dialog, "OKButton").SetFocus();
    PressIn(dialog, "OKButton");
    EXPECT_EQ(rig.display.messages,
              (std::vector<RecordedMessage>{
                  {"Warpline Tool 3.0", "IP Address is invalid entry.", MessageIcon::kCritical}}));
    EXPECT_TRUE(dialog.IsShown());
    EXPECT_TRUE(WindowRig::SettleUntil([&address] { return address.HasFocus(); }));
    SelectIn(dialog, "usb_option");
    PressIn(dialog, "OKButton");
  });
  EXPECT_EQ(rig.display.messages.size(), 1U) << "asked of a LAN connection alone";
  EXPECT_EQ(rig.global.Settings.ConnectDevice, kUsb);
}

TEST_F(ConnectionDialogs, ModeDialogShowsAndSetsTheMode) {
  const struct {
    const char* name;
    std::int16_t before;
    int shown;
    int chosen;
    int after;
    bool sends;
  } rows[] = {
      {"normal stays", 0, 0, 0, 0, false},           {"normal to corrected", 0, 0, 1, 1, true},
      {"normal to other", 0, 0, 2, 2, true},         {"corrected to normal", 1, 1, 0, 0, true},
      {"corrected stays", 1, 1, 1, 1, false},        {"corrected to other", 1, 1, 2, 2, true},
      {"other counts as normal", 2, 0, 0, 2, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    rig.commands.SetMode(row.before);
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
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST_F(ConnectionDialogs, ModeDialogAppliesAndCancels) {
  const ModalScript script("LSSapmode", [&](wxDialog& dialog) {
    SelectIn(dialog, "Option11");
    PressIn(dialog, "applybutton");
    EXPECT_EQ(rig.server.Snapshot().Mode, 1);
    EXPECT_FALSE(ControlOf(dialog, "applybutton").IsEnabled());
    EXPECT_TRUE(dialog.IsEnabled()) << "after the work";
    rig.server.SetFaults({"kind=mode:refuse"});
    SelectIn(dialog, "Option12");
    PressIn(dialog, "applybutton");
    EXPECT_EQ(rig.display.messages.size(), 1U);
    EXPECT_TRUE(ControlOf(dialog, "applybutton").IsEnabled()) << "still to be sent";
    PressIn(dialog, "CancelButton");
  });
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(rig.server.Snapshot().Mode, 1);
}

TEST_F(ConnectionDialogs, ModeDialogNeedsTheProjectorUnlessInDemoMode) {
  rig.server.Stop();
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(rig.display.messages.size(), 1U) << "and no dialog that would wait here";

  rig.global.Settings.DemoMode = 1;
  const ModalScript script("LSSapmode", [](wxDialog& dialog) {
    EXPECT_TRUE(ControlOf<wxRadioButton>(dialog, "Option10").GetValue());
    SelectIn(dialog, "Option12");
    PressIn(dialog, "OKButton");
  });
  rig.Pick("menu_opt_pjmode");
  EXPECT_EQ(rig.display.messages.size(), 1U);
}

TEST_F(ConnectionDialogs, SearchTakesTheChosenProjectorOver) {
  rig.global.Settings.IPAddress = "10.0.0.5";
  search.notifications = {kSearchSelected};
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(search.last_address, "10.0.0.5");
  EXPECT_EQ(rig.global.Settings.IPAddress, "10.0.0.9");
  EXPECT_NE(SettingsText().find("IPAddress=10.0.0.9\r\n"), std::string::npos);
  EXPECT_EQ(search.destroyed, 1);
  EXPECT_TRUE(rig.window->IsEnabled());
}

TEST_F(ConnectionDialogs, SearchEndsWithoutAChoice) {
  const struct {
    const char* name;
    std::vector<std::uint32_t> notifications;
    bool creates;
    bool library;
    std::size_t messages;
  } rows[] = {
      {"closed", {kSearchClosed}, true, true, 0},
      {"cancelled", {kSearchCancelled}, true, true, 0},
      {"repeated, then cancelled", {kSearchRepeat, kSearchCancelled}, true, true, 0},
      {"not created", {}, false, true, 1},
      {"no library", {}, true, false, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::string before = rig.global.Settings.IPAddress;
    rig.display.messages.clear();
    search.notifications = row.notifications;
    search.creates = row.creates;
    has_library = row.library;
    rig.Pick("menu_opt_setting");
    EXPECT_EQ(rig.global.Settings.IPAddress, before);
    EXPECT_EQ(rig.display.messages.size(), row.messages);
    EXPECT_EQ(SettingsText(), "");
    EXPECT_TRUE(rig.window->IsEnabled());
  }
}

TEST_F(ConnectionDialogs, SearchShowsTheReadMeAndGoesOn) {
  const fs::path guide = rig.temp.Write("ReadMe(English).txt", "guide");
  search.notifications = {kSearchReadMe, kSearchSelected};
  rig.Pick("menu_opt_setting");
  EXPECT_EQ(rig.texts_shown, std::vector<fs::path>{guide});
  EXPECT_EQ(rig.global.Settings.IPAddress, "10.0.0.9");
}

TEST_F(ConnectionDialogs, MainWindowStaysOpenAndDisabledWhileSearching) {
  search.notifications = {kSearchFinished, kSearchCancelled};
  bool seen = false;
  class During : public wxTimer {
   public:
    explicit During(std::function<void()> act) : act_(std::move(act)) { StartOnce(100); }
    void Notify() override { act_(); }

   private:
    std::function<void()> act_;
  } during([&] {
    seen = true;
    EXPECT_FALSE(rig.window->IsEnabled());
    EXPECT_FALSE(rig.window->Close());
    search.Raise(kSearchCancelled);
  });
  rig.Pick("menu_opt_setting");
  EXPECT_TRUE(seen);
  EXPECT_NE(rig.window, nullptr);
  EXPECT_TRUE(rig.window->IsEnabled());
}

}  // namespace
}  // namespace warpline
