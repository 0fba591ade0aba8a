#pragma once

#include "sim/device/projector.h"
#include "sim/line/discovery.h"

namespace warpline::sim {

// What a projector that serves the LAN there tells of itself. It can be chosen when it has a
// geometric correction at all.
DiscoveryAnswer AnswerOf(const ProjectorSetup& setup, const Endpoint& lan);

}  // namespace warpline::sim
