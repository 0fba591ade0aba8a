#include "app/engine.h"

#include <utility>

namespace warpline {

Engine::Engine(MessageDisplay& display, BusyIndicator& busy_indicator, BeamlinkProvider beamlink)
    : busy(busy_indicator),
      held(display),
      messages(global, held),
      files(messages),
      link(messages, busy, std::move(beamlink)),
      recording(link, messages),
      commands(global, link, messages, held, busy) {
  ResetModel(global);
  commands.WatchLink([this] { recording.Look(); });
}

}  // namespace warpline
