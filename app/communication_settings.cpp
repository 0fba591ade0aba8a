#include "app/communication_settings.h"

#include "app/address_check.h"

namespace warpline {

CommunicationEntry CommunicationEntryOf(const Settings& settings) {
  return {settings.ConnectDevice, settings.ComPort, settings.ComSpeed, settings.IPAddress,
          settings.USBPort};
}

bool StoreCommunication(const CommunicationEntry& entry, Settings& settings,
                        const Messages& messages) {
  if (entry.ConnectDevice == kLan && !IsValidProjectorAddress(entry.IPAddress)) {
    messages.ShowText(kMsgAddressInvalid);
    return false;
  }
  settings.ConnectDevice = entry.ConnectDevice;
  settings.ComPort = entry.ComPort;
  settings.ComSpeed = entry.ComSpeed;
  settings.IPAddress = entry.IPAddress;
  settings.USBPort = entry.USBPort;
  return true;
}

}  // namespace warpline
