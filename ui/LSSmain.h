#pragma once

#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include <filesystem>
#include <functional>
#include <span>
#include <string_view>

#include "app/main_controller.h"
#include "ui/LSSmain_controls.h"
#include "ui/LSSmain_parts.h"
#include "ui/files_at_hand.h"
#include "ui/picture_on_display.h"
#include "ui/recovery_keeper.h"

// The main window: it forwards what the user does to the controller and shows the model when it is
// told to.

namespace warpline {

class LSSview;

class LSSmain : public wxFrame, private MainView {
 public:
  // Places itself at the stored position, held inside the screen. Hidden and empty at first.
  explicit LSSmain(MainParts parts);

  // The window's size at first, in pixels where that window stands, or on the first screen: what a
  // default position is computed with.
  static wxSize FirstSize(const wxWindow* where = nullptr);

  // Shows the window and fills it; the preview, when the settings ask for it, comes with the next
  // events. To be called once, before anything else is asked of the window.
  void ShowFirst();

  // Runs a command by the product name of its menu item or button. While the projector follows the
  // hand it waits; nothing happens while another command is at work or the window is not complete
  // yet.
  void Run(std::string_view name);

  // Asks about work that was left unsaved. To be called once, when the window can be used and
  // before a file is opened.
  void OfferUnsavedWork() { recovery_.Offer(); }

  // Opens a file as Open does, but without asking for one, with the next events. Says it when the
  // file is not there. Nothing happens while a dialog is open or a command is at work.
  void OpenNamed(const std::filesystem::path& path);

  MainController& Controller() { return controller_; }

 private:
  struct Command;
  static const Command* FindCommand(std::string_view name);

  void ShowModel() override;
  void ShowValues() override;
  std::filesystem::path ChooseFileToOpen(const std::filesystem::path& folder) override;
  std::filesystem::path ChooseFileToSave(const std::filesystem::path& folder,
                                         const std::filesystem::path& current) override;
  void FileUsed(const std::filesystem::path& path) override;

  SliderHandlers CreateSliderHandlers();
  MainStatus::Handlers CreateStatusHandlers();
  void BindControls();
  void BindWindow();
  void BindFiles();
  void LookForRequest();
  void CreateContent();
  void CreatePreviewWindow();
  void SetSizes();
  void SetLeastSize();
  void FitToScale();
  void PlaceAsStored();
  void ExpectLibrary();
  void ShowTitle();
  void ShowMenus();
  void ShowSteps();
  void ShowStatus();
  void FollowingChanged();
  void WhenIdle(const std::function<void()>& act);
  void ShowPreview();
  void RedrawPreview();
  void PlacePreviewWindow();
  void SetPreviewSize(std::string_view item);
  void CheckPreviewSize();
  bool PlacePreviewClearOf(std::span<const wxRect> others);
  wxPoint MovePreviewAside(wxTopLevelWindow& editor);

  void OnClose(wxCloseEvent& event);
  void OnIconize(wxIconizeEvent& event);
  void OnCharHook(wxKeyEvent& event);

  void EnterNumber(int row);
  void EditCurve();
  void OpenSettings();
  void OpenProjectorMode();
  void StraightenFromPhotograph();
  void MakeSetupSheet();
  void ShowHelp();
  void ShowGuide();
  void ShowAbout();
  void ToggleRecording();
  void CheckConnection();

  MainParts parts_;
  MainController controller_;
  RecoveryKeeper recovery_;
  wxPanel* panel_;  // there from the first, so that an empty frame's dark ground never shows
  MainControls controls_;
  LSSview* view_ = nullptr;  // owned by this window; none before the first events
  bool preview_placed_ = false;
  wxTimer icons_;
  bool closing_ = false;
  std::function<void()> waiting_;  // until the projector has followed the hand
  PictureOnDisplay picture_;
  wxWeakRef<wxDialog> photo_;  // while a photograph is straightened from
  OpenDialogs dialogs_;
  RecentFiles recent_;
  Repeat requests_;  // looks for files that a later start hands over
};

}  // namespace warpline
