#include "core/settings.h"

#include <array>

#include "core/fault.h"

namespace warpline {

Settings DefaultSettings(std::int32_t window_x, std::int32_t window_y) {
  Settings settings;
  settings.DialogPosX = window_x;
  settings.DialogPosY = window_y;
  return settings;
}

std::int32_t TimeOutOf(const Settings& settings) {
  static constexpr std::array<std::int32_t Settings::*, 3> kTimeOuts{
      &Settings::SerialTimeOut, &Settings::LANTimeOut, &Settings::USBTimeOut};
  const auto device = static_cast<std::size_t>(settings.ConnectDevice);
  if (device >= kTimeOuts.size()) throw Fault(FaultCode::kIndexOutOfRange);
  return settings.*kTimeOuts[device];
}

}  // namespace warpline
