#include "app/local_time.h"

#include <ctime>

namespace warpline {

std::string LocalTime(WallTime time, const char* format) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  const std::tm* local = std::localtime(&seconds);
  std::string text(32, '\0');
  text.resize(local == nullptr ? 0 : std::strftime(text.data(), text.size(), format, local));
  return text;
}

}  // namespace warpline
