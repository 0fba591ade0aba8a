#pragma once

#include <wx/msgdlg.h>

#include <memory>

// The kind of message box that shows icon and captions of its own on each system.

namespace warpline {

// style as that of wxMessageDialog.
std::unique_ptr<wxMessageDialogBase> MakeMessageDialog(wxWindow* owner, const wxString& text,
                                                       const wxString& title, long style);

}  // namespace warpline
