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

TEST(BeamlinkLoader, EveryRequiredEntryIsAskedFor) {
  BeamlinkFunctions functions;
  EXPECT_TRUE(BindEntryPoints(AllBut(""), functions));
  for (const char* name :
       {"PJCommDevOpen", "PJCommDevClose", "PJCommDevSetAckTimeout", "PJGetRunningStatus",
        "PJAnyCommand", "PJGetStatus", "PJSetInput", "PJGetPcViewerInformation"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), functions)) << name;
  }
}

TEST(BeamlinkLoader, EntriesThatAreNeverCalledMayBeMissing) {
  for (const char* name :
       {"PJSetPower", "PJSetPictureMute", "PJSetSoundMute", "PJSetOsdMute", "PJSetGain",
        "PJGetGain", "PJGetHourMeter", "PJGetSourceInformation", "PJGetErrorStatus", "PJInitLogo",
        "PJSetLogo", "PJCommDevGetLastError", "PJCommDevCheckOpenStatus", "PJGetFunctionResult",
        "USBStart", "USBConnectPjGet", "USBConnectPjChangeCheck", "USBConnectPjUpdate"}) {
    BeamlinkFunctions functions;
    EXPECT_TRUE(BindEntryPoints(AllBut(name), functions)) << name;
  }
}

TEST(BeamlinkLoader, RefusesWhatIsNoLibrary) {
  const TempFolder folder;
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "nothing there";
  folder.Write(SharedLibrary::FileName(kBeamlinkName), "not a library");
  EXPECT_EQ(LoadBeamlink(folder.Path()), nullptr) << "a text file";
}

}  // namespace
}  // namespace warpline
