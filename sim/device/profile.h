#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/texts.h"
#include "sim/device/projector.h"

// Profiles: what a projector is, as a small JSON file. All keys but "name" may be missing; what is
// missing is as ProjectorSetup has it.
//   name            a sentence for people
//   panel           "WxH", kMinPanel..kMaxPanel pixels each way
//   class, reply5   0..255
//   reports_panel   false: asked for its panel, it says that this is not supported
//   takes_commands  false: an old one that takes registers as a whole block alone

namespace warpline::sim {

struct Profile {
  std::string Name;
  ProjectorSetup Projector;
};

// The panel size of a text like "1024x768"; nothing for every other text and size.
std::optional<PanelSize> PanelSizeOf(std::string_view text);

// The profile of a text; else nothing, and the reason.
std::optional<Profile> ParseProfile(std::string_view text, NamedText& reason);

}  // namespace warpline::sim
