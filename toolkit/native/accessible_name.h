#pragma once

#include <wx/string.h>
#include <wx/window.h>

// What a screen reader says of a control that bears no text of its own. Controls with a text of
// their own need none of this.

namespace warpline {

// Name and, when there is more to say, description, in place of those set before. The window must
// be a native control. Does nothing where the system has no such service.
void SetAccessibleName(wxWindow& control, const wxString& name, const wxString& description = {});

}  // namespace warpline
