#pragma once

#include <wx/dialog.h>

#include <functional>
#include <string>

#include "core/LSSglobal.h"

class wxCheckBox;
class wxTextCtrl;

namespace warpline {

// Asks what a setup sheet is to say beside the correction.
class SheetDialog : public wxDialog {
 public:
  // Makes the sheet; the dialog stays open, with what was typed, when that was false.
  using Make = std::function<bool(const std::string& note, bool ask_projector)>;

  SheetDialog(wxWindow* owner, const LSSglobal& global, Make make);

 private:
  Make make_;
  wxTextCtrl* note_;
  wxCheckBox* ask_;
};

}  // namespace warpline
