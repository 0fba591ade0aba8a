#pragma once

#include <wx/bitmap.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "app/picture_control.h"
#include "toolkit/displays.h"
#include "toolkit/native/display_sleep.h"
#include "ui/overlay_painter.h"

// The window that fills a display with a test picture and takes the keys in front of it.

namespace warpline {

class PictureWindow : public wxFrame {
 public:
  struct Handlers {
    std::function<bool()> takes_keys;               // false while they have to be dropped
    std::function<std::filesystem::path()> choose;  // a picture's file; empty: the user cancelled
    std::function<void()> ended;                    // by the user, who asks for End
  };

  // control must outlive this window.
  PictureWindow(wxWindow* owner, const wxString& title, PictureControl& control, Handlers handlers);

  // Fills the display, from where it may be on another one. Shows itself.
  void ShowOn(const DisplayPlace& display);
  const DisplayPlace& Display() const { return display_; }

  // Hides itself; the display may sleep again.
  void End();

  // The overlay may say something else.
  void ShowOverlay();

 private:
  void Place();
  void CheckPlace();
  void ShowPicture();
  void RefreshOverlay();
  void TakePictureFile();
  void OnPaint(wxPaintEvent& event);
  void OnKeyDown(wxKeyEvent& event);
  void OnKeyUp(wxKeyEvent& event);
  void OnClose(wxCloseEvent& event);

  PictureControl& control_;
  Handlers handlers_;
  wxWindow* canvas_;
  DisplayPlace display_;
  std::unique_ptr<DisplaysAwake> awake_;
  wxBitmap picture_;
  OverlayLayout overlay_;
  double opacity_ = 0;
  bool mended_ = false;
  wxTimer check_;
  wxTimer fade_;
};

}  // namespace warpline
