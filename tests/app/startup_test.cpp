#include "app/startup.h"

#include <gtest/gtest.h>

#include "tests/support/engine_rig.h"

namespace warpline {
namespace {

namespace fs = std::filesystem;

struct StartupRig : EngineRig {
  bool Load() { return LoadSettings(global, temp.Path(), 30, -40); }

  const fs::path folder = temp.Path() / "Varnok Beamkit" / "Warpline Tool 3.0";
  const fs::path file = folder / "WarplineTool.ini";
};

TEST(Startup, MissingSettingsFileLeavesDefaultsAndTheFolder) {
  StartupRig rig;
  rig.global.Settings.IPAddress = "10.0.0.1";
  EXPECT_FALSE(ReadSettings(rig.global, rig.temp.Path()));
  EXPECT_FALSE(fs::exists(rig.folder));
  EXPECT_FALSE(rig.Load());
  EXPECT_TRUE(fs::is_directory(rig.folder));
  EXPECT_EQ(rig.global.Settings, DefaultSettings(30, -40));
  EXPECT_EQ(rig.global.Settings.IPAddress, "192.168.10.10");
}

TEST(Startup, SettingsFileIsReadOverTheDefaults) {
  StartupRig rig;
  fs::create_directories(rig.folder);
  rig.temp.Write("Varnok Beamkit/Warpline Tool 3.0/WarplineTool.ini",
                 "[Warpline Tool 3.0]\r\nIPAddress=10.0.0.9\r\nDialogPosX=17\r\nComSpeed=4\r\n");
  EXPECT_TRUE(rig.Load());
  Settings expected = DefaultSettings(17, -40);
  expected.IPAddress = "10.0.0.9";
  expected.SectionFound = true;
  EXPECT_EQ(rig.global.Settings, expected);
}

TEST(Startup, FilesAndFoldersInTheWayArePassedOver) {
  StartupRig unreadable;
  fs::create_directories(unreadable.file);
  EXPECT_FALSE(unreadable.Load());
  EXPECT_EQ(unreadable.global.Settings, DefaultSettings(30, -40));
  StartupRig device;
  fs::create_directories(device.folder);
  std::error_code ignored;  // without links or this device no file is there
  fs::create_symlink("/dev/null", device.file, ignored);
  EXPECT_FALSE(device.Load());
  StartupRig no_folder;
  no_folder.temp.Write("Varnok Beamkit", "a file");
  EXPECT_FALSE(no_folder.Load());
  EXPECT_FALSE(SaveSettings(no_folder.global, no_folder.messages, no_folder.temp.Path(), 1, 2));
  ASSERT_EQ(no_folder.display.messages.size(), 1U);
  EXPECT_EQ(no_folder.display.messages[0].text,
            "Failed saving the ini file.\n" + no_folder.file.string());
}

}  // namespace
}  // namespace warpline
