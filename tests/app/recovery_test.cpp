#include "app/recovery.h"

#include "platform/environment.h"
#include "tests/app/controller_rig.h"

namespace warpline {
namespace {

using std::chrono::milliseconds;

const WallTime kNoon(std::chrono::seconds(1700000000));

struct RecoveryRig : ControllerRig {
  RecoveryRig() {
    fs::create_directories(folder);
    controller.WatchSteps([this] {
      copy.NoteStep(global.Correction, global.CurrentFile, controller.HasUnsavedChanges());
    });
  }

  void Step(std::int16_t distortion) {
    V().Distortion = distortion;
    controller.CurveChanged();
  }
  void Write(WallTime now) {
    copy.WriteIfDue(now);
    copy.Finish();
  }
  void Put(const std::string& name, const std::string& bytes) const {
    temp.Write((fs::relative(folder, temp.Path()) / name).string(), bytes);
  }
  void PutWork(const std::string& name, std::int16_t distortion, int second) const {
    UnsavedWork work{global.Correction, temp / "50%0D;.wlt", kNoon + std::chrono::seconds(second)};
    work.correction.Axes[kVertical].Distortion = distortion;
    Put(name, RecoveryText(work).value());
  }
  Texts Names() const {
    Texts names;
    for (const auto& entry : fs::directory_iterator(folder))
      names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
  }
  void Offer(std::deque<MessageAnswer> answers) {
    display.answers = std::move(answers);
    OfferUnsavedWork(global, messages, controller, copy, temp.Path(), kNoon);
  }

  const fs::path folder = DataFolder(temp.Path());
  const std::string own = "recovery-" + std::to_string(ProcessId());
  RecoveryCopy copy{temp.Path()};
};

TEST(Recovery, WritesOnceASecondAndNothingThatIsSaved) {
  RecoveryRig rig;
  EXPECT_FALSE(rig.copy.Due(kNoon));
  rig.Step(1);
  EXPECT_EQ(rig.copy.Due(kNoon), milliseconds(0));
  rig.Write(kNoon);
  EXPECT_EQ(rig.Names(), (Texts{rig.own + ".lock", rig.own + ".wlt"}));
  EXPECT_FALSE(rig.copy.Due(kNoon));
  const std::string first = TempFolder::Read(rig.folder / (rig.own + ".wlt"));
  rig.Step(2);
  EXPECT_EQ(rig.copy.Due(kNoon + milliseconds(300)), milliseconds(700));
  rig.Write(kNoon + milliseconds(999));
  EXPECT_EQ(TempFolder::Read(rig.folder / (rig.own + ".wlt")), first);
  EXPECT_EQ(rig.copy.Due(kNoon - milliseconds(1)), milliseconds(0)) << "the clock was put back";
  rig.Step(1);
  EXPECT_FALSE(rig.copy.Due(kNoon + milliseconds(1000))) << "stands already";
  rig.Offer({MessageAnswer::kYes});
  EXPECT_TRUE(rig.display.messages.empty()) << "the copy of a living process";
  rig.Step(0);
  EXPECT_EQ(rig.Names(), Texts());

  rig.Step(3);
  rig.Write(kNoon + milliseconds(1000));
  const fs::path copy = rig.folder / (rig.own + ".wlt");
  fs::remove(copy);
  fs::create_directory(copy);
  rig.Step(4);
  rig.Write(kNoon + milliseconds(2000));
  EXPECT_EQ(rig.copy.Due(kNoon + milliseconds(2000)), milliseconds(1000)) << "was not written";
  fs::remove(copy);
  rig.Write(kNoon + milliseconds(3000));
  EXPECT_EQ(WorkOf(TempFolder::Read(copy))->correction.Axes[kVertical].Distortion, 4);
}

TEST(Recovery, TakesUpTheNewestOnceAndKeepsItUntilSaved) {
  RecoveryRig rig;
  rig.PutWork(rig.own + ".wlt", 10, 1);  // another one's, under the same number
  rig.PutWork("recovery-7.wlt", 20, 3);
  rig.PutWork("recovery-8.wlt", 30, 2);
  rig.Put("recovery-8.lock", "");
  rig.Put("recovery-9.lock", "");
  rig.Offer({MessageAnswer::kNo, MessageAnswer::kYes});
  ASSERT_EQ(rig.display.messages.size(), 2U);
  EXPECT_NE(rig.display.messages[1].text.find("50%0D;.wlt"), std::string::npos);
  EXPECT_EQ(rig.V().Distortion, 30);
  EXPECT_TRUE(rig.controller.HasUnsavedChanges());
  EXPECT_EQ(rig.global.CurrentFile, rig.temp / "50%0D;.wlt");
  EXPECT_TRUE(rig.library.calls.empty());
  const Texts names = rig.Names();
  ASSERT_EQ(names.size(), 4U);
  EXPECT_TRUE(names[0].starts_with("recovered-20"));
  EXPECT_EQ(CorrectionOf(TempFolder::Read(rig.folder / names[0]))->Axes[kVertical].Distortion, 20);
  EXPECT_EQ(names[1], rig.own + "-2.lock");
  EXPECT_EQ(names[2], rig.own + "-2.wlt");
  EXPECT_EQ(names[3], rig.own + ".wlt") << "is asked about with the next start";
  EXPECT_TRUE(rig.controller.Save());
  EXPECT_EQ(rig.Names(), (Texts{names[0], names[3]}));
}

TEST(Recovery, AsksOnlyAboutWhatCanBeLost) {
  RecoveryRig rig;
  rig.PutWork("recovery-1.wlt", 5, 1);
  const std::string whole = TempFolder::Read(rig.folder / "recovery-1.wlt");
  rig.temp.Write("50%0D;.wlt", whole);
  std::string far = whole;
  far.replace(far.find("DistortionV=5"), 13, "DistortionV=99999");
  std::string number = whole;
  number.replace(number.find("Changed: 1"), 10, "Changed: -");
  const std::string broken[] = {"",
                                std::string(99, '\0'),
                                whole.substr(0, whole.size() / 2),
                                far,
                                number,
                                whole.substr(31),
                                "%" + whole};
  int count = 1;
  for (const std::string& bytes : broken) {
    rig.Put("recovery-" + std::to_string(++count) + ".wlt", bytes);
  }
  for (int day = 10; day < 20; ++day) {
    rig.Put("unreadable-2020-01-" + std::to_string(day) + "-000000.wlt", "");
  }
  rig.Put("unreadable-mine.wlt", "");
  fs::create_directory(rig.folder / "recovery-0.wlt");
  rig.Offer({});
  EXPECT_TRUE(rig.display.messages.empty());
  const Texts names = rig.Names();
  ASSERT_EQ(names.size(), 12U) << "a folder, a user's own file, and the last ten";
  EXPECT_EQ(names[0], "recovery-0.wlt");
  EXPECT_EQ(names[1], "unreadable-2020-01-17-000000.wlt");
}

}  // namespace
}  // namespace warpline
