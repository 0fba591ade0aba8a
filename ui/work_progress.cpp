#include "ui/work_progress.h"

#include <wx/button.h>

#include "app/status_line.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

// What is over by then needs no dialog.
constexpr std::chrono::milliseconds kMoment{700};

// Wide enough for each step's text, so that the dialog does not grow on the way.
wxString Widest(const wxString& text) {
  return text + wxString(' ', 30);
}

}  // namespace

void WorkProgress::Begin(wxWindow* owner) {
  begun_ = std::chrono::steady_clock::now();
  owner_ = owner;
}

bool WorkProgress::IsLong() const {
  return std::chrono::steady_clock::now() - begun_ >= kMoment;
}

void WorkProgress::Show(int step, int steps) {
  running_ = true;
  step_ = step;
  steps_ = steps;
  Look();
  if (dialog_ && !dialog_->WasCancelled()) {
    dialog_->Update(step_, WxText(ProgressText(global_, step_, steps_)));
  }
}

void WorkProgress::Look() {
  if (running_ && !dialog_ && IsLong()) OpenDialog();
}

void WorkProgress::OpenDialog() {
  dialog_ = new wxGenericProgressDialog(CaptionOf(global_, kMsgTitle),
                                        Widest(WxText(ProgressText(global_, step_, steps_))),
                                        steps_ + 1, owner_, wxPD_APP_MODAL | wxPD_CAN_ABORT);
  dialog_->SetName("work_progress");
  if (wxWindow* cancel = dialog_->FindWindow(wxID_CANCEL)) {
    cancel->SetLabel(CaptionOf(global_, kMsgCancel));
    cancel->SetFocus();
  }
  dialog_->Update(step_, WxText(ProgressText(global_, step_, steps_)));
}

void WorkProgress::End() {
  running_ = false;
  if (dialog_) dialog_->Destroy();
  dialog_ = nullptr;
}

}  // namespace warpline
