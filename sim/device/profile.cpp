#include "sim/device/profile.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "core/conversions.h"

namespace warpline::sim {
namespace {

// What is wrong with a profile.
struct ProfileError {
  NamedText reason;
};

constexpr std::array<std::string_view, 6> kKeys{"name",   "panel",         "class",
                                                "reply5", "reports_panel", "takes_commands"};

void CheckKeys(const nlohmann::json& json) {
  if (!json.is_object()) throw ProfileError{{"NotAnObject"}};
  for (const auto& [key, value] : json.items()) {
    if (std::ranges::find(kKeys, key) == kKeys.end()) {
      throw ProfileError{{"NoSuchKey", {key}}};
    }
  }
}

int ByteOf(const nlohmann::json& json, const char* key, int missing) {
  if (!json.contains(key)) return missing;
  const nlohmann::json& value = json.at(key);
  if (!value.is_number_integer() || value < 0 || value > 255) {
    throw ProfileError{{"KeyNeedsByte", {key}}};
  }
  return value.get<int>();
}

Profile ProfileOf(const nlohmann::json& json) {
  CheckKeys(json);
  Profile profile;
  ProjectorSetup& projector = profile.Projector;
  profile.Name = json.value("name", "");
  projector.ModelClass = ByteOf(json, "class", projector.ModelClass);
  projector.Reply5 = ByteOf(json, "reply5", projector.Reply5);
  projector.ReportsPanel = json.value("reports_panel", projector.ReportsPanel);
  projector.TakesCommands = json.value("takes_commands", projector.TakesCommands);
  if (!json.contains("panel")) return profile;
  const std::optional<PanelSize> panel = PanelSizeOf(json.at("panel").get<std::string>());
  if (!panel) throw ProfileError{{"KeyNeedsSize", {"panel"}}};
  projector.Panel = *panel;
  return profile;
}

}  // namespace

std::optional<PanelSize> PanelSizeOf(std::string_view text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string_view::npos) return std::nullopt;
  const std::optional<int> width = WholeNumber(text.substr(0, cross), kMinPanel, kMaxPanel);
  const std::optional<int> height = WholeNumber(text.substr(cross + 1), kMinPanel, kMaxPanel);
  if (!width || !height) return std::nullopt;
  return PanelSize{*width, *height};
}

std::optional<Profile> ParseProfile(std::string_view text, NamedText& reason) {
  try {
    return ProfileOf(nlohmann::json::parse(text));
  } catch (const ProfileError& error) {
    reason = error.reason;
  } catch (const nlohmann::json::exception& error) {
    reason = {"BadJson", {error.what()}};
  }
  return std::nullopt;
}

}  // namespace warpline::sim
