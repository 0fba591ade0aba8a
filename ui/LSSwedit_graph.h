#pragma once

#include <wx/window.h>

#include <functional>

#include "app/curve_editor.h"
#include "ui/LSSwedit_painter.h"

// The graph of the curve editor as a control: mouse and keys go to the editor, and what it holds is
// painted.

namespace warpline {

class WaveGraph : public wxWindow {
 public:
  // editor must outlive this object. changed: the user moved or chose a point.
  WaveGraph(wxWindow* parent, CurveEditor& editor, const wxString& label,
            std::function<void()> changed);

  // Where a point in graph units lies in the client area.
  wxPoint PixelOf(GraphPosition position) const;

 private:
  WaveLook Look() const;
  GraphPosition UnitsOf(const wxMouseEvent& event) const;
  void OnPaint(wxPaintEvent& event);
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnRelease(wxMouseEvent& event);
  void OnKey(wxKeyEvent& event);
  void ChooseByTab(bool forward);
  void LetGo();
  void Changed();

  CurveEditor& editor_;
  std::function<void()> changed_;
};

}  // namespace warpline
