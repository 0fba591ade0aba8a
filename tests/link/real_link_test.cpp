#include <gtest/gtest.h>

#include "link/library_loader.h"
#include "model/registers.h"
#include "tests/support/engine_rig.h"
#include "tests/support/projector_server.h"

// The link through the stand-in library, as the tool loads it, over TCP to the simulated projector.

namespace warpline {
namespace {

struct RealRig : EngineRig {
  explicit RealRig(const sim::ProjectorSetup& setup = {}, const Texts& faults = {})
      : EngineRig(BeamlinkFromProgramFolder()), projector(setup, faults) {
    global.Settings.IPAddress = projector.Address();
    global.Settings.LANPort = projector.Port();
    global.Settings.LANTimeOut = 500;
  }

  ProjectorServer projector;
};

TEST(RealLink, RegistersArriveAndAreStoredByEveryModelClassThatKeeps) {
  for (const auto& [model_class, reply5] : {std::pair(3, 0), {4, 11}, {4, 0}, {5, 0}}) {
    SCOPED_TRACE(model_class);
    RealRig rig({.Panel = {800, 600}, .ModelClass = model_class, .Reply5 = reply5});
    ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
    EXPECT_EQ(rig.link.CheckConnection(), (PanelSize{800, 600}));
    rig.global.Correction.Axes[kHorizontal].Distortion = 30;
    rig.global.Correction.Axes[kVertical].Linearity = -12;
    const RegisterSet registers = BuildRegisters(rig.global.Correction, {800, 600});
    for (const int number : {20, 0, 2, 3, 16, 17, 1, 21}) {
      EXPECT_TRUE(rig.link.SendCommand(number, registers, 0));
    }
    EXPECT_EQ(rig.projector.Snapshot().Working, registers);
    EXPECT_TRUE(rig.link.CloseLink());
    EXPECT_EQ(rig.projector.Snapshot().Stored, registers);
    EXPECT_EQ(rig.projector.Snapshot().Count.Stores, 1u);
    EXPECT_TRUE(rig.display.messages.empty());
  }
}

TEST(RealLink, FaultsOfTheLineAreSaidOnceAndEnd) {
  constexpr struct {
    const char* rule;
    int number, code;  // of the box, 0: the command succeeds
  } kCases[] = {{"kind=0:timeout", 139, -3},  {"kind=0:refuse", 142, 2},
                {"kind=0:short", 141, -5},    {"kind=0:long", 141, -5},
                {"kind=0:checksum", 141, -5}, {"kind=0:late=50", 0, 0},
                {"kind=0:slow", 0, 0},        {"kind=0:cutmid", 141, -5},
                {"kind=any:cutmid", 141, -5}, {"kind=running:timeout", 139, -3}};
  for (const auto& [rule, number, code] : kCases) {
    SCOPED_TRACE(rule);
    RealRig rig({}, {rule});
    ASSERT_TRUE(rig.link.OpenLink(rig.global.Settings));
    EXPECT_EQ(rig.link.SendCommand(kCommandClear, {}, 0), number == 0);
    EXPECT_TRUE(rig.link.CloseLink());
    EXPECT_EQ(rig.display.Texts(), number == 0 ? Texts{} : Texts{rig.ErrorText(number, code)});
  }
}

}  // namespace
}  // namespace warpline
