#pragma once

#include "app/exchange_recording.h"
#include "app/projector_commands.h"
#include "core/LSSglobal.h"
#include "core/interfaces.h"
#include "core/messages.h"
#include "files/LSSfile.h"
#include "link/projector_link.h"

// Everything below the windows, put together once: the shared record, its messages, the files and
// the projector.

namespace warpline {

struct Engine {
  // Both must outlive this object. The model is in its start state, the language is English.
  Engine(MessageDisplay& display, BusyIndicator& busy_indicator,
         BeamlinkProvider beamlink = BeamlinkFromProgramFolder());
  Engine(const Engine&) = delete;
  Engine& operator=(const Engine&) = delete;

  // In the order in which they need each other.
  LSSglobal global;
  BusyIndicator& busy;
  HeldMessages held;
  Messages messages;
  LSSfile files;
  ProjectorLink link;
  ExchangeRecording recording;
  ProjectorCommands commands;
};

}  // namespace warpline
