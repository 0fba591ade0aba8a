#include "ui/window_messages.h"

#include <wx/app.h>
#include <wx/dialog.h>
#include <wx/msgdlg.h>

#include "ui/wx_text.h"

namespace warpline {
namespace {

long StyleOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kCritical:
      return wxICON_ERROR;
    case MessageIcon::kWarning:
      return wxICON_WARNING;
    case MessageIcon::kQuestion:
      return wxICON_QUESTION;
    case MessageIcon::kInformation:
      return wxICON_INFORMATION;
  }
  return wxICON_NONE;
}

}  // namespace

wxWindow* MessageOwner() {
  for (auto node = wxTopLevelWindows.GetLast(); node != nullptr; node = node->GetPrevious()) {
    auto* dialog = dynamic_cast<wxDialog*>(node->GetData());
    if (dialog != nullptr && dialog->IsModal()) return dialog;
  }
  wxWindow* top = wxTheApp->GetTopWindow();
  return top != nullptr && top->IsShown() ? top : nullptr;
}

void WindowMessages::Show(const std::string& title, const std::string& text, MessageIcon icon) {
  wxMessageDialog box(MessageOwner(), WxText(text), WxText(title), wxOK | StyleOf(icon));
  box.ShowModal();
}

MessageAnswer WindowMessages::Ask(const std::string& title, const std::string& text) {
  wxMessageDialog box(MessageOwner(), WxText(text), WxText(title),
                      wxYES_NO | wxCANCEL | wxICON_QUESTION);
  const int answer = box.ShowModal();
  if (answer == wxID_YES) return MessageAnswer::kYes;
  return answer == wxID_NO ? MessageAnswer::kNo : MessageAnswer::kCancel;
}

}  // namespace warpline
