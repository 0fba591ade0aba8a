#include "link/library_loader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

// A library that exports everything but one name.
SymbolLookup AllBut(std::string_view missing) {
  return [missing](const char* name) -> void* {
    static int exported = 0;
    return name == missing ? nullptr : &exported;
  };
}

TEST(BeamlinkLoader, RequiresWhatIsCalledAndNothingElse) {
  BeamlinkFunctions functions;
  EXPECT_TRUE(BindEntryPoints(AllBut(""), functions));
  for (const char* name :
       {"PJCommDevOpen", "PJCommDevClose", "PJCommDevSetAckTimeout", "PJGetRunningStatus",
        "PJAnyCommand", "PJGetStatus", "PJSetInput", "PJGetPcViewerInformation"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), functions)) << name;
  }
  for (const char* name :
       {"PJSetPower", "PJSetPictureMute", "PJSetSoundMute", "PJSetOsdMute", "PJSetGain",
        "PJGetGain", "PJGetHourMeter", "PJGetSourceInformation", "PJGetErrorStatus", "PJInitLogo",
        "PJSetLogo", "PJCommDevGetLastError", "PJCommDevCheckOpenStatus", "PJGetFunctionResult",
        "USBStart", "USBConnectPjGet", "USBConnectPjChangeCheck", "USBConnectPjUpdate"}) {
    EXPECT_TRUE(BindEntryPoints(AllBut(name), functions)) << name;
  }
}

TEST(BeamseekLoader, RequiresWhatIsCalledAndNothingElse) {
  BeamseekFunctions functions;
  EXPECT_TRUE(BindEntryPoints(AllBut(""), functions));
  EXPECT_TRUE(BindEntryPoints(AllBut("CS_GetPJList"), functions));
  EXPECT_EQ(functions.CS_GetPJList, nullptr);
  EXPECT_FALSE(BindEntryPoints(AllBut("ConnectSelectRestart"), functions));
}

TEST(LibraryLoader, RefusesWhatIsNoLibrary) {
  const TempFolder folder;
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "nothing there";
  EXPECT_EQ(LoadBeamseek(folder.Path()), nullptr) << "nothing there";
  for (const char* name : {kBeamlinkName, kBeamseekName}) {
    folder.Write(SharedLibrary::FileName(name), "not a library");
  }
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "a text file";
  EXPECT_EQ(LoadBeamseek(folder.Path()), nullptr) << "a text file";
}

}  // namespace
}  // namespace warpline
