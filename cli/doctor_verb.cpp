#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
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

void Keep(const std::vector<CheckRow>& rows, const CheckVerdict& verdict, Report& report) {
  nlohmann::ordered_json table = nlohmann::ordered_json::array();
  for (const CheckRow& row : rows) table.push_back(JsonOf(row));
  report.Set("version", kToolVersion);
  report.Set("rows", std::move(table));
  report.Set("good", verdict.good);
  report.Set("verdict", verdict.text);
  report.Set("advice", verdict.advice);
}

}  // namespace

int RunDoctor(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  if (const std::optional<int> failed = BeginRecording(input, true, session)) return *failed;
  const LSSglobal& global = session.engine.global;
  const bool as_json = session.report.Wanted();
  session.report.Set("target", TargetName(global.Settings));
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
  if (!as_json) session.out << VerdictText(global, verdict);
  Keep(rows, verdict, session.report);
  return verdict.good ? kExitOk : kExitFailed;
}

}  // namespace warpline
