#include <iostream>
#include <random>

#include "app/main_controller.h"
#include "app/recovery.h"
#include "files/wltfile.h"
#include "model/parameter_groups.h"
#include "tests/support/recorder.h"

// A tool without a window that works by itself until it is killed:
//   recovery_worker FOLDER HOUR
// What it does, and when it believes to do so, goes by the number of its hour. Every line of its
// output is something that has just become true; "stands" and "step" say what the work is then.
// scripts/kill-recovery reads it.

namespace warpline {
namespace {

namespace fs = std::filesystem;

class Worker : public MessageDisplay, public MainView {
 public:
  Worker(fs::path folder, unsigned hour)
      : folder_(std::move(folder)), random_(hour), now_(std::chrono::hours(400000 + hour)) {
    global_.Settings.DemoMode = 1;
    controller_.WatchSteps([this] {
      Say("step");
      copy_.NoteStep(global_.Correction, global_.CurrentFile, controller_.HasUnsavedChanges());
    });
  }

  void Run() {
    OfferUnsavedWork(global_, engine_.messages, controller_, copy_, folder_, now_);
    while (true) {
      Say("stands");
      if (Below(500) == 0 && End()) return;
      std::cout << "begin" << std::endl;
      Gesture();
      now_ += std::chrono::milliseconds(1000 + Below(2000));
      copy_.WriteIfDue(now_);
      copy_.Finish();
    }
  }

  std::size_t Show(const UserMessage& message) override {
    if (message.choices.size() == 3) return Below(3);  // about unsaved changes
    if (message.choices.size() == 1) {
      std::cout << "message " << message.text << std::endl;
      return 0;
    }
    const std::size_t answer = Below(8) == 0 ? 1 : 0;
    std::cout << (answer == 0 ? "take" : "refuse") << std::endl;
    return answer;
  }
  void ShowModel() override {}
  void ShowValues() override {}
  fs::path ChooseFileToOpen(const fs::path&) override {
    const fs::path file = SomeFile();
    return fs::exists(file) ? file : fs::path();
  }
  fs::path ChooseFileToSave(const fs::path&, const fs::path&) override { return SomeFile(); }
  void FileUsed(const fs::path&) override {}

 private:
  std::size_t Below(std::size_t end) { return random_() % end; }

  fs::path SomeFile() {
    return folder_ / (Below(2) == 0 ? "one.wlt" : "two\r\n[Warpline Tool Data File].wlt");
  }

  void Say(const char* word) {
    std::string line(word);
    line += controller_.HasUnsavedChanges() ? " U " : " S ";
    line += global_.CurrentFile.filename().string().substr(0, 3);
    std::vector<std::string> values;
    WltFile(global_.Correction).Write(values);
    for (const std::string& value : values) line.append("\t").append(value);
    std::cout << line << std::endl;
  }

  void MoveSomething() {
    controller_.SelectGroup(static_cast<int>(Below(kGroupCount)));
    const int slider = static_cast<int>(Below(2));
    const SliderSetup setup = SetUpSlider(global_.Correction, controller_.Group(), slider);
    const auto range = static_cast<std::size_t>(setup.high - setup.low + 1);
    controller_.MoveSlider(slider, setup.low + static_cast<int>(Below(range)));
    controller_.ReleaseSlider();
  }

  void Gesture() {
    const std::size_t kind = Below(40);
    const Axis axis = Below(2) == 0 ? kHorizontal : kVertical;
    if (kind == 0) controller_.SelectScreenType(static_cast<int>(Below(kScreenTypeCount)));
    if (kind == 1) controller_.Open();
    if (kind == 2) controller_.Save();
    if (kind == 3) controller_.SaveAs();
    if (kind == 4) controller_.Initialize();
    if (kind == 5) controller_.ToggleProjection(axis);
    if (kind == 6) controller_.SetSymmetry(axis, Below(2) == 0);
    if (kind == 7) {
      global_.Correction.Curves[axis].CorreDataPts[0].Y =
          (750000 + static_cast<double>(Below(250000))) / 1000000;
      controller_.CurveChanged();
    }
    if (kind > 7) MoveSomething();
  }

  bool End() {
    std::cout << "ending" << std::endl;
    if (!controller_.Close(0, 0)) return false;
    copy_.Remove();
    std::cout << "ended" << std::endl;
    return true;
  }

  const fs::path folder_;
  std::mt19937 random_;
  RecordingBusy busy_;
  Engine engine_{*this, busy_};
  LSSglobal& global_ = engine_.global;
  MainController controller_{engine_, *this, folder_};
  RecoveryCopy copy_{folder_};
  WallTime now_;
};

}  // namespace
}  // namespace warpline

int main(int, char** words) {
  warpline::Worker(words[1], static_cast<unsigned>(std::stoul(words[2]))).Run();
  return 0;
}
