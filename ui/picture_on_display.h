#pragma once

#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/weakref.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/picture_control.h"
#include "ui/LSSmain_parts.h"
#include "ui/display_labels.h"
#include "ui/files_at_hand.h"
#include "ui/picture_window.h"

// The main window's test picture: the menu of displays that it can be put on, and its window.

namespace warpline {

class PictureOnDisplay {
 public:
  // All must outlive this object. run does a command of the main window by its product name.
  PictureOnDisplay(wxFrame& owner, const MainParts& parts, MainController& controller,
                   std::function<void(std::string_view)> run);

  // Keeps an item for each display in the menu, before the one that takes the picture away.
  void Attach(wxMenu& menu, int off_item);

  // The model has changed, or what is known of the projector.
  void Changed();

  // The displays that the picture of marks can be put on, as the menu names them, and which of them
  // is none of the owner's; 0 when there is only one.
  std::vector<std::string> DisplayNames();
  std::size_t OtherDisplay() const;

  // Puts the picture of marks on one of them. When it ends the asking window comes up again.
  void PutMarks(std::size_t display, wxWindow& asking);

  bool IsShown() const { return window_ != nullptr && window_->IsShown(); }

  // Takes the picture away.
  void End();

 private:
  void Refresh();
  void FillMenu();
  void CreateWindow();
  void Put(std::size_t display);
  void Look();
  void CheckItems();
  void OnHighlight(wxMenuEvent& event);
  std::string NameOf(std::size_t display) const;
  std::string TextOf(ToolText text, std::size_t display) const;

  wxFrame& owner_;
  const MainParts& parts_;
  PictureControl control_;
  DisplayLabels labels_;
  std::vector<DisplayPlace> displays_;
  wxMenu* menu_ = nullptr;
  int off_item_ = wxID_NONE;
  PictureWindow* window_ = nullptr;  // of the owner's, made when it is first wanted
  wxWeakRef<wxWindow> asking_;
  Repeat watch_;
};

}  // namespace warpline
