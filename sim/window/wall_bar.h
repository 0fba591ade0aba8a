#pragma once

#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/slider.h>
#include <wx/stattext.h>

#include <functional>

#include "picture/wall.h"
#include "sim/texts/projector_texts.h"

namespace warpline::sim {

// The controls of the wall: its shape, distance, curvature, and where the lens's axis lies.
class WallBar : public wxPanel {
 public:
  WallBar(wxWindow* parent, const ProjectorTexts& texts, std::function<void(const Wall&)> changed);
  const Wall& Chosen() const { return wall_; }

 private:
  wxChoice* Choice(const char* name, ProjectorText first, int count);
  wxSlider* Slider(const char* name, int least, int most, int value);
  wxSizer* LayControls();
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
};

}  // namespace warpline::sim
