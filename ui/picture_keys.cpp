#include "ui/picture_keys.h"

#include <wx/defs.h>

#include <algorithm>
#include <array>

#include "model/parameter_groups.h"

namespace warpline {
namespace {

struct KeyRow {
  int key;
  int modifiers;
  void (*press)(PictureControl& control);
};

constexpr int kCtrlShift = wxMOD_CONTROL | wxMOD_SHIFT;

// Two rows need no way back: Shift with Tab does the same.
constexpr std::array kKeys{
    KeyRow{WXK_TAB, wxMOD_NONE, [](PictureControl& c) { c.NextRow(); }},
    KeyRow{WXK_TAB, wxMOD_SHIFT, [](PictureControl& c) { c.NextRow(); }},
    KeyRow{'S', wxMOD_NONE, [](PictureControl& c) { c.AskToStore(); }},
    KeyRow{WXK_RETURN, wxMOD_NONE, [](PictureControl& c) { c.Confirm(); }},
    KeyRow{WXK_NUMPAD_ENTER, wxMOD_NONE, [](PictureControl& c) { c.Confirm(); }},
    KeyRow{'Z', wxMOD_CONTROL, [](PictureControl& c) { c.Undo(); }},
    KeyRow{'Y', wxMOD_CONTROL, [](PictureControl& c) { c.Redo(); }},
    KeyRow{'Z', kCtrlShift, [](PictureControl& c) { c.Redo(); }},
    KeyRow{'H', wxMOD_NONE, [](PictureControl& c) { c.ToggleKeys(); }},
    KeyRow{'O', wxMOD_NONE, [](PictureControl& c) { c.MoveOverlay(); }},
};

// The number on a key of digits, 0 on any other.
int DigitOf(int key) {
  if (key >= '1' && key <= '9') return key - '0';
  return key >= WXK_NUMPAD1 && key <= WXK_NUMPAD9 ? key - WXK_NUMPAD0 : 0;
}

}  // namespace

PictureKeyDone PressPictureKey(PictureControl& control, int key, int modifiers) {
  if (key == WXK_ESCAPE) return control.Escape() ? PictureKeyDone::kOther : PictureKeyDone::kEnd;
  const int digit = DigitOf(key);
  if (digit != 0 && modifiers == wxMOD_NONE) {
    const PictureControl::Choice choice = control.ChoosePicture(digit);
    if (choice == PictureControl::Choice::kFileWanted) return PictureKeyDone::kFile;
    return choice == PictureControl::Choice::kTaken ? PictureKeyDone::kPicture
                                                    : PictureKeyDone::kOther;
  }
  if (digit != 0 && digit <= kGroupCount && modifiers == wxMOD_CONTROL) {
    control.SelectGroup(digit - 1);
    return PictureKeyDone::kOther;
  }
  const auto row = std::ranges::find_if(
      kKeys, [&](const KeyRow& each) { return each.key == key && each.modifiers == modifiers; });
  if (row == kKeys.end()) return PictureKeyDone::kNothing;
  row->press(control);
  return PictureKeyDone::kOther;
}

}  // namespace warpline
