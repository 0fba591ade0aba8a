#include "app/startup.h"

#include <gtest/gtest.h>

#include "app/address_check.h"
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

TEST(IsValidProjectorAddress, TakesOnlyWhatAProjectorCanHave) {
  for (const char* text : {"192.168.10.10", "1.0.0.1", "223.255.255.254", "127.0.0.2",
                           "010.000.000.001", "00000000000000000000010.0.0.1"}) {
    EXPECT_TRUE(IsValidProjectorAddress(text)) << text;
  }
  const std::string refused[] = {
      "0.1.2.3", "224.0.0.1", "10.0.0.0", "10.0.0.255", "10.256.0.1", "10.0.256.1", "300.0.0.1",
      "127.0.0.1", "127.00.0.01",
      // Numbers that come back into range in 8, 32 or 64 bits.
      "10.0.0.257", "10.0.0.4294967297", "10.0.0.18446744073709551617",
      "99999999999999999999999999999999.0.0.1",
      // No four numbers.
      "", "...", "10", "10.0.0", "10.0.0.", ".0.0.1", "10..0.1", "10.0.0.1.5", "10.0.0.1.",
      "10.0.0.1 ", " 10.0.0.1", "10.0.0.-1", "10.0.+0.1", "10.0.0x1.1", "projector",
      std::string("10.0.0.1\0", 9),
      "\xef\xbc\x91\xef\xbc\x90.0.0.1",  // full-width digits
  };
  for (const std::string& text : refused) EXPECT_FALSE(IsValidProjectorAddress(text)) << text;
}

TEST(IsAddressCharacter, IsADigitOrADot) {
  std::string accepted;
  for (int c = -128; c < 128; ++c) {
    if (IsAddressCharacter(static_cast<char>(c))) accepted += static_cast<char>(c);
  }
  EXPECT_EQ(accepted, ".0123456789");
}

}  // namespace
}  // namespace warpline
