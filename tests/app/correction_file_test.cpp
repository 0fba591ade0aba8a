#include "app/correction_file.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/catalogue.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

struct FileRig {
  FileRig() { ResetModel(global); }

  LSSglobal global;
  RecordingDisplay display;
  Messages messages{global, display};
  LSSfile file{global, messages};
  TempFolder folder;
};

TEST(CorrectionFile, WhatWasSavedComesBackWhole) {
  FileRig saved;
  saved.global.Correction.ScreenType = 2;
  saved.global.Correction.Projection = {0, 1};
  saved.global.Correction.Axes[kHorizontal].Distortion = -45;
  saved.global.Correction.Axes[kVertical].Optical = 12;
  saved.global.Correction.Curves[kVertical].CorreDataPts[1].Y = 0.875;
  const auto path = saved.folder / "saved.wlt";
  ASSERT_TRUE(SaveCorrection(saved.file, saved.global, saved.messages, path));
  EXPECT_EQ(saved.global.CurrentFile, path);

  FileRig opened;
  ASSERT_TRUE(OpenCorrection(opened.file, opened.global, opened.messages, path));
  EXPECT_EQ(opened.global.Correction, saved.global.Correction);
  EXPECT_EQ(opened.global.SecondCopy, saved.global.Correction.Axes);
  EXPECT_EQ(opened.global.CurrentFile, path);
  EXPECT_TRUE(opened.display.messages.empty());
}

struct BadFileCase {
  const char* name;
  const char* content;
  std::string (*box)(const LSSglobal& global);
};

TEST(CorrectionFile, BadFileLeavesEverythingUntouched) {
  constexpr BadFileCase kCases[] = {
      {"no header", "ScreenType=1\n", [](const LSSglobal& g) { return TextOf(g, 148); }},
      {"bad value", "[Warpline Tool Data File 3.0]\nScreenType=1\nStadiumH=2\n",
       [](const LSSglobal& g) { return TextOf(g, 197); }},
      {"digits beyond 32 bits",
       "[Warpline Tool Data File 3.0]\nScreenType=1\nLinearityH=2147483648\n",
       [](const LSSglobal& g) { return "[1] " + TextOf(g, 80); }},
  };
  for (const BadFileCase& each : kCases) {
    FileRig rig;
    rig.global.CurrentFile = "before.wlt";
    rig.global.Correction.Axes[kVertical].Amplitude = 9;
    const CorrectionData before = rig.global.Correction;
    const auto copy_before = rig.global.SecondCopy;
    const auto path = rig.folder.Write("bad.wlt", each.content);
    EXPECT_FALSE(OpenCorrection(rig.file, rig.global, rig.messages, path)) << each.name;
    EXPECT_EQ(rig.display.Texts(), std::vector{each.box(rig.global)}) << each.name;
    EXPECT_EQ(rig.global.Correction, before) << each.name;
    EXPECT_EQ(rig.global.SecondCopy, copy_before) << each.name;
    EXPECT_EQ(rig.global.CurrentFile, "before.wlt") << each.name;
  }
}

TEST(CorrectionFile, FailedSaveKeepsTheCurrentFile) {
  FileRig rig;
  rig.global.CurrentFile = "before.wlt";
  EXPECT_FALSE(SaveCorrection(rig.file, rig.global, rig.messages, rig.folder.Path()));
  EXPECT_EQ(rig.global.CurrentFile, "before.wlt");
  EXPECT_EQ(rig.display.messages.size(), 1u);
}

}  // namespace
}  // namespace warpline
