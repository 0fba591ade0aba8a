#pragma once

#include "app/picture_control.h"

namespace warpline {

// What a key on the test picture led to.
enum class PictureKeyDone {
  kNothing,  // it is none of its keys
  kOther,
  kPicture,  // another picture
  kFile,     // the user's own picture, of a file to be chosen
  kEnd,      // the picture goes
};

// Does what the key asks for, but for those that move a slider. key and modifiers as the toolkit
// numbers them.
PictureKeyDone PressPictureKey(PictureControl& control, int key, int modifiers);

}  // namespace warpline
