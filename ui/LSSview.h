#pragma once

#include <wx/frame.h>

#include <functional>

#include "app/preview_geometry.h"

// The preview window. It only paints what it is given.

namespace warpline {

class LSSview : public wxFrame {
 public:
  // on_close: the user closed the window by its box; it has hidden itself.
  LSSview(wxWindow* owner, const wxString& title, std::function<void()> on_close);

  // Shows another drawing. Nothing is painted before the window system asks.
  void SetDrawing(PreviewDrawing drawing);

  // The size of the client area, in DIP.
  void SetPictureSize(const wxSize& dip);

  // The auxiliary lines over the drawing; the A key turns them on and off.
  bool AuxLinesShown() const { return aux_lines_; }

 private:
  void OnPaint(wxPaintEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnClose(wxCloseEvent& event);

  std::function<void()> on_close_;
  wxWindow* canvas_;
  PreviewDrawing drawing_;
  bool aux_lines_ = false;
};

}  // namespace warpline
