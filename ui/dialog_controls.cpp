#include "ui/dialog_controls.h"

#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
wxString ControlMaker::Text(int caption) const {
  return CaptionOf(global_, caption);
}

wxButton* ControlMaker::Button(const char* name, int caption, int id) const {
  return new wxButton(parent_, id, Text(caption), wxDefaultPosition, wxDefaultSize, 0,
                      wxDefaultValidator, name);
}

wxCheckBox* ControlMaker::CheckBox(const char* name, int caption) const {
  return new wxCheckBox(parent_, wxID_ANY, Text(caption), wxDefaultPosition, wxDefaultSize, 0,
                        wxDefaultValidator, name);
}

wxRadioButton* ControlMaker::RadioButton(const wxString& name, int caption, bool first) const {
  return new wxRadioButton(parent_, wxID_ANY, Text(caption), wxDefaultPosition, wxDefaultSize,
                           first ? wxRB_GROUP : 0, wxDefaultValidator, name);
}

wxStaticText* ControlMaker::Caption(int caption) const {
  return new wxStaticText(parent_, wxID_ANY, Text(caption));
}

wxChoice* ControlMaker::Choice(const char* name, int caption) const {
  auto* list = new wxChoice(parent_, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr, 0,
                            wxDefaultValidator, name);
  SetAccessibleName(*list, wxStripMenuCodes(Text(caption)));
  return list;
}

wxChoice* ControlMaker::Choice(const char* name, int caption,
                               std::span<const std::string_view> entries) const {
  wxChoice* list = Choice(name, caption);
  for (const std::string_view entry : entries) list->Append(WxText(entry));
  return list;
}

DialogButtons CreateDialogButtons(const ControlMaker& make, bool with_apply) {
  DialogButtons buttons;
  buttons.ok = make.Button("OKButton", kMsgOk, wxID_OK);
  buttons.cancel = make.Button("CancelButton", kMsgCancel, wxID_CANCEL);
  if (with_apply) buttons.apply = make.Button("applybutton", kMsgApply);
  buttons.ok->SetDefault();
  return buttons;
}

void EnableApply(const DialogButtons& buttons, bool enabled) {
  if (!enabled && buttons.apply->HasFocus()) buttons.ok->SetFocus();
  buttons.apply->Enable(enabled);
}

wxSizer* LayDialogButtons(wxWindow* dialog, const DialogButtons& buttons, wxSizer* left) {
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  if (left != nullptr) line->Add(left, AtCentre());
  line->AddStretchSpacer();
  for (wxButton* button : {buttons.ok, buttons.cancel, buttons.apply}) {
    if (button != nullptr) line->Add(button, AtCentre().Border(wxLEFT, Gap(dialog)));
  }
  return line;
}

}  // namespace warpline
