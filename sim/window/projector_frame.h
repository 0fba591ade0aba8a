#pragma once

#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/timer.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "picture/test_picture.h"
#include "sim/station/shown_picture.h"
#include "sim/texts/projector_texts.h"
#include "sim/window/canvas.h"
#include "sim/window/fault_pane.h"
#include "sim/window/state_pane.h"
#include "sim/window/wall_bar.h"
#include "sim/window/window.h"

class wxButton;
class wxNotebook;

namespace warpline::sim {

// The projector's window: what it throws at the left, its state at the right, faults in force above
// all. It follows the station by looking at it many times a second.
class ProjectorFrame : public wxFrame {
 public:
  explicit ProjectorFrame(const WindowRequest& request);
  ~ProjectorFrame() override;
  ProjectorFrame(const ProjectorFrame&) = delete;
  ProjectorFrame& operator=(const ProjectorFrame&) = delete;

 private:
  struct Item;
  enum class View { kPanel, kWall, kCamera };

  static constexpr int kUncorrectedKey = 'U';

  // A window smaller than all that it holds shows the picture alone.
  wxSize DoGetBestClientSize() const override;

  void BuildMenus();
  std::vector<Item> PictureItems();
  std::vector<Item> ViewItems();
  std::vector<Item> ProjectorItems();
  std::vector<Item> HelpItems();
  void AddItem(wxMenu& menu, const Item& item);
  wxWindow* BuildPicture(wxWindow* parent);
  wxWindow* BuildPanes(wxWindow* parent);
  wxSizer* BuildBanner();

  void Look();
  void End();
  void Follow(const StationSnapshot& state);
  void ShowBanner(const StationSnapshot& state);
  void WrapBanner();
  int Ask(wxDialog& dialog);
  void ShowMessage(const wxString& text, const wxString& title, long style);
  void Redraw();
  Camera CameraNow() const;
  RgbImage AsSeen(PanelSize size) const;
  void ChoosePattern(TestPattern pattern);
  void ChooseView(View view);
  void ShowUncorrected(bool uncorrected);
  void ArrangePanes();
  void SwitchFullScreen(bool full);
  void OpenPicture();
  RgbImage PictureToSave() const;
  void SavePicture();
  void Choose(wxMenuItem& item);
  void PressKey(wxKeyEvent& event);

  const WindowRequest& request_;
  const ProjectorTexts& texts_;
  wxTimer timer_;
  Canvas* canvas_ = nullptr;
  WallBar* wall_bar_ = nullptr;
  wxSplitterWindow* splitter_ = nullptr;
  wxNotebook* panes_ = nullptr;
  wxPanel* banner_ = nullptr;
  wxStaticText* banner_text_ = nullptr;
  wxButton* banner_clear_ = nullptr;
  wxString banner_label_;       // before it is wrapped
  wxDialog* asking_ = nullptr;  // the dialog that is open
  StatePane* state_pane_ = nullptr;
  RegisterList* registers_ = nullptr;
  FrameList* frames_ = nullptr;
  FaultPane* faults_ = nullptr;

  std::optional<std::uint64_t> seen_;  // the station's revision
  StationSnapshot state_;
  RgbImage source_;
  ShownPicture shown_;
  RgbImage on_wall_;
  View view_ = View::kPanel;
  bool uncorrected_ = false;  // while the key is held
  bool marks_ = true;
  bool ending_ = false;
};

}  // namespace warpline::sim
