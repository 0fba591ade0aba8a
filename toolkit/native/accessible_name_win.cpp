#include <wx/access.h>

#include "toolkit/native/accessible_name.h"

namespace warpline {
namespace {

// Everything else the native control says by itself.
class NamedControl : public wxAccessible {
 public:
  NamedControl(wxWindow* control, const wxString& name, const wxString& description)
      : wxAccessible(control), name_(name), description_(description) {}

  wxAccStatus GetName(int child, wxString* name) override { return Say(child, name_, name); }
  wxAccStatus GetDescription(int child, wxString* text) override {
    return Say(child, description_, text);
  }

 private:
  static wxAccStatus Say(int child, const wxString& text, wxString* answer) {
    if (child != wxACC_SELF || text.empty()) return wxACC_NOT_IMPLEMENTED;
    *answer = text;
    return wxACC_OK;
  }

  wxString name_;
  wxString description_;
};

}  // namespace

void SetAccessibleName(wxWindow& control, const wxString& name, const wxString& description) {
  control.SetAccessible(new NamedControl(&control, name, description));
}

}  // namespace warpline
