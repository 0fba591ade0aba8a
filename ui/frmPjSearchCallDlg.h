#pragma once

#include <wx/dialog.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/weakref.h>

#include <functional>
#include <optional>
#include <string>

#include "link/projector_search.h"

// The projector search as the tool hosts it: a dialog that is never seen. The search library shows
// a window of its own meanwhile, and this one's timer hands on what it notifies.

namespace warpline {

class frmPjSearchCallDlg : public wxDialog {
 public:
  // owner takes no input while the search runs. open_read_me shows the user's guide without
  // waiting.
  frmPjSearchCallDlg(wxTopLevelWindow* owner, const Messages& messages, BeamseekProvider provider,
                     std::function<void()> open_read_me);

  // Returns when the search has ended: the address of the projector that was chosen, if one was.
  std::optional<std::string> Search(const SearchOptions& options);

 private:
  void WaitForEnd();
  void OnTimer();

  wxWeakRef<wxTopLevelWindow> owner_;
  std::function<void()> open_read_me_;
  ProjectorSearch search_;
  wxTimer tmrCallBackProc_;
  wxGUIEventLoop loop_;
};

}  // namespace warpline
