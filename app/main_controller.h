#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "app/correction_steps.h"
#include "app/engine.h"
#include "app/file_content.h"
#include "app/preview_geometry.h"
#include "app/status_line.h"
#include "platform/environment.h"

// Everything that the main window's controls, buttons and menus do, without a window. The window
// forwards what the user did and shows the model again when it is told to.

namespace warpline {

// What the controller asks of the window that owns it.
class MainView {
 public:
  virtual ~MainView() = default;

  // Set every control, the menus and the caption from the model; redraw the preview when it is
  // shown.
  virtual void ShowModel() = 0;

  // Redraw the preview, when it is shown, rewrite the values and bring the enabling of the rows up
  // to date; the sliders stay under the user's hand.
  virtual void ShowValues() = 0;

  // The open and save dialogs; an empty path when the user cancelled. folder is where they start,
  // current the name offered. A file to open must exist; an existing file is only chosen for saving
  // after the user agreed to replace it.
  virtual std::filesystem::path ChooseFileToOpen(const std::filesystem::path& folder) = 0;
  virtual std::filesystem::path ChooseFileToSave(const std::filesystem::path& folder,
                                                 const std::filesystem::path& current) = 0;

  // A file was opened or saved.
  virtual void FileUsed(const std::filesystem::path& path) = 0;
};

// Keys by the codes that a slider's key release reports.
inline constexpr int kKeyShift = 16;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyRight = 39;
inline constexpr int kKeyDown = 40;

enum class SaveAnswer { kContinue, kAbort };

class MainController {
 public:
  using Clock = std::function<CorrectionHistory::Time()>;

  // Engine and view must outlive this object. The snapshot is taken from the model as it stands.
  // application_data is the user's application-data folder.
  MainController(Engine& engine, MainView& view,
                 std::filesystem::path application_data = ApplicationDataFolder(),
                 Clock clock = std::chrono::steady_clock::now);

  // The window's caption: title, " (Debug)" in demo mode, else " (simulator)" over a library that
  // reaches no other projector, " - " and the current file's name, with "*" before it while there
  // are unsaved changes.
  std::string Caption() const;

  // The group shown (0..4).
  int Group() const { return group_; }
  void SelectGroup(int group);

  // Whether the "Real Time" menu and the Apply button can be used, and whether released sliders are
  // sent.
  bool RealTimeMenuEnabled() const { return global_.Settings.AutoApplyMenu != 0; }
  bool ApplyEnabled() const { return RealTimeMenuEnabled(); }
  bool RealTime() const { return global_.Settings.AutoApply == 1; }

  // The model differs from what was last saved, loaded or chosen as a screen type. Work that was
  // taken up again counts so until it is saved.
  bool HasUnsavedChanges() const { return snapshot_ != global_.Correction; }

  // Called after each step: when the model was changed and nothing was sent yet, after opening and
  // after saving.
  void WatchSteps(std::function<void()> watcher) { watcher_ = std::move(watcher); }

  // What the line at the window's foot says while nothing is under way.
  StatusLine Status() const { return StatusOf(engine_); }

  // The preview drawing of the model, over marks at the lines where the projector cannot follow.
  // Empty after a fault, which has been shown.
  PreviewDrawing Preview() const;

  // Where the projector whose panel was last reported cannot follow the model. Nothing for a model
  // without registers, as Apply says.
  std::optional<warpline::Deviation> Deviation() const;

  // Choosing in the screen list. Asks for unsaved changes first; on abort nothing changes and the
  // list is set back.
  void SelectScreenType(int type);

  // A slider was moved to a value, its mouse button or a key released. shift_alone: the Shift key
  // and no other modifier is held at this moment. A value that the slider shows already leaves the
  // model as it is, so that one which the slider cannot show survives until the slider is moved.
  //
  // In Real Time a release sends the correction when it differs from the one sent last. A release
  // while that is under way is sent afterwards, with all that has changed by then.
  void MoveSlider(int slider, int value);
  void ReleaseSlider();
  void ReleaseKey(int key_code, bool shift_alone);
  void ReleasePageKey();  // and those to the slider's ends

