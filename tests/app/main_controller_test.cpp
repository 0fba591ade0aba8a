#include "tests/app/controller_rig.h"
#include "tests/support/curves.h"

namespace warpline {
namespace {

TEST(MainController, ReleasedKeysSendByKeyAndShift) {
  ControllerRig rig;
  // keys: 37 to 40: the arrows, 16: shift
  const std::tuple<std::vector<int>, bool, bool, bool> cases[] = {
      {{37, 38, 39, 40, 16}, false, true, true},
      {{17, 34, 36, 41, 9}, false, true, false},
      {{37, 39, 16}, true, true, false},  // another shift is still held
      {{37, 16}, false, false, false},
  };
  for (const auto& [keys, shift_alone, real_time, sends] : cases) {
    for (const int key : keys) {
      SCOPED_TRACE(testing::Message() << key << ", " << shift_alone << real_time);
      rig.global.Settings.AutoApply = real_time;
      rig.controller.MoveSlider(1, key);
      EXPECT_TRUE(rig.library.calls.empty());
      rig.controller.ReleaseKey(key, shift_alone);
      rig.ExpectApplied(sends);
    }
  }
}

TEST(MainController, SliderStoresAtOnceAndSendsWhenReleased) {
  ControllerRig rig;
  rig.controller.SelectGroup(3);
  rig.controller.MoveSlider(0, 64);
  EXPECT_EQ(rig.H().Amplitude, 64);
  EXPECT_EQ(rig.view.values_shown, 1);
  EXPECT_EQ(rig.global.SecondCopy[kHorizontal].Amplitude, 0);
  EXPECT_TRUE(rig.library.calls.empty());
  rig.controller.ReleaseSlider();
  rig.ExpectApplied(true);
  EXPECT_EQ(rig.global.SecondCopy[kHorizontal].Amplitude, 64);
  rig.global.Settings.AutoApply = 0;
  rig.controller.ReleaseSlider();
  rig.ExpectApplied(false);

  // A value beyond the slider stays until it moves.
  rig.controller.SelectGroup(0);
  rig.V().Distortion = 200;
  rig.controller.MoveSlider(1, 150);
  EXPECT_EQ(rig.V().Distortion, 200);
  rig.controller.MoveSlider(1, 149);
  EXPECT_EQ(rig.V().Distortion, 149);
}

TEST(MainController, IconOfTheOpticalRowAloneResets) {
  ControllerRig rig;
  // optical_h, optical_v: afterwards; 5 before
  const std::tuple<const char*, int, int, std::int16_t, std::int16_t, int, int> cases[] = {
      {"vertical", 0, 0, 0, 0, 5, -32},
      {"vertical, downward", 0, 0, 0, 1, 5, 32},
      {"vertical distortion", 0, 1, 0, 0, 5, 5},
      {"horizontal", 1, 3, 0, 0, -32, 5},
      {"horizontal, to the right", 1, 2, 1, 0, 32, 5},
      {"horizontal distortion", 1, 2, 0, 0, 5, 5},
      {"horizontal distortion, to the right", 1, 3, 1, 0, 5, 5},
      {"linearity", 2, 4, 0, 0, 5, 5},
      {"position", 4, 9, 0, 0, 5, 5},
      {"button of another group", 2, 0, 0, 0, 5, 5},
      {"right button, of another group", 1, 1, 0, 0, 5, 5},
  };
  for (const auto& [name, group, button, flag_h, flag_v, optical_h, optical_v] : cases) {
    SCOPED_TRACE(name);
    rig.global.Correction.Projection = {flag_h, flag_v};
    rig.H().Optical = rig.V().Optical = 5;
    rig.H().Distortion = rig.V().Distortion = 10;
    rig.controller.SelectGroup(group);
    rig.controller.PressIcon(button);
    EXPECT_EQ(rig.H().Optical, optical_h);
    EXPECT_EQ(rig.V().Optical, optical_v);
    rig.ExpectApplied(optical_h != 5 || optical_v != 5);
  }
  rig.global.Settings.AutoApply = 0;
  rig.controller.SelectGroup(0);
  rig.controller.PressIcon(0);
  rig.ExpectApplied(false);
}

TEST(MainController, SymmetryBoxSendsAndLeavesOptical) {
  ControllerRig rig;
  rig.H().Optical = rig.V().Optical = 5;
  rig.controller.SelectGroup(2);
  rig.controller.SetSymmetry(kHorizontal, true);
  EXPECT_EQ(rig.H().Stadium, 1);
  EXPECT_EQ(rig.V().Stadium, 0);
  EXPECT_EQ(rig.H().Optical, 5);
  EXPECT_EQ(rig.V().Optical, 5);
  const Texts frames = rig.Frames();
  ASSERT_EQ(frames.size(), 8U);
  EXPECT_EQ(frames[5], "01DF0000051000010001F7");
  EXPECT_EQ(frames[6], "01DF0000051100010000F7");
  rig.global.Settings.AutoApply = 0;
  rig.controller.SetSymmetry(kHorizontal, false);
  EXPECT_EQ(rig.H().Stadium, 0);
  rig.ExpectApplied(false);
}

TEST(MainController, ScreenTypeStartsAfreshAndClearsTheProjector) {
  ControllerRig rig;
  rig.global.Correction.Projection = {1, 0};
  rig.global.CurrentFile = rig.temp / "old.wlt";
  rig.H().Distortion = 40;
  rig.display.answers = {MessageAnswer::kNo};
  rig.controller.SelectScreenType(4);
  CorrectionData fresh;
  fresh.ScreenType = 4;
  fresh.Projection = {1, 0};
  ResetToScreenType(fresh);
  EXPECT_EQ(rig.global.Correction, fresh);
  EXPECT_EQ(rig.global.SecondCopy, fresh.Axes);
  EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0");
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  EXPECT_EQ(rig.Frames(), kInitializeFrames);

  rig.V().Distortion = 7;
  rig.controller.SelectScreenType(4);  // chosen already, and the question is cancelled
  EXPECT_EQ(rig.V().Distortion, 7);
  EXPECT_EQ(rig.display.messages.size(), 2U);
  rig.display.answers = {MessageAnswer::kNo};
  rig.controller.SelectScreenType(-1);
  EXPECT_EQ(rig.global.Correction.ScreenType, 4);
  EXPECT_TRUE(rig.library.calls.empty());
}

TEST(MainController, ProjectionToggleResetsAndAlwaysSends) {
  ControllerRig rig;
  rig.global.Settings.AutoApply = 0;
  rig.H().Distortion = 40;
  rig.H().Amplitude = 3;
  rig.library.results[0] = kOpenConnect;
  int second_copy = 0;  // when sending begins: it follows the toggle itself
  rig.busy.on_begin = [&] { second_copy = rig.global.SecondCopy[kHorizontal].Optical; };
  rig.controller.ToggleProjection(kHorizontal);
  EXPECT_EQ(rig.global.Correction.Projection[kHorizontal], 1);
  EXPECT_EQ(rig.H().Distortion, 0);
  EXPECT_EQ(rig.H().Optical, 32);
  EXPECT_EQ(second_copy, 32);
  EXPECT_EQ(rig.H().Amplitude, 3);
  EXPECT_EQ(rig.V().Optical, -32);
  EXPECT_EQ(rig.display.messages.size(), 1U);

  rig.library.results.clear();
  rig.library.calls.clear();
  for (const int optical : {32, -32}) {
    rig.controller.ToggleProjection(kVertical);
    EXPECT_EQ(rig.V().Optical, optical);
    rig.ExpectApplied(true);
  }
}

TEST(MainController, CommandInsideACommandDoesNothing) {
  ControllerRig rig;
  rig.V().Distortion = 40;
  rig.busy.on_begin = [&rig] {
    if (rig.busy.depth == 1) rig.controller.Initialize();
  };
  rig.controller.Apply();
  EXPECT_EQ(rig.V().Distortion, 40);
  rig.ExpectApplied(true);
  rig.controller.Initialize();
  EXPECT_EQ(rig.Frames(), kInitializeFrames);
}

TEST(MainController, CurveThatChangedIsShownAndSentInRealTime) {
  for (const bool real_time : {false, true}) {
    ControllerRig rig;
    rig.global.Settings.AutoApply = real_time ? 1 : 0;
    rig.global.Correction.Curves[kVertical].CorreDataPts[1].Y = 0.9;
    rig.controller.CurveChanged();
    EXPECT_GE(rig.view.models_shown, 1);
    rig.ExpectApplied(real_time);
  }
}

TEST(MainController, PreviewMarksDeviationsAndReportsFaults) {
  ControllerRig rig;
  EXPECT_EQ(rig.controller.Preview().size(), 13U);
  EXPECT_EQ(rig.controller.Status().detail, "");
  rig.H() = rig.V() = Parameters(150, -13);
  rig.V().Distortion = 0;
  EXPECT_EQ(rig.controller.Preview().size(), 14U) << "with an area";
  rig.global.Panel = {1280, 800};
  EXPECT_EQ(rig.controller.Status().detail,
            "The projector cannot follow the horizontal correction between rows 0 and 799: up to "
            "1280 pixels off.");
  rig.global.Correction.Curves[kHorizontal].CorreDataPts[1].X = 0;
  EXPECT_FALSE(rig.controller.Deviation());
  EXPECT_TRUE(rig.controller.Preview().empty());
  EXPECT_EQ(rig.display.Texts(), Texts{"[3] Wrong value."});
}

TEST(MainController, SaveQuestionInItsThreePlaces) {
  using Answers = std::deque<MessageAnswer>;
  const Answers yes{MessageAnswer::kYes};
  const std::tuple<std::string, bool, bool, Answers, std::deque<const char*>> cases[] = {
      {"nothing changed", false, true, {}, {}},
      {"yes, saved", true, true, yes, {"a.wlt"}},
      {"yes, dialog cancelled", true, false, yes, {}},
      {"yes, not written", true, false, yes, {"no such folder/a.wlt"}},
      {"yes, but only the registers", true, false, yes, {"a.wlr"}},
      {"no", true, true, {MessageAnswer::kNo}, {}},
      {"cancel", true, false, {MessageAnswer::kCancel}, {}},
  };
  const auto select = [](ControllerRig& rig) {
    rig.controller.SelectScreenType(2);
    return rig.global.Correction.ScreenType == 2;
  };
  const auto open = [](ControllerRig& rig) {
    rig.view.opens.push_back(rig.temp / "sphere.wlt");
    rig.controller.Open();
    return rig.global.CurrentFile == rig.temp / "sphere.wlt";
  };
  const auto close = [](ControllerRig& rig) { return rig.controller.Close(3, 4); };
  const std::pair<std::string, bool (*)(ControllerRig&)> places[] = {
      {"screen type", select}, {"open", open}, {"close", close}};
  for (const auto& [place, run] : places) {
    for (const auto& [name, changed, goes_on, answers, saves] : cases) {
      SCOPED_TRACE(place + ": " + name);
      ControllerRig rig;
      rig.WriteSphere();
      if (changed) rig.controller.MoveSlider(1, 40);
      const CorrectionData before = rig.global.Correction;
      rig.display.answers = answers;
      for (const char* save : saves) rig.view.saves.push_back(rig.temp / save);
      EXPECT_EQ(run(rig), goes_on);
      EXPECT_EQ(rig.display.answers.size(), 0U);
      const bool dropped = place == "close" && name == "no";
      EXPECT_EQ(rig.controller.HasUnsavedChanges(), !goes_on || dropped);
      EXPECT_EQ(rig.busy.depth, 0);
      if (goes_on) continue;
      EXPECT_EQ(rig.display.messages.at(0).text, "Do you want to save the change?");
      EXPECT_EQ(rig.global.Correction, before);
      EXPECT_TRUE(rig.library.calls.empty());
      EXPECT_FALSE(fs::exists(rig.SettingsFile()));
    }
  }
}

TEST(MainController, OpenedCorrectionIsCurrentAndSent) {
  ControllerRig rig;
  rig.global.Settings.AutoApply = 0;
  rig.view.opens.push_back(rig.WriteSphere());
  rig.controller.Open();
  EXPECT_EQ(rig.global.Correction.ScreenType, 2);
  EXPECT_EQ(rig.H().Distortion, 25);
  EXPECT_EQ(rig.global.SecondCopy[kHorizontal].Distortion, 25);
  EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0 - sphere.wlt");
  EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  rig.ExpectApplied(true);
  EXPECT_EQ(rig.busy.depth, 0);

  rig.controller.Open();  // cancelled
  EXPECT_EQ(rig.view.folders.at(0), DataFolder(rig.temp.Path()));
  EXPECT_TRUE(fs::is_directory(DataFolder(rig.temp.Path())));
  EXPECT_EQ(rig.view.folders.at(1), rig.temp.Path());
  EXPECT_TRUE(rig.library.calls.empty());
}

TEST(MainController, RefusedFileChangesNothing) {
  const std::string data = "[Warpline Tool Data File 3.0]\r\n";
  const std::tuple<const char*, const char*, std::string, std::string> cases[] = {
      {"no header", "a.txt", "ScreenType=3\r\n", "The file format is corrupted."},
      {"digits that do not fit", "a.wlt", data + "ScreenType=99999", "[1] Wrong value."},
      {"registers without header", "a.WLR", "h_scroll=0000", "The file format is corrupted."},
  };
  for (const auto& [name, file, text, message] : cases) {
    SCOPED_TRACE(name);
    ControllerRig rig;
    rig.global.CurrentFile = rig.temp / "mine.wlt";
    rig.V().Distortion = 40;
    const CorrectionData before = rig.global.Correction;
    rig.controller.OpenFile(rig.temp.Write(file, text));
    EXPECT_EQ(rig.global.Correction, before);
    EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0 - *mine.wlt");
    EXPECT_TRUE(rig.controller.HasUnsavedChanges());
    EXPECT_EQ(rig.display.Texts(), Texts{message});
    EXPECT_TRUE(rig.library.calls.empty());
    EXPECT_EQ(rig.busy.depth, 0);
  }
}

TEST(MainController, NothingOfTheUsersOrOfOthersIsLostUnasked) {
  // what others wrote into the open file, the answer to the question about it, what is saved then
  const std::tuple<std::string, int, std::string> cases[] = {{"", 2, "sphere.wlt"},
                                                             {"theirs", 0, "sphere.wlt"},
                                                             {"theirs", 1, "b.wlt"},
                                                             {"theirs", 2, ""}};
  for (const auto& [theirs, answer, saved] : cases) {
    SCOPED_TRACE(theirs + " " + saved);
    ControllerRig rig;
    const fs::path sphere = rig.WriteSphere();
    EXPECT_TRUE(rig.controller.OpenNamed(sphere));
    rig.V().Distortion = 40;
    EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0 - *sphere.wlt");
    EXPECT_TRUE(rig.controller.OpenNamed(sphere));  // cancelled
    if (!theirs.empty()) rig.temp.Write("sphere.wlt", theirs);
    rig.display.answers = {static_cast<MessageAnswer>(answer)};
    rig.view.saves = {rig.temp / "b.wlt"};
    EXPECT_EQ(rig.controller.Save(), !saved.empty());
    EXPECT_EQ(TempFolder::Read(sphere) == theirs, saved != "sphere.wlt");
    EXPECT_TRUE(saved.empty() || rig.controller.Save()) << "its own content is known";
    EXPECT_EQ(rig.display.messages.size(), theirs.empty() ? 1U : 2U);
  }
}

TEST(MainController, RegisterFileIsSentAndLeavesTheModel) {
  ControllerRig rig;
  rig.V().Distortion = 40;
  rig.controller.Apply();
  const Texts applied = rig.Frames();
  rig.view.saves.push_back(rig.temp / "set.WlR");
  EXPECT_TRUE(rig.controller.SaveAs());
  EXPECT_TRUE(rig.global.CurrentFile.empty());
  EXPECT_TRUE(rig.controller.HasUnsavedChanges());

  rig.V().Distortion = 0;
  rig.global.Registers = {};
  const CorrectionData before = rig.global.Correction;
  rig.controller.OpenFile(rig.temp / "set.WlR");
  EXPECT_EQ(rig.Frames(), applied);
  EXPECT_EQ(rig.global.Correction, before);
  EXPECT_TRUE(rig.global.CurrentFile.empty());
  EXPECT_TRUE(rig.display.messages.empty());
}

TEST(MainController, SaveNamesTheCurrentFile) {
  // current: afterwards; empty: not saved
  const std::tuple<const char*, Texts, std::string> cases[] = {
      {"as it is", {"b.wlt"}, "b.wlt"},
      {"another extension", {"b.txt"}, "b.txt"},
      {"completed", {"b"}, "b.wlt"},
      {"completed behind the point", {"b."}, "b.wlt"},
      {"completed behind a dot in the name", {"my.screen.v2"}, "my.screen.v2.wlt"},
      {"extension doubled by the dialog", {"b.wlt.wlt"}, "b.wlt"},
      {"doubled each time, the name is taken", {"taken.wlt.wlt", "taken.wlt.wlt"}, "taken.wlt"},
      {"completed name is taken and replaced", {"taken", "taken.wlt"}, "taken.wlt"},
      {"completed name is taken and given up", {"taken"}, ""},
      {"cancelled", {}, ""},
  };
  for (const auto& [name, choices, current] : cases) {
    SCOPED_TRACE(name);
    ControllerRig rig;
    rig.temp.Write("taken.wlt", "old");
    rig.V().Distortion = 40;
    for (const std::string& choice : choices) rig.view.saves.push_back(rig.temp / choice);
    const bool saved = !current.empty();
    EXPECT_EQ(rig.controller.Save(), saved);
    EXPECT_EQ(rig.controller.HasUnsavedChanges(), !saved);
    EXPECT_EQ(rig.global.CurrentFile, saved ? rig.temp / current : fs::path());
    EXPECT_EQ(TempFolder::Read(rig.temp / "taken.wlt") == "old", current != "taken.wlt");
    if (!saved) continue;
    LSSfile reader(rig.messages);
    ASSERT_TRUE(reader.OpenDataFile(rig.temp / current, kTypeWlt));
    EXPECT_EQ(reader.Staging().Correction, rig.global.Correction);

    rig.V().Distortion = 41;  // the second time nothing is asked
    EXPECT_TRUE(rig.controller.Save());
    EXPECT_EQ(rig.view.folders.size(), choices.size());
    EXPECT_FALSE(rig.controller.HasUnsavedChanges());
  }
}

TEST(MainController, RegisterFileStaysOneBehindTheDialogsExtension) {
  ControllerRig rig;
  rig.controller.Apply();
  rig.view.saves.push_back(rig.temp / "out1.WLR.wlt");
  EXPECT_TRUE(rig.controller.SaveAs());
  EXPECT_TRUE(fs::exists(rig.temp / "out1.WLR"));
  EXPECT_FALSE(fs::exists(rig.temp / "out1.WLR.wlt"));
}

TEST(MainController, SaveThatFailsOrIsGivenUpKeepsTheCurrentFile) {
  ControllerRig rig;
  rig.temp.Write("taken.wlt", "old");
  rig.global.CurrentFile = rig.temp / "mine.wlt";
  rig.V().Distortion = 40;
  rig.view.saves.push_back(rig.temp / "taken");
  EXPECT_FALSE(rig.controller.SaveAs());
  EXPECT_EQ(rig.view.offered,
            (std::vector<fs::path>{rig.temp / "mine.wlt", rig.temp / "taken.wlt"}));
  EXPECT_TRUE(rig.display.messages.empty());
  rig.view.saves.push_back(rig.temp / "none" / "b.wlt");
  EXPECT_FALSE(rig.controller.SaveAs());
  EXPECT_EQ(rig.display.messages.size(), 1U);
  EXPECT_EQ(rig.global.CurrentFile, rig.temp / "mine.wlt");
  EXPECT_TRUE(rig.controller.HasUnsavedChanges());
}

TEST(MainController, SettingsOfTheWindowAreKeptWhenItCloses) {
  ControllerRig rig;
  EXPECT_FALSE(rig.controller.ApplyEnabled());
  EXPECT_TRUE(rig.controller.RealTime());
  rig.global.Settings.AutoApplyMenu = 1;
  EXPECT_TRUE(rig.controller.RealTimeMenuEnabled());
  rig.controller.SetRealTime(false);
  rig.controller.SetCommunicationMode(1);
  const std::string at_once = TempFolder::Read(rig.SettingsFile());
  for (const char* line : {"AutoApply=0\r\n", "CommunicationMode=1\r\n"}) {
    EXPECT_NE(at_once.find(line), std::string::npos) << line;
  }
  rig.controller.SetTestPattern(false);
  EXPECT_EQ(rig.view.models_shown, 3);
  EXPECT_TRUE(rig.controller.Close(-7, 21));
  const std::string text = TempFolder::Read(rig.SettingsFile());
  for (const char* line : {"AutoApply=0", "AutoApplyMenu=1", "TestPattern=0", "DialogPosX=-7",
                           "DialogPosY=21", "CommunicationMode=1"}) {
    EXPECT_NE(text.find(std::string(line) + "\r\n"), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace warpline
