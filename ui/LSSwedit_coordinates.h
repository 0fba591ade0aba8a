#pragma once

#include <wx/sizer.h>
#include <wx/textctrl.h>

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "app/curve_editor.h"
#include "core/LSSglobal.h"

// The curve editor's two boxes for the coordinates of the chosen point. They show them, and what is
// typed moves the point when Enter is pressed or the box is left.

namespace warpline {

class CoordinateBoxes {
 public:
  struct Handlers {
    std::function<void()> moved;                   // a typed number was taken
    std::function<void(const wxString&)> refused;  // what a box wants instead of what it holds
  };

  // All must outlive this object; the boxes are children of parent.
  CoordinateBoxes(wxWindow* parent, const LSSglobal& global, CurveEditor& editor,
                  Handlers handlers);

  // Both boxes with their names, in a line.
  wxSizer* Line() const;

  // The chosen point's coordinates; a box whose coordinate cannot change takes none.
  void Show();

  // Whether a box holds what was not taken yet.
  bool IsTyping() const;

  // Takes what was typed and not taken yet.
  void Take();

  // The user wants to type: the first box that takes a number gets the focus, its figures selected.
  void BeginTyping();

 private:
  enum class Typed { kNothing, kRefused, kTaken };
  struct Box {
    wxTextCtrl* control;
    std::string PointReadOut::*figures;
    std::optional<CoordinateBounds> (CurveEditor::*bounds)() const;
    void (CurveEditor::*set)(double value);
  };

  void Bind(const Box& box);
  Typed TakeFrom(const Box& box);

  const LSSglobal& global_;
  CurveEditor& editor_;
  Handlers handlers_;
  std::array<Box, 2> boxes_;
};

}  // namespace warpline
