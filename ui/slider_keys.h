#pragma once

// The keys that move a slider.

namespace warpline {

struct SliderKey {
  int key;    // the toolkit's number
  int code;   // as the main controller takes its release; 0: a page key, or one to the slider's end
  int steps;  // what a press adds to the slider's value, in steps and in large steps
  int large_steps;
};

// Null when the key is none of them. Shift is one, as its release sends what arrows with it did.
const SliderKey* FindSliderKey(int key);

}  // namespace warpline
