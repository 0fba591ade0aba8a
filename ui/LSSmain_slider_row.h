#pragma once

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>
#include <wx/slider.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <functional>

#include "model/parameter_groups.h"

// One parameter row of the main window: icon button, caption, slider between its two ends, value
// box.

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
  std::function<void(int row)> icon_pressed;
};

class SliderRow {
 public:
  // Creates the controls as children of parent, in tab order.
  SliderRow(wxWindow* parent, int row, SliderHandlers handlers);

  wxSizer* Sizer() const { return sizer_; }

  // Sets everything; the handlers stay silent. group is the caption of the row's group, icon_name
  // the product name that the button goes by while it shows this picture.
  void Show(const SliderSetup& setup, const wxString& group, const wxString& caption,
            const wxBitmapBundle& picture, const wxString& icon_name);

  // The text and whether the row can be used; the slider stays where the user has it.
  void ShowValue(const SliderSetup& setup);

  void FocusSlider() { bar_->SetFocus(); }

 private:
  void Lay();
  void BindSlider();
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
  wxBitmapButton* icon_;
  wxStaticText* name_;
  wxStaticText* low_;
  wxSlider* bar_;
  wxStaticText* high_;
  wxTextCtrl* value_;
  wxSizer* sizer_ = nullptr;
  wxString spoken_name_;  // "group: row"
};

}  // namespace warpline
