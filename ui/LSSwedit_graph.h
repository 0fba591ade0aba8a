#pragma once

#include <wx/window.h>

#include <functional>
#include <optional>

#include "app/curve_editor.h"
#include "ui/LSSwedit_painter.h"

// The graph of the curve editor as a control: mouse and keys go to the editor, and what it holds is
// painted.

namespace warpline {

class WaveGraph : public wxWindow {
 public:
  struct Handlers {
    std::function<void()> changed;  // the user moved or chose a point
    std::function<void()> settled;  // and let the mouse button or the key go
    std::function<void()> exact;    // wants to type the coordinates of the chosen point
  };

  // editor must outlive this object. The label is the window's own.
  WaveGraph(wxWindow* parent, CurveEditor& editor, WaveWords words, const wxString& label,
            Handlers handlers);

  // Where a point in graph units lies in the client area.
  wxPoint PixelOf(GraphPosition position) const;

 private:
  WaveLook Look() const;
  GraphPosition UnitsOf(const wxMouseEvent& event) const;
  void OnPaint(wxPaintEvent& event);
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnDoubleClick(wxMouseEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnEscape(wxKeyEvent& event);
  void BindFocus();
  void ChooseByTab(bool forward);
  void LetGo();
  void Hover(std::optional<GraphPosition> pointer);
  void Changed();

  CurveEditor& editor_;
  WaveWords words_;
  Handlers handlers_;
  std::optional<GraphPosition> pointer_;  // while it is over the graph
  bool hand_ = false;                     // and is shown as a hand
};

}  // namespace warpline
