#pragma once

#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include <vector>

#include "sim/station/shown_picture.h"
#include "sim/station/station.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {

// What is shown and kept, mode, panel and the rest of the state in a column, the counters below.
class StatePane : public wxPanel {
 public:
  StatePane(wxWindow* parent, const ProjectorTexts& texts);
  void Show(const StationSnapshot& state, const ShownPicture& shown);

 private:
  const ProjectorTexts& texts_;
  std::vector<wxStaticText*> values_;
};

// The working registers beside the stored ones; those that differ are bold.
class RegisterList : public wxListCtrl {
 public:
  RegisterList(wxWindow* parent, const ProjectorTexts& texts);
  void Show(const StationSnapshot& state);
};

// The last exchanges, the newest first.
class FrameList : public wxListCtrl {
 public:
  FrameList(wxWindow* parent, const ProjectorTexts& texts);
  void Show(const StationSnapshot& state);

 private:
  wxString OnGetItemText(long item, long column) const override;

  const ProjectorTexts& texts_;
  std::deque<LoggedExchange> exchanges_;
};

}  // namespace warpline::sim
