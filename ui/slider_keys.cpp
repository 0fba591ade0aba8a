#include "ui/slider_keys.h"

#include <wx/defs.h>

#include <algorithm>
#include <array>

namespace warpline {
namespace {

constexpr int kToTheEnd = 1 << 17;  // more than any slider's range

constexpr std::array<SliderKey, 17> kSliderKeys{{
    {WXK_PAGEUP, 0, 0, 1},
    {WXK_PAGEDOWN, 0, 0, -1},
    {WXK_END, 0, kToTheEnd, 0},
    {WXK_HOME, 0, -kToTheEnd, 0},
    {WXK_LEFT, 37, -1, 0},
    {WXK_UP, 38, 1, 0},
    {WXK_RIGHT, 39, 1, 0},
    {WXK_DOWN, 40, -1, 0},
    {WXK_NUMPAD_PAGEUP, 0, 0, 1},
    {WXK_NUMPAD_PAGEDOWN, 0, 0, -1},
    {WXK_NUMPAD_END, 0, kToTheEnd, 0},
    {WXK_NUMPAD_HOME, 0, -kToTheEnd, 0},
    {WXK_NUMPAD_LEFT, 37, -1, 0},
    {WXK_NUMPAD_UP, 38, 1, 0},
    {WXK_NUMPAD_RIGHT, 39, 1, 0},
    {WXK_NUMPAD_DOWN, 40, -1, 0},
    {WXK_SHIFT, 16, 0, 0},
}};

}  // namespace

const SliderKey* FindSliderKey(int key) {
  const auto* row = std::ranges::find(kSliderKeys, key, &SliderKey::key);
  return row == kSliderKeys.end() ? nullptr : row;
}

}  // namespace warpline
