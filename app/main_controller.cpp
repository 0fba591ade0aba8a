#include "app/main_controller.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "app/correction_file.h"
#include "app/deviation_report.h"
#include "app/fault_report.h"
#include "app/plain_caption.h"
#include "app/save_name.h"
#include "app/startup.h"
#include "core/catalogue.h"
#include "core/tool_texts.h"
#include "model/parameter_groups.h"
#include "model/registers.h"
#include "platform/files.h"

namespace warpline {
namespace {

constexpr int kIconButtonsPerGroup = kSliderCount;

// Gestures that may make several steps one; the sliders have those from 1 on.
constexpr int kCurveGesture = -1;

}  // namespace

MainController::MainController(Engine& engine, MainView& view,
                               std::filesystem::path application_data, Clock clock)
    : engine_(engine),
      global_(engine.global),
      files_(engine.files),
      commands_(engine.commands),
      messages_(engine.messages),
      busy_(engine.busy),
      view_(view),
      application_data_(std::move(application_data)),
      clock_(std::move(clock)),
      history_(engine.global.Correction) {
  TakeSnapshot();
}

std::string MainController::Caption() const {
  std::string caption = TextOf(global_, kMsgTitle);
  if (global_.Settings.DemoMode == 1) {
    caption += " (Debug)";
  } else if (engine_.link.ReachesSimulatorsOnly()) {
    caption += " " + TextOf(global_, ToolText::kSimulator);
  }
  if (global_.CurrentFile.empty()) return caption;
  return caption + (HasUnsavedChanges() ? " - *" : " - ") + Utf8Of(global_.CurrentFile.filename());
}

void MainController::SelectGroup(int group) {
  group_ = std::clamp(group, 0, kGroupCount - 1);
  view_.ShowModel();
}

PreviewDrawing MainController::Preview() const {
  PreviewDrawing drawing;
  ReportingFaults(messages_, [&] {
    drawing = Redraw(global_.Correction, global_.SecondCopy);
    return true;
  });
  const std::optional<warpline::Deviation> deviation = Deviation();
  if (drawing.empty() || !deviation) return drawing;
  return Over(DrawDeviation(*deviation, global_.Panel), drawing);
}

std::optional<warpline::Deviation> MainController::Deviation() const {
  return FindDeviation(global_.Correction, global_.Panel);
}

void MainController::SelectScreenType(int type) {
  const bool exists = type >= 0 && type < kScreenTypeCount;
  if (!exists || ConfirmSaveChanges() == SaveAnswer::kAbort) {
    view_.ShowModel();
    return;
  }
  SavedDocument left{global_.CurrentFile, snapshot_, known_content_};
  global_.Correction.ScreenType = static_cast<std::int16_t>(type);
  ResetToScreenType(global_.Correction);
  global_.SecondCopy = global_.Correction.Axes;
  TakeSnapshot();
  global_.CurrentFile.clear();
  const int caption = kScreenTypes.at(static_cast<std::size_t>(type)).caption;
  history_.Note(global_.Correction, {PlainCaption(global_, caption), -1, std::move(left)}, 0,
                clock_());
  view_.ShowModel();
  StepDone();
  RunCommand([this] { commands_.Initialize(); });
}

void MainController::MoveSlider(int slider, int value) {
  if (SetUpSlider(global_.Correction, group_, slider).value == value) return;
  warpline::MoveSlider(global_.Correction, group_, slider, value);
  NoteSlider(slider, 1 + group_ * kSliderCount + slider);
  view_.ShowValues();
}

void MainController::ReleaseSlider() {
  history_.EndGesture();
  StepDone();
  ApplyInRealTime();
}

void MainController::ReleasePageKey() {
  history_.Rest(clock_());
  StepDone();
  ApplyInRealTime();
}

void MainController::ReleaseKey(int key_code, bool shift_alone) {
  StepDone();
  const bool steps = key_code >= kKeyLeft && key_code <= kKeyDown;
  history_.Rest(clock_());
  if ((steps || key_code == kKeyShift) && !shift_alone) ApplyInRealTime();
}

void MainController::PressIcon(int button) {
  const int slider = OpticalSlider(global_.Correction, group_);
  if (slider < 0 || button != group_ * kIconButtonsPerGroup + slider) return;
  const Axis axis = TargetOf(global_.Correction, group_, slider).axis;
  global_.Correction.Axes[axis].Optical = ResetOptical(global_.Correction.Projection[axis]);
  NoteSlider(slider, 0);
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

void MainController::SetSymmetry(Axis axis, bool symmetric) {
  global_.Correction.Axes[axis].Stadium = symmetric ? 1 : 0;
  NoteStep(
      PlainCaption(global_, axis == kHorizontal ? kMsgHorizontalSymmetry : kMsgVerticalSymmetry),
      kGroupLinearity);
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

// Pending window events run between a command's steps, so another one may be asked for meanwhile.
template <typename Command>
void MainController::RunCommand(Command command) {
  if (command_running_) return;
  command_running_ = true;
  command();
  command_running_ = false;
  view_.ShowModel();
}

void MainController::Apply() {
  RunCommand([this] { commands_.Apply(); });
}

void MainController::Store() {
  RunCommand([this] { commands_.AskAndStore(); });
}

void MainController::Initialize() {
  RunCommand([this] {
    commands_.Initialize();
    NoteStep(PlainCaption(global_, kMsgInitialize));
  });
  StepDone();
}

void MainController::ApplyInRealTime() {
  if (!RealTime()) return;
  released_ = true;
  if (!command_running_) Follow();
}

// The hand goes on while the projector takes its time; what it left meanwhile is sent at once.
void MainController::Follow() {
  command_running_ = true;
  while (std::exchange(released_, false) && !(global_.Correction == commands_.Sent())) {
    commands_.Follow();
    view_.ShowValues();
  }
  command_running_ = false;
}

void MainController::ToggleProjection(Axis axis) {
  warpline::ToggleProjection(global_.Correction, axis);
  global_.SecondCopy[axis].Distortion = global_.Correction.Axes[axis].Distortion;
  global_.SecondCopy[axis].Optical = global_.Correction.Axes[axis].Optical;
  NoteStep(
      PlainCaption(global_, axis == kHorizontal ? kMsgMenuProjectRight : kMsgMenuProjectDownward));
  view_.ShowModel();
  StepDone();
  Apply();
}

void MainController::SetRealTime(bool on) {
  global_.Settings.AutoApply = on ? 1 : 0;
  KeepSettings();
  view_.ShowModel();
}

void MainController::SetCommunicationMode(std::int16_t mode) {
  global_.Settings.CommunicationMode = mode == 1 ? 1 : 0;
  KeepSettings();
  view_.ShowModel();
}

// At once, so that a run which is cut off keeps what was chosen. The place of the window is that of
// the last writing.
void MainController::KeepSettings() {
  const Settings& settings = global_.Settings;
  SaveSettings(global_, messages_, application_data_, settings.DialogPosX, settings.DialogPosY);
}

void MainController::SetTestPattern(bool shown) {
  global_.Settings.TestPattern = shown ? 1 : 0;
  view_.ShowModel();
}

void MainController::Open() {
  if (ConfirmSaveChanges() == SaveAnswer::kAbort) return;
  const std::filesystem::path path =
      view_.ChooseFileToOpen(DialogFolder(global_, application_data_));
  if (!path.empty()) OpenFile(path);
}

void MainController::OpenFile(const std::filesystem::path& path) {
  const BusyBracket bracket(busy_);
  const bool opened = IsRegisterFile(path) ? OpenRegisterFile(path) : OpenCorrectionFile(path);
  if (opened) view_.FileUsed(path);
}

bool MainController::OpenNamed(const std::filesystem::path& path) {
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) {
    messages_.ShowSystemError(FilledText(TextOf(global_, ToolText::kFileMissing), {Utf8Of(path)}));
    return false;
  }
  if (ConfirmSaveChanges() == SaveAnswer::kContinue) OpenFile(path);
  return true;
}

void MainController::TakeCorrection(const CorrectionData& correction) {
  global_.Correction = correction;
  NoteStep(TextOf(global_, ToolText::kStepPhotograph));
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

bool MainController::OpenRegisterFile(const std::filesystem::path& path) {
  if (!OpenRegisters(files_, global_, messages_, path)) return false;
  RunCommand([this] { commands_.SendRegisters(); });
  return true;
}

// Whoever changes the file while it is read has changed it since.
bool MainController::OpenCorrectionFile(const std::filesystem::path& path) {
  const std::optional<FileContent> content = ContentOf(path);
  if (!OpenCorrection(files_, global_, messages_, path)) return false;
  known_content_ = content;
  TakeSnapshot();
  history_.Clear(global_.Correction);
  view_.ShowModel();
  StepDone();
  Apply();
  return true;
}

// A file that is gone, or cannot be read, has nothing to lose.
bool MainController::Save() {
  if (global_.CurrentFile.empty()) return SaveAs();
  const std::optional<FileContent> content = ContentOf(global_.CurrentFile);
  return !content || content == known_content_ ? SaveTo(global_.CurrentFile) : AskAndOverwrite();
}

bool MainController::AskAndOverwrite() {
  const std::size_t answer = messages_.Choose(
      FilledText(TextOf(global_, ToolText::kFileChanged), {Utf8Of(global_.CurrentFile)}),
      MessageIcon::kWarning,
      {TextOf(global_, ToolText::kOverwrite), TextOf(global_, kMsgMenuSaveAs),
       TextOf(global_, kMsgCancel)});
  if (answer == 0) return SaveTo(global_.CurrentFile);
  return answer == 1 && SaveAs();
}

bool MainController::SaveAs() {
  const std::filesystem::path path = ChooseSaveName();
  if (path.empty()) return false;
  return IsRegisterFile(path) ? SaveRegistersTo(path) : SaveTo(path);
}

std::filesystem::path MainController::ChooseSaveName() {
  const std::filesystem::path folder = DialogFolder(global_, application_data_);
  return warpline::ChooseSaveName(
      [&](const std::filesystem::path& offered) { return view_.ChooseFileToSave(folder, offered); },
      global_.CurrentFile, kTypeWlt);
}

bool MainController::SaveTo(const std::filesystem::path& path) {
  const BusyBracket bracket(busy_);
  if (!SaveCorrection(files_, global_, messages_, path)) return false;
  known_content_ = ContentOf(path);
  TakeSnapshot();
  view_.ShowModel();
  StepDone();
  view_.FileUsed(path);
  return true;
}

bool MainController::SaveRegistersTo(const std::filesystem::path& path) {
  const BusyBracket bracket(busy_);
  return ReportingFaults(messages_, [&] {
    FileData data;
    data.Registers = BuildRegisters(global_.Correction, global_.Panel);
    if (!files_.SaveDataFile(path, kTypeWlr, data)) return false;
    view_.FileUsed(path);
    return true;
  });
}

SaveAnswer MainController::ConfirmSaveChanges() {
  if (!HasUnsavedChanges()) return SaveAnswer::kContinue;
  switch (messages_.Ask(kMsgSaveChange)) {
    case MessageAnswer::kYes:
      return Save() && !HasUnsavedChanges() ? SaveAnswer::kContinue : SaveAnswer::kAbort;
    case MessageAnswer::kNo:
      return SaveAnswer::kContinue;
    case MessageAnswer::kCancel:
      break;
  }
  return SaveAnswer::kAbort;
}

bool MainController::Close(std::int32_t window_x, std::int32_t window_y) {
  if (ConfirmSaveChanges() == SaveAnswer::kAbort) return false;
  SaveSettings(global_, messages_, application_data_, window_x, window_y);
  return true;
}

void MainController::Restore(const CorrectionData& correction, const std::filesystem::path& file) {
  global_.Correction = correction;
  global_.SecondCopy = correction.Axes;
  global_.CurrentFile = file;
  snapshot_.reset();
  known_content_ = ContentOf(file);
  history_.Clear(correction);
  view_.ShowModel();
  StepDone();
}

void MainController::CurveChanged(bool finished) {
  NoteStep(TextOf(global_, ToolText::kStepCurve), -1, kCurveGesture);
  if (finished) history_.EndGesture();
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

void MainController::ConnectionChanged() {
  commands_.ForgetProjector();
  view_.ShowModel();
}

void MainController::NoteStep(std::string name, int group, int gesture) {
  history_.Note(global_.Correction, {std::move(name), group, {}}, gesture, clock_());
}

void MainController::NoteSlider(int slider, int gesture) {
  const GroupRow& group = kGroups.at(static_cast<std::size_t>(group_));
  NoteStep(PlainCaption(global_, group.slider_captions.at(static_cast<std::size_t>(slider))) + " " +
               SetUpSlider(global_.Correction, group_, slider).text,
           group_, gesture);
}

std::string MainController::UndoName() {
  const CorrectionStep* step = history_.Undoable();
  return step != nullptr ? step->name : std::string();
}

std::string MainController::RedoName() {
  const CorrectionStep* step = history_.Redoable();
  return step != nullptr ? step->name : std::string();
}

void MainController::Undo() {
  CorrectionStep* step = history_.Undoable();
  if (step != nullptr) Travel(*step, history_.Undo());
}

void MainController::Redo() {
  CorrectionStep* step = history_.Redoable();
  if (step != nullptr) Travel(*step, history_.Redo());
}

void MainController::Travel(CorrectionStep& step, const CorrectionData& state) {
  global_.Correction = state;
  if (step.left) {
    std::swap(step.left->file, global_.CurrentFile);
    std::swap(step.left->correction, snapshot_);
    std::swap(step.left->content, known_content_);
  }
  if (step.group >= 0) group_ = step.group;
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

void MainController::CopyAxis(Axis from, Axis to) {
  warpline::CopyAxis(global_.Correction, from, to);
  NoteStep(TextOf(global_,
                  from == kVertical ? ToolText::kStepCopyVertical : ToolText::kStepCopyHorizontal));
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

void MainController::SwapAxes() {
  warpline::SwapAxes(global_.Correction);
  NoteStep(TextOf(global_, ToolText::kStepSwap));
  view_.ShowModel();
  StepDone();
  ApplyInRealTime();
}

void MainController::SetComparing(bool on) {
  RunCommand([this, on] { on ? commands_.ShowNone() : commands_.Apply(); });
}

void MainController::TakeSnapshot() {
  snapshot_ = global_.Correction;
}

void MainController::StepDone() {
  if (watcher_) watcher_();
}

}  // namespace warpline
