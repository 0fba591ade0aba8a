#include "toolkit/native/slider_place.h"
#include "toolkit/native/toolkit_symbols_posix.h"

namespace warpline {
namespace {

struct Rectangle {  // GTK's
  int x, y, width, height;
};

}  // namespace

int ThumbCentre(const wxSlider& slider, int value) {
  Rectangle track{0, 0, slider.GetClientSize().x, 0};
  int start = 0;
  int end = 0;
  auto* track_of = ToolkitFunction<void(void*, Rectangle*)>("gtk_range_get_range_rect");
  auto* thumb_of = ToolkitFunction<void(void*, int*, int*)>("gtk_range_get_slider_range");
  if (track_of != nullptr && thumb_of != nullptr) {
    track_of(slider.GetHandle(), &track);
    thumb_of(slider.GetHandle(), &start, &end);
  }
  return ThumbCentre(slider, value, track.x, track.x + track.width, end - start);
}

}  // namespace warpline
