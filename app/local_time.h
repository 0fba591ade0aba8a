#pragma once

#include <chrono>
#include <string>

// A moment as the clock on the wall tells it.

namespace warpline {

using WallTime = std::chrono::system_clock::time_point;

inline constexpr const char* kDateAndTime = "%Y-%m-%d %H:%M";

// In the local time zone, by a format of std::strftime that makes at most 31 characters.
std::string LocalTime(WallTime time, const char* format);

}  // namespace warpline
