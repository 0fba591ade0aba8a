#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "app/communication_settings.h"
#include "cli/connection.h"
#include "cli/verbs.h"
#include "link/projector_search.h"

// search: the projectors that the maker's search library finds on the local networks.

namespace warpline {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// False when the search has not ended in time.
bool WaitForEnd(ProjectorSearch& search, milliseconds time_out) {
  const Clock::time_point deadline = Clock::now() + time_out;
  for (;;) {
    search.Poll();
    if (!search.IsRunning()) return true;
    if (Clock::now() >= deadline) return false;
    std::this_thread::sleep_for(milliseconds(kSearchPollMilliseconds));
  }
}

void Print(const FoundProjector& projector, Session& session) {
  const CliText state = projector.Selectable ? CliText::kSelectable : CliText::kNotSelectable;
  const char* const word = projector.Selectable ? "yes" : "no";  // the same in every language
  session.out << projector.Address << '\t' << projector.Name << '\t' << session.texts[state] << '\t'
              << word << '\n';
}

void Tell(const std::vector<FoundProjector>& found, Session& session) {
  nlohmann::ordered_json projectors = nlohmann::ordered_json::array();
  for (const FoundProjector& projector : found) {
    if (!session.report.Wanted()) Print(projector, session);
    projectors.push_back({{"address", projector.Address},
                          {"name", projector.Name},
                          {"selectable", projector.Selectable}});
  }
  session.report.Set("projectors", std::move(projectors));
}

}  // namespace

int RunSearch(const VerbInput& input, Session& session) {
  if (!ChooseConnection(input, session)) return kExitUsage;
  const std::int32_t time_out = session.engine.global.Settings.LANTimeOut;
  ProjectorSearch search(session.engine.messages, BeamseekFromProgramFolder());
  if (!search.Start(SearchOptionsOf(session.engine.global, SearchWindow::kHidden)))
    return kExitFailed;
  if (!WaitForEnd(search, milliseconds(time_out))) {
    session.Tell(CliText::kSearchTooLong, {std::to_string(time_out)});
    return kExitFailed;
  }
  const std::vector<FoundProjector> found = search.Found();
  Tell(found, session);
  if (found.empty()) session.Tell(CliText::kNothingFound);
  return found.empty() ? kExitFailed : kExitOk;
}

}  // namespace warpline
