#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "core/correction.h"
#include "core/register_set.h"
#include "core/settings.h"
#include "core/texts.h"

// The state that the parts of the program share. One object, made in main and handed down by
// reference.

namespace warpline {

inline constexpr std::int32_t kEnglishOffset = 1000;

struct LSSglobal {
  std::int16_t Language = 0;                    // 1 Japanese, 0 English
  std::int32_t EnglishMode = 1;                 // 1 when Language is not 1
  std::int32_t MessageOffset = kEnglishOffset;  // added to a message number before it is looked up
  CorrectionData Correction;                    // what is edited, previewed, saved and sent
  std::array<AxisParameters, kAxisCount>
      SecondCopy{};                // the parameters as last reset, loaded or sent
  RegisterSet Registers;           // as last built, or read from a register file
  PanelSize Panel;                 // as the projector last reported it
  bool PanelReported = false;      // it has reported one
  std::int16_t ProjectorMode = 0;  // 0 normal, 1 geometric correction, 2 other
  bool OtherModeTold = false;      // the projector told another mode than 0 and 1, kept as 0
  warpline::Settings Settings;
  std::filesystem::path CurrentFile;  // the correction data file last opened or saved; empty: none
};

// Puts the correction model into its start state: screen type 0, both projection flags 0,
// parameters (both copies) and curves as that type resets them. Language, settings and file name
// stay.
void ResetModel(LSSglobal& global);

// Chooses the offset of all texts: Japanese when the value is exactly 1, else English.
void SetLanguage(LSSglobal& global, std::int32_t language);

// 1 (Japanese) or 0: what the system says, overridden by the last word of the command line (words
// stand between blanks and tabs) that begins with "/" or "-": Japanese when the rest is "J" or "j",
// English otherwise.
std::int16_t DecideLanguage(bool system_is_japanese, std::string_view command_line);

// Sets Language, EnglishMode and the offset together.
void ApplyLanguage(LSSglobal& global, std::int16_t language);
void ApplyLanguage(LSSglobal& global, Language language);

// The language in force.
inline Language LanguageOf(const LSSglobal& global) {
  return LanguageOf(global.Language);
}

// The folder of settings and data below the user's application-data folder, and the settings file
// in it.
std::filesystem::path DataFolder(const std::filesystem::path& application_data);
inline constexpr std::string_view kSettingsFileName = "WarplineTool.ini";

}  // namespace warpline
