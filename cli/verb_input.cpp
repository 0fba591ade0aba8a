#include "cli/verb_input.h"

#include <utility>

#include "core/conversions.h"
#include "platform/files.h"

namespace warpline {

void VerbInput::Set(std::string_view name, std::vector<std::string> texts) {
  given_[std::string(name)] = std::move(texts);
}

bool VerbInput::Has(std::string_view name) const {
  return given_.find(name) != given_.end();
}

const std::vector<std::string>& VerbInput::Texts(std::string_view name) const {
  static const std::vector<std::string> none;
  const auto found = given_.find(name);
  return found == given_.end() ? none : found->second;
}

const std::string& VerbInput::Text(std::string_view name) const {
  static const std::string none;
  const std::vector<std::string>& texts = Texts(name);
  return texts.empty() ? none : texts.front();
}

std::filesystem::path VerbInput::Path(std::string_view name) const {
  return PathOf(Text(name));
}

std::optional<PanelSize> VerbInput::Panel() const {
  if (!Has("--panel")) return kDefaultPanelSize;
  const std::string_view text = Text("--panel");
  const std::size_t cross = text.find_first_of("xX");
  if (cross != std::string_view::npos) {
    const auto width = WholeNumber(text.substr(0, cross), kMinPanelLines, kMaxPanelLines);
    const auto height = WholeNumber(text.substr(cross + 1), kMinPanelLines, kMaxPanelLines);
    if (width && height) return PanelSize{*width, *height};
  }
  session_.UsageError(CliText::kBadPanel, {std::string(text)});
  return std::nullopt;
}

std::optional<Axis> VerbInput::AxisChoice() const {
  if (!Has("--axis") || Text("--axis") == "h") return kHorizontal;
  if (Text("--axis") == "v") return kVertical;
  session_.UsageError(CliText::kBadAxis, {Text("--axis")});
  return std::nullopt;
}

std::optional<int> VerbInput::Number(std::string_view name, int min, int max, int fallback) const {
  if (!Has(name)) return fallback;
  const std::optional<int> number = WholeNumber(Text(name), min, max);
  if (number) return number;
  session_.UsageError(CliText::kBadNumber,
                      {std::string(name), std::to_string(min), std::to_string(max), Text(name)});
  return std::nullopt;
}

}  // namespace warpline
