#pragma once

#include <wx/popupwin.h>
#include <wx/weakref.h>

#include <vector>

#include "app/picture_control.h"
#include "toolkit/displays.h"

namespace warpline {

// Texts in the middle of the displays, which tell one from the other.
class DisplayLabels {
 public:
  ~DisplayLabels() { Hide(); }

  // One text a display; that of the marked one stands out.
  void Show(wxWindow& owner, const std::vector<DisplayPlace>& displays,
            const std::vector<PictureOverlay>& texts, std::size_t marked);
  void Hide();

 private:
  std::vector<wxWeakRef<wxPopupWindow>> labels_;
};

}  // namespace warpline
