#pragma once

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <span>
#include <string_view>

#include "core/LSSglobal.h"

// What the windows share: captioned controls with their product names, and the dialogs' line of
// buttons at the foot.

namespace warpline {

class ControlMaker {
 public:
  // Makes children of parent with texts of the language in force.
  ControlMaker(wxWindow* parent, const LSSglobal& global) : parent_(parent), global_(global) {}

  wxString Text(int caption) const;
  wxButton* Button(const char* name, int caption, int id = wxID_ANY) const;
  wxCheckBox* CheckBox(const char* name, int caption) const;
  wxRadioButton* RadioButton(const wxString& name, int caption, bool first) const;
  wxStaticText* Caption(int caption) const;

  // Empty; caption names it to those who cannot see the text beside it.
  wxChoice* Choice(const char* name, int caption) const;
  wxChoice* Choice(const char* name, int caption, std::span<const std::string_view> entries) const;

 private:
  wxWindow* parent_;
  const LSSglobal& global_;
};

// OKButton, CancelButton and, when the dialog has one, applybutton. OK is the default button.
// apply may be null.
struct DialogButtons {
  wxButton* ok = nullptr;
  wxButton* cancel = nullptr;
  wxButton* apply = nullptr;
};
DialogButtons CreateDialogButtons(const ControlMaker& make, bool with_apply);

// Apply can be used while there is something to apply. When it cannot any more, the focus does not
// vanish with it.
void EnableApply(const DialogButtons& buttons, bool enabled);

// The buttons at the right end of a line, whose left end is free for something else (or null).
wxSizer* LayDialogButtons(wxWindow* dialog, const DialogButtons& buttons, wxSizer* left = nullptr);

}  // namespace warpline
