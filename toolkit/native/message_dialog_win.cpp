#include "toolkit/native/message_dialog.h"

namespace warpline {

std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* owner, const wxString& text,
                                                       const wxString& title, long style) {
  return std::make_unique<wxMessageDialog>(owner, text, title, style);
}

}  // namespace warpline
