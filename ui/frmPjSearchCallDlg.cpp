#include "ui/frmPjSearchCallDlg.h"

#include <utility>

namespace warpline {

// Without a parent, so that it lives as long as its creator says.
frmPjSearchCallDlg::frmPjSearchCallDlg(wxTopLevelWindow* owner, const Messages& messages,
                                       BeamseekProvider provider,
                                       std::function<void()> open_read_me)
    : wxDialog(nullptr, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxDIALOG_NO_PARENT,
               "frmPjSearchCallDlg"),
      owner_(owner),
      open_read_me_(std::move(open_read_me)),
      search_(messages, std::move(provider)),
      tmrCallBackProc_(this) {
  Bind(wxEVT_TIMER, [this](wxTimerEvent&) { OnTimer(); });
}

std::optional<std::string> frmPjSearchCallDlg::Search(const SearchOptions& options) {
  if (!search_.Start(options)) return std::nullopt;
  WaitForEnd();
  return search_.Chosen();
}

// Not a modal dialog of the toolkit: that would keep input away from the library's window too.
void frmPjSearchCallDlg::WaitForEnd() {
  owner_->Disable();
  tmrCallBackProc_.StartOnce(kSearchPollMilliseconds);
  loop_.Run();
  if (!owner_) return;
  owner_->Enable();
  owner_->Raise();
}

// One notification at a time: while a message of the search is on the screen, the timer rests.
void frmPjSearchCallDlg::OnTimer() {
  if (search_.Poll() == SearchRequest::kOpenReadMe) open_read_me_();
  if (search_.IsRunning() && owner_) {
    tmrCallBackProc_.StartOnce(kSearchPollMilliseconds);
  } else {
    loop_.Exit();
  }
}

}  // namespace warpline
