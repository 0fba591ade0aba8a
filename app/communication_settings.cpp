#include "app/communication_settings.h"

#include "app/address_check.h"
#include "platform/network.h"

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

SearchOptions SearchOptionsOf(const LSSglobal& global, SearchWindow window) {
  return {global.Settings.IPAddress, LocalIPv4Addresses(), global.Language == 1, window};
}

void StoreFoundAddress(const std::string& address, Settings& settings) {
  settings.IPAddress = address;
}

}  // namespace warpline
