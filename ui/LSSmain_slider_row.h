#pragma once

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <functional>

#include "model/parameter_groups.h"

// One parameter row of the main window: picture or icon button, caption, slider between its two
// ends, value box.

namespace warpline {

// What the user did on row 0 or 1.
struct SliderHandlers {
  std::function<void(int row, int value)> moved;
  // The mouse button went up, or a key that moves the slider and is no arrow; the wheel came to
  // rest.
  std::function<void(int row)> released;
  // A key went up: an arrow (37 to 40) or Shift (16). shift_alone: Shift is still held, without
  // Ctrl and Alt.
  std::function<void(int row, int key_code, bool shift_alone)> key_released;
  std::function<void(int row)> page_released;  // a page key, Home or End went up
  std::function<void(int row)> icon_pressed;
  std::function<void(int row)> number_wanted;  // Enter, F2 or a double click
};

class SliderRow {
 public:
  // Creates the controls as children of parent, in tab order.
  SliderRow(wxWindow* parent, int row, SliderHandlers handlers);

  wxSizer* Sizer() const { return sizer_; }

  struct Texts {
    wxString group;  // the caption of the row's group
    wxString caption;
    wxString action;  // what pressing the picture does; a picture without one is no button
  };
  struct Looks {
    Texts texts;
    wxBitmapBundle picture;
    wxString icon_name;  // the product name that the picture goes by while it shows this one
  };
  // Sets everything; the handlers stay silent.
  void Show(const SliderSetup& setup, const Looks& looks);

  // No more than what the row's size hangs on.
  void ShowTexts(const SliderSetup& setup, const Texts& texts);

  // The text and whether the row can be used; the slider stays where the user has it.
  void ShowValue(const SliderSetup& setup);

  // The slider itself, when it is not the user's hand on it that has changed the value.
  void ShowBar(const SliderSetup& setup);

  // As if the user had moved the slider to that value and let go of it.
  void Take(int value);

  void FocusSlider() { bar_->SetFocus(); }
  const wxString& SpokenName() const { return spoken_name_; }

 private:
  void Lay();
  void SetWidths();
  void BindSlider();
  void BindNumberEntry();
  void ShowPicture(const Looks& looks);
  void AskForNumber();
  void PaintZero();
  void OnKeyDown(wxKeyEvent& event);
  void OnKeyUp(wxKeyEvent& event);
  void OnWheel(wxMouseEvent& event);
  void Step(int step);
  void Enable(bool enabled);

  int row_;
  SliderHandlers handlers_;
  bool filling_ = false;
  int wheel_rotation_ = 0;  // what is not yet a whole notch
  wxTimer wheel_rest_;
  bool clicked_twice_ = false;  // the mouse button is still held
  wxStaticBitmap* picture_;     // of the two one is shown
  wxBitmapButton* icon_;
  wxStaticText* name_;
  wxStaticText* low_;
  wxSlider* bar_;
  wxWindow* zero_;  // shows below the slider where its 0 is
  wxStaticText* high_;
  wxTextCtrl* value_;
  wxSizer* sizer_ = nullptr;
  wxSizer* place_ = nullptr;  // of the picture or the button
  wxString spoken_name_;      // "group: row"
};

}  // namespace warpline
