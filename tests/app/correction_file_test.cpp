#include "app/correction_file.h"

#include "tests/app/file_rig.h"

namespace warpline {
namespace {

TEST(CorrectionFile, WhatWasSavedComesBackWhole) {
  FileRig saved;
  CorrectionData& correction = saved.global.Correction;
  correction.ScreenType = 2;
  correction.Projection = {0, 1};
  correction.Axes[kHorizontal].Distortion = -45;
  correction.Axes[kVertical].Optical = 12;
  correction.Curves[kVertical].CorreDataPts[1].Y = 0.875;
  const auto path = saved.temp / "saved.wlt";
  ASSERT_TRUE(SaveCorrection(saved.files, saved.global, saved.messages, path));
  EXPECT_EQ(saved.global.CurrentFile, path);

  FileRig opened;
  ASSERT_TRUE(OpenCorrection(opened.files, opened.global, opened.messages, path));
  EXPECT_EQ(opened.global.Correction, correction);
  EXPECT_EQ(opened.global.SecondCopy, correction.Axes);
  EXPECT_EQ(opened.global.CurrentFile, path);
  EXPECT_TRUE(opened.display.messages.empty());
}

}  // namespace
}  // namespace warpline
