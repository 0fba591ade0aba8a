#include "cli/report.h"

namespace warpline {

using Json = nlohmann::ordered_json;

void Report::Begin(std::string_view verb) {
  wanted_ = true;
  verb_ = verb;
}

void Report::Add(const std::string& about, const UserMessage& message) {
  const bool has_code = !message.kind.empty();
  messages_.push_back({{"about", about.empty() ? Json() : Json(about)},
                       {"kind", has_code ? Json(message.kind) : Json()},
                       {"code", has_code ? Json(message.code) : Json()},
                       {"text", message.text}});
}

std::string Report::Line(bool ok) const {
  Json line{{"verb", verb_}, {"ok", ok}};
  line.update(results_);
  line["messages"] = messages_;
  return LineOf(line);
}

std::string LineOf(const nlohmann::ordered_json& json) {
  constexpr int kNoIndent = -1;
  return json.dump(kNoIndent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace warpline
