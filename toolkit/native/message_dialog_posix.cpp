#include "toolkit/native/message_dialog.h"

#include <wx/generic/msgdlgg.h>

namespace warpline {

// GTK's own shows no icon.
std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* owner, const wxString& text,
                                                       const wxString& title, long style) {
  return std::make_unique<wxGenericMessageDialog>(owner, text, title, style);
}

}  // namespace warpline
