#include "sim/station/state_file.h"

#include <nlohmann/json.hpp>

#include "model/registers.h"
#include "sim/device/register_layout.h"

namespace warpline::sim {
namespace {

using Json = nlohmann::ordered_json;

Json RegistersJson(const RegisterSet& registers) {
  Json json = Json::object();
  for (std::size_t entry = 0; entry < kEntryCount; ++entry) {
    json[EntryName(entry)] = EntryText(registers, entry);
  }
  return json;
}

Json LineScalesJson(const RegisterSet& registers, PanelSize panel) {
  return {{"horizontal", RebuildLineScales(registers[kHorizontal], LineCount(panel, kHorizontal))},
          {"vertical", RebuildLineScales(registers[kVertical], LineCount(panel, kVertical))}};
}

bool IsPanel(const Json& json, PanelSize panel) {
  // As they stand: a number of any size may be there, which no integer need hold.
  return json.at("width") == panel.Width && json.at("height") == panel.Height;
}

RegisterSet RegistersOf(const Json& json) {
  RegisterSet registers;
  for (std::size_t entry = 0; entry < kEntryCount; ++entry) {
    EntryText(registers, entry) = json.at(EntryName(entry)).get<std::string>();
  }
  return registers;
}

}  // namespace

std::string_view PowerName(Power power) {
  static constexpr std::array<std::string_view, 4> kNames{"standby", "on", "warming up",
                                                          "cooling down"};
  return kNames[static_cast<std::size_t>(power)];
}

std::string StateText(const SimulatedProjector& projector, const StateExtras& extras) {
  const ProjectorSetup& setup = projector.Setup();
  const Counters& count = projector.Count();
  Json json;
  json["panel"] = {{"width", setup.Panel.Width}, {"height", setup.Panel.Height}};
  json["panel_reported"] = setup.ReportsPanel;
  json["class"] = setup.ModelClass;
  json["reply5"] = setup.Reply5;
  json["power"] = PowerName(setup.PowerState);
  json["mode"] = projector.Mode();
  json["wished_mode"] = extras.ModeOneAsked ? Json(1) : Json(nullptr);
  json["input"] = projector.Input();
  json["working"] = RegistersJson(projector.Working());
  json["stored"] = RegistersJson(projector.Stored());
  json["line_scales"] = LineScalesJson(projector.Working(), setup.Panel);
  json["counters"] = {{"exchanges", count.Exchanges},
                      {"refused", count.Refused},
                      {"shows", count.Shows},
                      {"stores", count.Stores},
                      {"links", extras.Links}};
  json["session"] = {{"frames", extras.LastTraffic.Frames}, {"bytes", extras.LastTraffic.Bytes}};
  json["faults"] = extras.Faults;
  if (extras.Mismatches) json["mismatches"] = *extras.Mismatches;
  return json.dump(1, ' ', true, Json::error_handler_t::replace) + "\n";
}

std::optional<RegisterSet> StoredSetOf(std::string_view text, PanelSize panel, NamedText& reason) {
  try {
    const Json json = Json::parse(text);
    if (!IsPanel(json.at("panel"), panel)) {
      reason = {"StateOfAnotherPanel"};
      return std::nullopt;
    }
    RegisterSet registers = RegistersOf(json.at("stored"));
    if (RegistersFit(registers, panel)) return registers;
    reason = {"StateRegister"};
  } catch (const Json::exception& error) {
    reason = {"BadJson", {error.what()}};
  }
  return std::nullopt;
}

}  // namespace warpline::sim
