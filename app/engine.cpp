#include "app/engine.h"

#include <utility>

namespace warpline {

Engine::Engine(MessageDisplay& display, BusyIndicator& busy_indicator, BeamlinkProvider beamlink)
    : busy(busy_indicator),
      held(display),
      messages(global, held),
      files(messages),
      link(messages, busy, std::move(beamlink)),
      commands(global, link, messages, held, busy) {
  ResetModel(global);
}

}  // namespace warpline
