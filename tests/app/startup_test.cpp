#include "app/startup.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

struct StartupRig {
  std::filesystem::path Folder() const {
    return temp.Path() / "Varnok Beamkit" / "Warpline Tool 3.0";
  }
  std::filesystem::path File() const { return Folder() / "WarplineTool.ini"; }
  void WriteSettings(const std::string& text) const {
    std::filesystem::create_directories(Folder());
    temp.Write("Varnok Beamkit/Warpline Tool 3.0/WarplineTool.ini", text);
  }

  TempFolder temp;
  LSSglobal global;
  RecordingDisplay display;
  Messages messages{global, display};
  LSSfile files{global, messages};
};

TEST(Startup, MissingSettingsFileLeavesDefaultsAndTheFolder) {
  StartupRig rig;
  rig.global.Settings.IPAddress = "10.0.0.1";
  EXPECT_FALSE(ReadSettings(rig.global, rig.temp.Path()));
  EXPECT_FALSE(std::filesystem::exists(rig.Folder()));
  EXPECT_FALSE(LoadSettings(rig.global, rig.temp.Path(), 30, -40));
  EXPECT_TRUE(std::filesystem::is_directory(rig.Folder()));
  EXPECT_EQ(rig.global.Settings, DefaultSettings(30, -40));
  EXPECT_EQ(rig.global.Settings.IPAddress, "192.168.10.10");
}

TEST(Startup, SettingsFileIsReadOverTheDefaults) {
  StartupRig rig;
  rig.WriteSettings("[Warpline Tool 3.0]\r\nIPAddress=10.0.0.9\r\nDialogPosX=17\r\nComSpeed=4\r\n");
  EXPECT_TRUE(LoadSettings(rig.global, rig.temp.Path(), 30, 40));
  Settings expected = DefaultSettings(17, 40);
  expected.IPAddress = "10.0.0.9";
  expected.SectionFound = true;
  EXPECT_EQ(rig.global.Settings, expected);
}

TEST(Startup, UnreadableSettingsFileIsPassedOver) {
  StartupRig rig;
  std::filesystem::create_directories(rig.File());
  EXPECT_FALSE(LoadSettings(rig.global, rig.temp.Path(), 1, 2));
  EXPECT_EQ(rig.global.Settings, DefaultSettings(1, 2));
}

TEST(Startup, FolderThatCannotBeMadeIsPassedOver) {
  StartupRig rig;
  rig.temp.Write("Varnok Beamkit", "a file in the way");
  EXPECT_FALSE(LoadSettings(rig.global, rig.temp.Path(), 1, 2));
  EXPECT_FALSE(SaveSettings(rig.global, rig.files, rig.temp.Path(), 1, 2));
  EXPECT_EQ(rig.display.messages.size(), 1U);
}

TEST(Startup, SavedSettingsComeBackWithTheWindowPosition) {
  StartupRig rig;
  rig.global.Settings.AutoApplyMenu = 1;
  ASSERT_TRUE(SaveSettings(rig.global, rig.files, rig.temp.Path(), -5, 99));
  LSSglobal next;
  EXPECT_TRUE(LoadSettings(next, rig.temp.Path(), 0, 0));
  EXPECT_EQ(next.Settings.AutoApplyMenu, 1);
  EXPECT_EQ(next.Settings.DialogPosX, -5);
  EXPECT_EQ(next.Settings.DialogPosY, 99);
  EXPECT_TRUE(rig.display.messages.empty());
}

}  // namespace
}  // namespace warpline
