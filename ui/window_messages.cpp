#include "ui/window_messages.h"

#include <wx/app.h>
#include <wx/dialog.h>

#include <array>

#include "toolkit/native/message_dialog.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// For one, two and three choices.
constexpr std::array<long, 3> kButtons{wxOK, wxOK | wxCANCEL, wxYES_NO | wxCANCEL};

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

// The buttons' captions go by the box's kinds of buttons.
std::size_t WindowMessages::Show(const UserMessage& message) {
  const std::vector<std::string>& choices = message.choices;
  const long buttons = kButtons.at(choices.size() - 1);
  const auto box = MakeMessageDialog(MessageOwner(), WxText(message.text), WxText(message.title),
                                     buttons | StyleOf(message.icon));
  if (choices.size() == 1) box->SetOKLabel(WxText(choices[0]));
  if (choices.size() == 2) box->SetOKCancelLabels(WxText(choices[0]), WxText(choices[1]));
  if (choices.size() == 3) {
    box->SetYesNoCancelLabels(WxText(choices[0]), WxText(choices[1]), WxText(choices[2]));
  }
  const int pressed = box->ShowModal();
  if (pressed == wxID_YES || pressed == wxID_OK) return 0;
  return pressed == wxID_NO ? 1 : choices.size() - 1;
}

}  // namespace warpline
