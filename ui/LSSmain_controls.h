#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/radiobut.h>

#include <array>
#include <memory>

#include "core/LSSglobal.h"
#include "ui/LSSmain_slider_row.h"
#include "ui/LSSmain_status.h"

// The main window's controls by their product names, and how they lie.

namespace warpline {

struct MainControls {
  wxChoice* scr_select = nullptr;
  std::array<wxRadioButton*, kGroupCount> ctrl_select{};
  std::array<std::unique_ptr<SliderRow>, kSliderCount> rows;
  wxCheckBox* lr_symm = nullptr;
  wxCheckBox* ud_symm = nullptr;
  wxButton* corre_edit = nullptr;
  wxCheckBox* testpattern = nullptr;
  wxButton* initbutton = nullptr;
  wxButton* applybutton = nullptr;
  wxButton* storebutton = nullptr;
  wxButton* exitbutton = nullptr;
  std::unique_ptr<MainStatus> status;
};

// Creates all of them on the panel in tab order, with their captions, and gives the panel its
// sizer.
MainControls CreateMainControls(wxWindow* panel, const LSSglobal& global,
                                const SliderHandlers& handlers,
                                const MainStatus::Handlers& status_handlers);

// Which of the controls below the sliders a group has, and the two rows with captions, pictures and
// values.
void ShowGroup(MainControls& controls, const LSSglobal& global, int group);

// No more of that than what the window's size hangs on.
void ShowGroupTexts(MainControls& controls, const LSSglobal& global, int group);

// The values and what can be used. bars: the sliders' positions too, which stay under the user's
// hand otherwise.
void ShowGroupValues(MainControls& controls, const LSSglobal& global, int group, bool bars = false);

}  // namespace warpline
