#pragma once

#include <wx/string.h>
#include <wx/window.h>

#include <optional>

#include "core/LSSglobal.h"
#include "model/parameter_groups.h"

namespace warpline {

// Asks for a whole number in setup.low..setup.high in a modal dialog of that title, which offers
// setup.value. What is none is told and can be mended. Nothing when the user cancelled.
std::optional<int> AskNumber(wxWindow* owner, const LSSglobal& global, const wxString& title,
                             const SliderSetup& setup);

}  // namespace warpline
