#include "ui/LSSwedit_coordinates.h"

#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "core/tool_texts.h"
#include "toolkit/layout.h"
#include "toolkit/native/accessible_name.h"
#include "ui/wx_text.h"

namespace warpline {
namespace {

constexpr const char* kWidestCoordinate = "0.000000";

wxTextCtrl* CreateBox(wxWindow* parent, const wxString& name, const wxString& caption) {
  auto* box = new wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                             wxTE_PROCESS_ENTER | wxTE_RIGHT, wxDefaultValidator, name);
  box->SetMinSize(wxSize(box->GetSizeFromTextSize(box->GetTextExtent(kWidestCoordinate).x).x, -1));
  SetAccessibleName(*box, caption);
  return box;
}

}  // namespace

CoordinateBoxes::CoordinateBoxes(wxWindow* parent, const LSSglobal& global, CurveEditor& editor,
                                 Handlers handlers)
    : global_(global),
      editor_(editor),
      handlers_(std::move(handlers)),
      boxes_{{{CreateBox(parent, "posx_val", "X"), &PointReadOut::x, &CurveEditor::BoundsOfX,
               &CurveEditor::SetSelectedX},
              {CreateBox(parent, "posy_val", "Y"), &PointReadOut::y, &CurveEditor::BoundsOfY,
               &CurveEditor::SetSelectedY}}} {
  for (const Box& box : boxes_) Bind(box);
}

wxSizer* CoordinateBoxes::Line() const {
  auto* line = new wxBoxSizer(wxHORIZONTAL);
  wxWindow* parent = boxes_[0].control->GetParent();
  const auto add = [&](const char* name, wxWindow* box) {
    line->Add(new wxStaticText(parent, wxID_ANY, name), AtCentre());
    line->Add(box, AtCentre().Border(wxLEFT | wxRIGHT, Gap(parent)));
  };
  add("X", boxes_[0].control);
  add("Y", boxes_[1].control);
  return line;
}

// Left with something that is no number, a box shows the point's coordinate again. While the focus
// is on its way nothing may begin that takes it away again.
void CoordinateBoxes::Bind(const Box& box) {
  box.control->Bind(wxEVT_TEXT_ENTER, [this, box](wxCommandEvent&) {
    if (TakeFrom(box) != Typed::kRefused) handlers_.moved();
    box.control->SelectAll();
  });
  box.control->Bind(wxEVT_KILL_FOCUS, [this, box](wxFocusEvent& event) {
    const Typed typed = TakeFrom(box);
    Show();
    if (typed == Typed::kTaken) box.control->CallAfter(handlers_.moved);
    event.Skip();
  });
}

void CoordinateBoxes::Show() {
  const PointReadOut read_out = editor_.ReadOut();
  for (const Box& box : boxes_) {
    box.control->ChangeValue(WxText(read_out.*box.figures));
    box.control->Enable((editor_.*box.bounds)().has_value());
  }
}

bool CoordinateBoxes::IsTyping() const {
  const PointReadOut read_out = editor_.ReadOut();
  return std::any_of(boxes_.begin(), boxes_.end(), [&read_out](const Box& box) {
    return box.control->GetValue().utf8_string() != read_out.*box.figures;
  });
}

void CoordinateBoxes::Take() {
  bool taken = false;
  for (const Box& box : boxes_) taken = TakeFrom(box) == Typed::kTaken || taken;
  if (taken) handlers_.moved();
}

void CoordinateBoxes::BeginTyping() {
  for (const Box& box : boxes_) {
    if (!box.control->IsEnabled()) continue;
    box.control->SetFocus();
    box.control->SelectAll();
    return;
  }
}

// The figures that the box shows anyway may be rounded, so they are no number to take.
CoordinateBoxes::Typed CoordinateBoxes::TakeFrom(const Box& box) {
  const std::string typed = box.control->GetValue().utf8_string();
  const auto bounds = (editor_.*box.bounds)();
  if (!bounds || typed == editor_.ReadOut().*box.figures) return Typed::kNothing;
  const std::optional<double> value = CoordinateOf(typed);
  if (!value) {
    handlers_.refused(WxText(
        FilledText(TextOf(global_, ToolText::kCoordinateWanted),
                   {CoordinateText(bounds->lowest, 3), CoordinateText(bounds->highest, 3)})));
    return Typed::kRefused;
  }
  (editor_.*box.set)(*value);
  return Typed::kTaken;
}

}  // namespace warpline
