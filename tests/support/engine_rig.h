#pragma once

#include <string>
#include <vector>

#include "app/engine.h"
#include "core/catalogue.h"
#include "tests/support/fake_beamlink.h"
#include "tests/support/recorder.h"
#include "tests/support/temp_folder.h"

// An engine in English whose messages are recorded, over a control library that only notes what it
// is asked, and a folder of its own.

namespace warpline {

using Texts = std::vector<std::string>;

struct EngineRig {
  EngineRig() : EngineRig([this] { return library_there ? library.Functions() : nullptr; }) {}

  // Over another library.
  explicit EngineRig(BeamlinkProvider provider) : engine(display, busy, std::move(provider)) {}

  // The box that a failure of the link calls for.
  std::string ErrorText(int number, int code) const {
    return TextOf(global, number) + "  Error : " + std::to_string(code);
  }

  AxisParameters& H() { return global.Correction.Axes[kHorizontal]; }
  AxisParameters& V() { return global.Correction.Axes[kVertical]; }

  RecordingDisplay display;
  RecordingBusy busy;
  FakeBeamlink library;
  bool library_there = true;
  TempFolder temp;
  Engine engine;
  LSSglobal& global = engine.global;
  const Messages& messages = engine.messages;
  LSSfile& files = engine.files;
  ProjectorLink& link = engine.link;
  ProjectorCommands& commands = engine.commands;
};

}  // namespace warpline