  // Takes the last step back, or brings it again; in Real Time that is sent. The group that it
  // concerns is shown. The names are empty when there is nothing to do. What one press of the
  // mouse, or a run of keys on one slider, changes is one step.
  void Undo();
  void Redo();
  std::string UndoName();
  std::string RedoName();

  // The other axis takes over parameters and curve, or both take over the other's.
  void CopyAxis(Axis from, Axis to);
  void SwapAxes();

  // While comparing, the projector shows no correction; the model stays. It ends with the next
  // correction that is sent, and begins only when the projector was cleared.
  void SetComparing(bool on);
  bool Comparing() const { return commands_.Comparing(); }

  // An icon button 0..9, and the symmetry boxes. Only the buttons of the optical-centre rows do
  // something: they put Optical back to its reset value.
  void PressIcon(int button);
  void SetSymmetry(Axis axis, bool symmetric);

  // The model never changes because of a projector that failed. A command given while another one
  // runs does nothing.
  //
  // Store asks what to keep when the projector shows something else and would keep that.
  void Apply();
  void Store();
  void Initialize();
  void ToggleProjection(Axis axis);

  // Both write the settings file too.
  void SetRealTime(bool on);
  void SetCommunicationMode(std::int16_t mode);

  void SetTestPattern(bool shown);

  // Open asks for unsaved changes and for a file first. A file whose name ends in ".wlr" (any case)
  // is a register file: its registers are sent, nothing else changes. Any other one is correction
  // data, which is sent too. A file that is refused changes nothing.
  void Open();
  void OpenFile(const std::filesystem::path& path);

  // Opens a file that is known already: Open without the question for one. False, and a message,
  // when the file is not there.
  bool OpenNamed(const std::filesystem::path& path);

  // A correction found from a photograph becomes the model, as one step; the file that is open
  // stays.
  void TakeCorrection(const CorrectionData& correction);

  // True when the file was written. A name without extension is completed with "wlt". Under a name
  // that ends in ".wlr" (any case) Save As writes the registers for the panel last reported; that
  // neither becomes the current file nor counts as saving the changes. When the current file has
  // another content than it had when it was opened or saved last, Save asks before it is replaced.
  bool Save();
  bool SaveAs();

  // Asks "Do you want to save the change?" when the model differs from the snapshot. Yes goes on
  // only when the changes are saved afterwards.
  SaveAnswer ConfirmSaveChanges();

  // The close sequence up to the written settings (window position in device units). False: the
  // window stays open.
  bool Close(std::int32_t window_x, std::int32_t window_y);

  // Takes up unsaved work again, with the name of the file that it belongs to (empty: none). Sends
  // nothing.
  void Restore(const CorrectionData& correction, const std::filesystem::path& file);

  // What the curve editor applied is in the model: shows it, and sends it in Real Time. finished:
  // the next change is another step.
  void CurveChanged(bool finished = true);

  // What follows is another step.
  void EndStep() { history_.EndGesture(); }

  // The settings may name another projector now.
  void ConnectionChanged();

 private:
  bool SaveTo(const std::filesystem::path& path);
  bool AskAndOverwrite();
  bool SaveRegistersTo(const std::filesystem::path& path);
  bool OpenRegisterFile(const std::filesystem::path& path);
  bool OpenCorrectionFile(const std::filesystem::path& path);
  std::filesystem::path ChooseSaveName();
  template <typename Command>
  void RunCommand(Command command);
  void Follow();
  void NoteStep(std::string name, int group = -1, int gesture = 0);
  void NoteSlider(int slider, int gesture);
  void Travel(CorrectionStep& step, const CorrectionData& state);
  void ApplyInRealTime();
  void TakeSnapshot();
  void StepDone();
  void KeepSettings();

  const Engine& engine_;
  LSSglobal& global_;
  LSSfile& files_;
  ProjectorCommands& commands_;
  const Messages& messages_;
  BusyIndicator& busy_;
  MainView& view_;
  std::filesystem::path application_data_;
  Clock clock_;
  std::optional<CorrectionData> snapshot_;  // none: nothing saved stands for the model
  CorrectionHistory history_;
  std::function<void()> watcher_;
  std::optional<FileContent> known_content_;  // of the current file
  int group_ = 0;
  bool command_running_ = false;
  bool released_ = false;  // a change that is to be sent in Real Time
};

}  // namespace warpline
