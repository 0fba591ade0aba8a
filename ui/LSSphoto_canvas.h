#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>

#include "app/photo_session.h"
#include "ui/LSSphoto_painter.h"

namespace warpline {

// The photograph as a control: mouse and keys move what lies over it.
class PhotoCanvas : public wxWindow {
 public:
  struct Handlers {
    std::function<void()> changed;  // something was moved or selected
    std::function<void()> settled;  // and the mouse button let go
  };

  // session must outlive this object. The label is the window's own; hint is said where there is no
  // photograph.
  PhotoCanvas(wxWindow* parent, PhotoSession& session, const wxString& label, const wxString& hint,
              Handlers handlers);

  // There is another photograph, or it was turned.
  void ShowPhoto();

  bool Dragging() const { return dragging_; }

 private:
  PhotoPlacement Placement() const;
  void OnPaint(wxPaintEvent& event);
  void OnPress(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void OnKey(wxKeyEvent& event);
  void OnCharHook(wxKeyEvent& event);
  bool MoveByKey(const wxKeyEvent& event);
  bool ActByKey(int key);
  void SelectByTab(bool forward);
  void EndLine();
  void LetGo();
  void Changed();

  PhotoSession& session_;
  wxString hint_;
  Handlers handlers_;
  wxBitmap shown_;  // as large as it is shown
  bool dragging_ = false;
  PlanePoint grabbed_beside_;  // the handle, from where it was grabbed
};

}  // namespace warpline
