#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>

#include <string>

#include "sim/station/station.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {

// The faults in force, what struck lately, and the controls that put a rule in force.
class FaultPane : public wxPanel {
 public:
  FaultPane(wxWindow* parent, const ProjectorTexts& texts, Station& station);
  void Show(const StationSnapshot& state);

 private:
  wxSizer* ActiveBox();
  wxSizer* NewBox();
  wxSizer* LayNewBox(wxButton* add);
  wxSpinCtrl* Number(const char* name, int least, int most, int value);
  void Follow();
  void Add();
  std::string RuleText() const;

  const ProjectorTexts& texts_;
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
