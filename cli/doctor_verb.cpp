#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "app/check_texts.h"
#include "app/connection_check.h"
#include "cli/connection.h"
#include "cli/verbs.h"
#include "core/version.h"
#include "platform/environment.h"

// doctor: checks program, libraries, settings and connection, and says what to do.

namespace warpline {

namespace {

constexpr const char* kGroups[] = {"program", "libraries", "settings", "projector"};
constexpr const char* kStates[] = {"ok", "note", "failed"};

nlohmann::ordered_json JsonOf(const CheckRow& row) {
  nlohmann::ordered_json json;
  json["group"] = kGroups[static_cast<std::size_t>(row.group)];
  json["step"] = row.step;
  json["state"] = kStates[static_cast<std::size_t>(row.state)];
  json["time_ms"] = row.milliseconds ? nlohmann::ordered_json(*row.milliseconds) : nullptr;
  json["code"] = row.code ? nlohmann::ordered_json(*row.code) : nullptr;
  json["text"] = row.text;
  json["advice"] = row.advice;
  return json;
}

std::string JsonOf(const std::vector<CheckRow>& rows, const CheckVerdict& verdict) {
  constexpr int kIndent = 2;
  nlohmann::ordered_json json;
  json["version"] = kToolVersion;
  json["rows"] = nlohmann::ordered_json::array();
  for (const CheckRow& row : rows) json["rows"].push_back(JsonOf(row));
  json["good"] = verdict.good;
  json["verdict"] = verdict.text;
  json["advice"] = verdict.advice;
  return json.dump(kIndent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace

int RunDoctor(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  if (const std::optional<int> failed = BeginRecording(input, session)) return *failed;
  const LSSglobal& global = session.engine.global;
  const bool as_json = input.Has("--json");
  std::vector<CheckRow> rows;
  const auto take = [&](const CheckRow& row) {
    if (!as_json) {
      session.out << RowText(global, row, rows.empty() ? nullptr : &rows.back()) << std::flush;
    }
    rows.push_back(row);
  };
  const CheckVerdict verdict =
      ConnectionCheck({global, ApplicationDataFolder(), TrialInOwnProcess([] { return true; }),
                       session.engine.recording, take})
          .Run();
  session.engine.recording.End();
  session.out << (as_json ? JsonOf(rows, verdict) + '\n' : VerdictText(global, verdict));
  return verdict.good ? kExitOk : kExitFailed;
}

}  // namespace warpline
