#include "sim/station/announcement.h"

namespace warpline::sim {

DiscoveryAnswer AnswerOf(const ProjectorSetup& setup, const Endpoint& lan) {
  DiscoveryAnswer answer;
  answer.TcpPort = lan.Port;
  answer.ModelClass = static_cast<std::uint8_t>(setup.ModelClass);
  answer.PowerState = static_cast<std::uint8_t>(setup.PowerState);
  answer.Selectable = setup.ModelClass >= kCorrectionClass;
  answer.Name = "Projector " + TextOf(lan);
  return answer;
}

}  // namespace warpline::sim
