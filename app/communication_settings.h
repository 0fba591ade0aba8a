#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/LSSglobal.h"
#include "core/messages.h"
#include "core/settings.h"
#include "link/projector_search.h"

// What the communication settings dialog edits and decides, without its window, and what a search
// for projectors starts with and leaves.

namespace warpline {

// The entries of the dialog's lists, in the order of the stored indices; the speeds stand with the
// settings.
inline constexpr std::array<std::string_view, kPortCount> kComPortNames{
    "COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8"};
inline constexpr std::array<std::string_view, kPortCount> kUsbPortNames{
    "USB1", "USB2", "USB3", "USB4", "USB5", "USB6", "USB7", "USB8"};

// The fields of the settings record that the dialog shows, as it holds them until it is confirmed.
struct CommunicationEntry {
  std::int16_t ConnectDevice = kLan;
  std::int16_t ComPort = 0;
  std::int16_t ComSpeed = 0;
  std::string IPAddress;
  std::int16_t USBPort = 0;

  bool operator==(const CommunicationEntry&) const = default;
};

CommunicationEntry CommunicationEntryOf(const Settings& settings);

// Puts all fields into the settings. False, with the message shown and nothing stored, when the
// connection is by LAN and the address is none that a projector can have.
bool StoreCommunication(const CommunicationEntry& entry, Settings& settings,
                        const Messages& messages);

// The address in the settings comes first, on all local networks, in the tool's language.
SearchOptions SearchOptionsOf(const LSSglobal& global, SearchWindow window);

// The projector found becomes the one of the settings. Writing the settings file is left to the
// caller.
void StoreFoundAddress(const std::string& address, Settings& settings);

}  // namespace warpline
