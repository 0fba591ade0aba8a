#pragma once

#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>

#include <string>

#include "sim/recording/window_texts.h"
#include "sim/station/station.h"

namespace warpline::sim {

// The faults in force, what struck lately, and the controls that put a rule in force.
class FaultPane : public wxPanel {
 public:
  FaultPane(wxWindow* parent, const WindowTexts& texts, Station& station);
  void Show(const StationSnapshot& state);

 private:
  wxSizer* ActiveBox();
  wxSizer* NewBox();
  wxSpinCtrl* Number(const char* name, int least, int most, int value);
  void Follow();
  void Add();
  std::string RuleText() const;

  const WindowTexts& texts_;
  Station& station_;
  wxListBox* active_ = nullptr;
  wxListBox* strikes_ = nullptr;
  wxChoice* what_ = nullptr;
  wxChoice* when_ = nullptr;
  wxChoice* kind_ = nullptr;
  wxSpinCtrl* count_ = nullptr;
  wxSpinCtrl* delay_ = nullptr;
  wxSpinCtrl* jitter_ = nullptr;
};

}  // namespace warpline::sim
