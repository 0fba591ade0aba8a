#pragma once

#include <wx/choice.h>
#include <wx/dialog.h>

#include "core/LSSglobal.h"

// The dialog that asks for the shape that a curve starts from.

namespace warpline {

class LSSshape : public wxDialog {
 public:
  LSSshape(wxWindow* owner, const LSSglobal& global);

  // The chosen shape (0..2); kNoShape unless the dialog was closed by OK.
  int Shape() const { return shape_; }

 private:
  wxChoice* list_;
  int shape_;
};

}  // namespace warpline
