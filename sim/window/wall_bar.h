#pragma once

#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/slider.h>
#include <wx/stattext.h>

#include <functional>
#include <string>

#include "picture/wall.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {

// The controls of the wall: its shape, distance, curvature, and where the lens's axis lies.
class WallBar : public wxPanel {
 public:
  WallBar(wxWindow* parent, const ProjectorTexts& texts, const Wall& first,
          std::function<void(const Wall&)> changed);
  const Wall& Chosen() const { return wall_; }

  // Tells that the uncorrected picture is shown, or else how the wall is bent and by which key the
  // uncorrected picture is shown.
  void TellUncorrected(bool uncorrected);

  // Tells that the camera's photograph is black, and why.
  void TellBlind();

 private:
  wxChoice* Choice(const char* name, ProjectorText first, int count);
  wxSlider* Slider(const char* name, double least, double most, double value, int steps);
  wxStaticText* ValueText(const char* name, const std::string& widest);
  wxSizer* LayControls();
  std::string CurvatureText() const;
  void Follow();

  const ProjectorTexts& texts_;
  std::function<void(const Wall&)> changed_;
  Wall wall_;
  wxChoice* shape_;
  wxSlider* distance_;
  wxStaticText* distance_text_;
  wxSlider* curvature_;
  wxStaticText* curvature_text_;
  wxChoice* axis_;
  wxStaticText* hint_;
};

}  // namespace warpline::sim
