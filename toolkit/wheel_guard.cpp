#include "toolkit/wheel_guard.h"

#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/radiobut.h>
#include <wx/slider.h>
#include <wx/spinctrl.h>
#include <wx/toplevel.h>

#include "toolkit/native/focus.h"

namespace warpline {
namespace {

template <typename... Kinds>
bool IsOneOf(const wxObject* object) {
  return ((dynamic_cast<const Kinds*>(object) != nullptr) || ...);
}

bool HasKeys(wxWindow& control) {
  auto* top = dynamic_cast<wxTopLevelWindow*>(wxGetTopLevelParent(&control));
  return top != nullptr && top->IsActive() && HoldsFocus(control);
}

}  // namespace

WheelGuard::WheelGuard() {
  wxEvtHandler::AddFilter(this);
}

WheelGuard::~WheelGuard() {
  wxEvtHandler::RemoveFilter(this);
}

int WheelGuard::FilterEvent(wxEvent& event) {
  if (event.GetEventType() != wxEVT_MOUSEWHEEL) return Event_Skip;
  auto* control = dynamic_cast<wxWindow*>(event.GetEventObject());
  const bool guarded =
      IsOneOf<wxChoice, wxComboBox, wxRadioButton, wxSlider, wxSpinCtrl, wxSpinCtrlDouble>(control);
  return guarded && !HasKeys(*control) ? Event_Processed : Event_Skip;
}

}  // namespace warpline
