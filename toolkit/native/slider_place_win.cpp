#include "toolkit/native/slider_place.h"

#include <wx/msw/wrapcctl.h>

namespace warpline {

int ThumbCentre(const wxSlider& slider, int value) {
  RECT track{};
  RECT thumb{};
  SendMessageW(slider.GetHandle(), TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&track));
  SendMessageW(slider.GetHandle(), TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&thumb));
  return ThumbCentre(slider, value, track.left, track.right, thumb.right - thumb.left);
}

}  // namespace warpline
