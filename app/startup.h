#pragma once

#include <cstdint>
#include <filesystem>

#include "core/LSSglobal.h"
#include "core/messages.h"

// The settings file at the start and at the end of a run. application_data is the user's
// application-data folder, positions are those of the main window in device units.

namespace warpline {

// Puts the defaults into the settings, and the settings file over them when it is a regular file
// and can be read as a whole. Says nothing; false when the defaults stand alone.
bool ReadSettings(LSSglobal& global, const std::filesystem::path& application_data,
                  std::int32_t window_x = 0, std::int32_t window_y = 0);

// As ReadSettings, and makes the folder for settings and data with its parents first.
bool LoadSettings(LSSglobal& global, const std::filesystem::path& application_data,
                  std::int32_t window_x, std::int32_t window_y);

// Writes the settings file with this window position, its folder made again when it is gone. False
// when that failed: a message has named the file.
bool SaveSettings(LSSglobal& global, const Messages& messages,
                  const std::filesystem::path& application_data, std::int32_t window_x,
                  std::int32_t window_y);

// The folder for settings and data, made level by level when it is missing. A folder that cannot be
// made is left to whoever writes into it.
std::filesystem::path MakeDataFolder(const std::filesystem::path& application_data);

}  // namespace warpline
