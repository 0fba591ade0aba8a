#pragma once

#include <string>

#include "core/catalogue.h"
#include "link/projector_link.h"
#include "tests/support/fake_beamlink.h"
#include "tests/support/recorder.h"

// A projector link over the fake library, with everything that it needs.

namespace warpline {

struct LinkRig : Recorded {
  LinkRig() { ResetModel(global); }

  // The box that a failure of the link calls for.
  std::string ErrorText(int number, int code) const {
    return TextOf(global, number) + "  Error : " + std::to_string(code);
  }

  RecordingBusy busy;
  FakeBeamlink library;
  bool library_there = true;
  ProjectorLink link{messages, busy,
                     [this] { return library_there ? library.Functions() : nullptr; }};
};

}  // namespace warpline
