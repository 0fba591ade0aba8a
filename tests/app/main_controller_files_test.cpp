#include "tests/app/controller_rig.h"

namespace warpline {
namespace {

TEST(MainController, SaveQuestionInItsThreePlaces) {
  using Answers = std::deque<MessageAnswer>;
  const Answers yes{MessageAnswer::kYes};
  const struct {
    std::string name;
    bool changed, goes_on;
    Answers answers;
    std::deque<const char*> saves;  // chosen in the save dialog, which is cancelled afterwards
  } cases[] = {
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
    for (const auto& row : cases) {
      SCOPED_TRACE(place + ": " + row.name);
      ControllerRig rig;
      rig.WriteSphere();
      if (row.changed) rig.controller.MoveSlider(1, 40);
      const CorrectionData before = rig.global.Correction;
      rig.display.answers = row.answers;
      for (const char* save : row.saves) rig.view.saves.push_back(rig.temp / save);
      EXPECT_EQ(run(rig), row.goes_on);
      EXPECT_EQ(rig.display.answers.size(), 0U);
      const bool dropped = place == "close" && row.name == "no";
      EXPECT_EQ(rig.controller.HasUnsavedChanges(), !row.goes_on || dropped);
      EXPECT_EQ(rig.busy.depth, 0);
      if (row.goes_on) continue;
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
  const struct {
    const char *name, *file;
    std::string text, message;
  } cases[] = {
      {"no header", "a.txt", "ScreenType=3\r\n", "The file format is corrupted."},
      {"digits that do not fit", "a.wlt", data + "ScreenType=99999", "[1] Wrong value."},
      {"registers without header", "a.WLR", "h_scroll=0000", "The file format is corrupted."},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    ControllerRig rig;
    rig.global.CurrentFile = rig.temp / "mine.wlt";
    rig.V().Distortion = 40;
    const CorrectionData before = rig.global.Correction;
    rig.controller.OpenFile(rig.temp.Write(row.file, row.text));
    EXPECT_EQ(rig.global.Correction, before);
    EXPECT_EQ(rig.controller.Caption(), "Warpline Tool 3.0 - mine.wlt");
    EXPECT_TRUE(rig.controller.HasUnsavedChanges());
    EXPECT_EQ(rig.display.Texts(), Texts{row.message});
    EXPECT_TRUE(rig.library.calls.empty());
    EXPECT_EQ(rig.busy.depth, 0);
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
  const struct {
    const char* name;
    Texts choices;
    std::string current;  // afterwards; empty: not saved
  } cases[] = {
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
  for (const auto& row : cases) {
    SCOPED_TRACE(row.name);
    ControllerRig rig;
    rig.temp.Write("taken.wlt", "old");
    rig.V().Distortion = 40;
    for (const std::string& choice : row.choices) rig.view.saves.push_back(rig.temp / choice);
    const bool saved = !row.current.empty();
    EXPECT_EQ(rig.controller.Save(), saved);
    EXPECT_EQ(rig.controller.HasUnsavedChanges(), !saved);
    EXPECT_EQ(rig.global.CurrentFile, saved ? rig.temp / row.current : fs::path());
    EXPECT_EQ(TempFolder::Read(rig.temp / "taken.wlt") == "old", row.current != "taken.wlt");
    if (!saved) continue;
    LSSfile reader(rig.messages);
    ASSERT_TRUE(reader.OpenDataFile(rig.temp / row.current, kTypeWlt));
    EXPECT_EQ(reader.Staging().Correction, rig.global.Correction);

    rig.V().Distortion = 41;  // the second time nothing is asked
    EXPECT_TRUE(rig.controller.Save());
    EXPECT_EQ(rig.view.folders.size(), row.choices.size());
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
