#include <algorithm>
#include <array>

#include "core/messages.h"
#include "toolkit/layout.h"
#include "ui/LSSmain.h"
#include "ui/LSSmain_menu.h"
#include "ui/LSSmain_open_dialogs.h"
#include "ui/LSSphoto.h"
#include "ui/LSSview.h"
#include "ui/about_box.h"
#include "ui/read_me.h"

// The main window's commands: one table row each, for menu items and buttons alike.

namespace warpline {
struct LSSmain::Command {
  std::string_view name;
  void (*run)(LSSmain& window);
  bool edits = false;  // the model alone, which the projector follows

  static const std::array<Command, 34> kAll;
};

constexpr std::array<LSSmain::Command, 34> LSSmain::Command::kAll{{
    {"menu_file_open", [](LSSmain& w) { w.controller_.Open(); }},
    {"menu_file_save", [](LSSmain& w) { w.controller_.Save(); }},
    {"menu_file_saveas", [](LSSmain& w) { w.controller_.SaveAs(); }},
    {"menu_file_sheet", [](LSSmain& w) { w.MakeSetupSheet(); }},
    {"menu_file_exit", [](LSSmain& w) { w.Close(); }},
    {"menu_edit_undo", [](LSSmain& w) { w.controller_.Undo(); }, true},
    {"menu_edit_redo", [](LSSmain& w) { w.controller_.Redo(); }, true},
    {"menu_edit_copy_v", [](LSSmain& w) { w.controller_.CopyAxis(kVertical, kHorizontal); }, true},
    {"menu_edit_copy_h", [](LSSmain& w) { w.controller_.CopyAxis(kHorizontal, kVertical); }, true},
    {"menu_edit_swap", [](LSSmain& w) { w.controller_.SwapAxes(); }, true},
    {"menu_edit_compare",
     [](LSSmain& w) { w.controller_.SetComparing(!w.controller_.Comparing()); }},
    {"menu_opt_auto_on", [](LSSmain& w) { w.controller_.SetRealTime(true); }},
    {"menu_opt_auto_off", [](LSSmain& w) { w.controller_.SetRealTime(false); }},
    {"menu_opt_simple", [](LSSmain& w) { w.controller_.SetCommunicationMode(0); }},
    {"menu_opt_detailed", [](LSSmain& w) { w.controller_.SetCommunicationMode(1); }},
    {"menu_opt_ud_reverse", [](LSSmain& w) { w.controller_.ToggleProjection(kVertical); }},
    {"menu_opt_lr_reverse", [](LSSmain& w) { w.controller_.ToggleProjection(kHorizontal); }},
    {"menu_opt_pjmode", [](LSSmain& w) { w.OpenProjectorMode(); }},
    {"menu_opt_setting", [](LSSmain& w) { w.OpenSettings(); }},
    {"menu_opt_picture_off", [](LSSmain& w) { w.picture_.End(); }},
    {"menu_opt_photo", [](LSSmain& w) { w.StraightenFromPhotograph(); }},
    {"menu_disp_magnification", [](LSSmain& w) { w.SetPreviewSize("menu_disp_magnification"); }},
    {"menu_disp_regular", [](LSSmain& w) { w.SetPreviewSize("menu_disp_regular"); }},
    {"menu_disp_small", [](LSSmain& w) { w.SetPreviewSize("menu_disp_small"); }},
    {"menu_help_doc", [](LSSmain& w) { w.ShowHelp(); }},
    {"menu_help_guide", [](LSSmain& w) { w.ShowGuide(); }},
    {"menu_help_about", [](LSSmain& w) { w.ShowAbout(); }},
    {"menu_help_record", [](LSSmain& w) { w.ToggleRecording(); }},
    {"menu_help_check", [](LSSmain& w) { w.CheckConnection(); }},
    {"initbutton", [](LSSmain& w) { w.controller_.Initialize(); }},
    {"applybutton", [](LSSmain& w) { w.controller_.Apply(); }},
    {"storebutton", [](LSSmain& w) { w.controller_.Store(); }},
    {"exitbutton", [](LSSmain& w) { w.Close(); }},
    {"corre_edit", [](LSSmain& w) { w.EditCurve(); }},
}};

const LSSmain::Command* LSSmain::FindCommand(std::string_view name) {
  const auto* row = std::ranges::find(Command::kAll, name, &Command::name);
  return row == Command::kAll.end() ? nullptr : row;
}

void LSSmain::Run(std::string_view name) {
  const Command* command = FindCommand(name);
  if (command == nullptr || view_ == nullptr) return;
  if (command->edits && parts_.busy.IsFollowing()) {
    command->run(*this);
  } else {
    WhenIdle([this, command] { command->run(*this); });
  }
}

void LSSmain::EditCurve() {
  const wxRect before = view_->GetRect();
  wxPoint aside = before.GetPosition();
  OpenCurveEditor(
      parts_, this, AxisOfGroup(controller_.Group()),
      [this](bool finished) { controller_.CurveChanged(finished); },
      [this, &aside](wxTopLevelWindow& editor) { aside = MovePreviewAside(editor); });
  if (view_->GetPosition() == aside) PutAt(*view_, before);
  CheckPreviewSize();
  controller_.EndStep();
}

void LSSmain::OpenSettings() {
  const bool detailed = parts_.engine.global.Settings.CommunicationMode == 1;
  const Settings before = parts_.engine.global.Settings;
  (detailed ? OpenCommunicationSettings : OpenProjectorSearch)(parts_, this);
  if (!(parts_.engine.global.Settings == before)) controller_.ConnectionChanged();
}

void LSSmain::OpenProjectorMode() {
  OpenProjectorModes(parts_, this);
}

void LSSmain::StraightenFromPhotograph() {
  if (!photo_) {
    photo_ = new LSSphoto(this, {parts_.engine, controller_, picture_, parts_.pictures,
                                 [this](const std::function<void()>& act) { WhenIdle(act); }});
  }
  photo_->Show();
  photo_->Raise();
}

void LSSmain::MakeSetupSheet() {
  OpenSetupSheet(parts_, this, controller_.HasUnsavedChanges());
  ShowModel();  // the projector may have told another panel
}

void LSSmain::ShowHelp() {
  const auto file = ReadMeFile(parts_.engine.global, parts_.program_folder);
  ShowHelpFile(parts_.engine, file, parts_.show_text);
}

void LSSmain::ShowGuide() {
  const auto page = GuideFile(parts_.engine.global, parts_.program_folder);
  ShowHelpFile(parts_.engine, page, parts_.show_page);
}

void LSSmain::ShowAbout() {
  ShowAboutBox(this, parts_.engine.global);
}

void LSSmain::ToggleRecording() {
  ExchangeRecording& recording = parts_.engine.recording;
  if (recording.IsOn()) {
    recording.End();
  } else {
    const RecordChoice choice = parts_.choose_record(this, DataFolder(parts_.application_data));
    if (!choice.file.empty()) recording.Begin(choice.file, choice.redacted);
  }
  ShowStatus();
}

void LSSmain::CheckConnection() {
  OpenConnectionCheck(parts_, this);
  ShowStatus();
}

// Escape ends what is sent while the projector follows the hand.
void LSSmain::OnCharHook(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_ESCAPE && parts_.busy.IsFollowing()) {
    parts_.busy.Cancel();
  } else {
    event.Skip();
  }
}

void LSSmain::OnIconize(wxIconizeEvent& event) {
  event.Skip();
  if (event.IsIconized() && view_ != nullptr) {
    view_->Hide();
  } else {
    ShowPreview();
  }
}

}  // namespace warpline
