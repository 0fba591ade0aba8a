#pragma once

#include <wx/dialog.h>
#include <wx/timer.h>

#include <filesystem>
#include <functional>

#include "app/photo_session.h"
#include "ui/LSSmain_parts.h"
#include "ui/LSSphoto_canvas.h"
#include "ui/LSSphoto_steps.h"
#include "ui/dialog_controls.h"
#include "ui/picture_on_display.h"

// The window that straightens from a photograph. It is open beside the main window, since the marks
// on a display take keys of their own meanwhile.

namespace warpline {

// What the window works with; everything must outlive it.
struct PhotoParts {
  Engine& engine;
  MainController& controller;
  PictureOnDisplay& picture;
  decltype(FileChoosers::open) choose;                          // a photograph
  std::function<void(const std::function<void()>&)> when_idle;  // acts when no command is at work
};

class LSSphoto : public wxDialog {
 public:
  LSSphoto(wxTopLevelWindow* owner, PhotoParts parts);

  // Takes a file's photograph; in the window it is told when it is none.
  void Open(const std::filesystem::path& file);

 private:
  void BindSteps();
  void BindWindow();
  void SetSizes();
  void ShowMarks();
  void ChooseFile();
  void Paste();
  void Take(const std::function<bool()>& take);
  void Turn(bool right);
  void DrawLine();
  void ChooseResult(long row);
  void Edited();
  void Settle();
  void ShowSession();
  void Confirm();
  void Leave();

  PhotoParts parts_;
  PhotoSession session_;
  PhotoCanvas* canvas_;
  wxStaticText* handle_;  // what is selected
  PhotoSteps* steps_;
  DialogButtons buttons_;
  wxTimer rest_;  // since the last key
};

}  // namespace warpline
