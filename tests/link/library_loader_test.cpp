#include "link/library_loader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "link/projector_link.h"
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

TEST(LibraryLoader, RequiresWhatIsCalledAndNothingElse) {
  BeamlinkFunctions link;
  EXPECT_TRUE(BindEntryPoints(AllBut("USBConnectPjUpdate"), link));
  for (const char* name :
       {"PJCommDevOpen", "PJCommDevClose", "PJCommDevSetAckTimeout", "PJGetRunningStatus",
        "PJAnyCommand", "PJGetStatus", "PJSetInput", "PJGetPcViewerInformation"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), link)) << name;
  }
  BeamseekFunctions search;
  EXPECT_TRUE(BindEntryPoints(AllBut("CS_GetPJList"), search));
  EXPECT_EQ(search.CS_GetPJList, nullptr);
  for (const char* name : {"ConnectSelectCreate", "ConnectSelectSetLastPJ", "ConnectSelectStart",
                           "ConnectSelectRestart", "ConnectSelectDestroy"}) {
    EXPECT_FALSE(BindEntryPoints(AllBut(name), search)) << name;
  }
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

TEST(LibraryLoader, KeepsWhatItLoaded) {
  const BeamlinkProvider provider = BeamlinkFromProgramFolder();
  const BeamlinkFunctions* const functions = provider();
  ASSERT_NE(functions, nullptr);
  EXPECT_EQ(provider(), functions);
}

}  // namespace
}  // namespace warpline
