#pragma once

#include <wx/listctrl.h>
#include <wx/panel.h>
#include <wx/stattext.h>

#include <vector>

#include "sim/recording/window_texts.h"
#include "sim/station/shown_picture.h"
#include "sim/station/station.h"

namespace warpline::sim {

// Power, input, mode and counters in a column.
class StatePane : public wxPanel {
 public:
  StatePane(wxWindow* parent, const WindowTexts& texts);
  void Show(const StationSnapshot& state, const ShownPicture& shown);

 private:
  const WindowTexts& texts_;
  std::vector<wxStaticText*> values_;
};

// The working registers beside the stored ones; those that differ are bold.
class RegisterList : public wxListCtrl {
 public:
  RegisterList(wxWindow* parent, const WindowTexts& texts);
  void Show(const StationSnapshot& state);
};

// The last exchanges, the newest first.
class FrameList : public wxListCtrl {
 public:
  FrameList(wxWindow* parent, const WindowTexts& texts);
  void Show(const StationSnapshot& state);

 private:
  wxString OnGetItemText(long item, long column) const override;

  const WindowTexts& texts_;
  std::deque<LoggedExchange> exchanges_;
};

}  // namespace warpline::sim
