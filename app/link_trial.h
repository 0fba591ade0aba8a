#pragma once

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "core/settings.h"
#include "link/projector_link.h"

// The part of the check of the connection that runs in a process of its own, because a library of
// the maker's may take the process with it: the same program, started with the words made here. It
// writes lines of app/trial_lines.h to its standard output.

namespace warpline {

// The steps of the link, in their order.
inline constexpr const char* kTrialOpen = "open";
inline constexpr const char* kTrialRunning = "running";
inline constexpr const char* kTrialProbe = "probe";
inline constexpr const char* kTrialClass = "class";
inline constexpr const char* kTrialPanel = "panel";
inline constexpr const char* kTrialMode = "mode";
inline constexpr const char* kTrialClose = "close";

// The steps of a library: "Beamlink.file", and for an entry point "Beamlink.PJAnyCommand".
inline constexpr const char* kTrialFile = "file";
inline constexpr const char* kTrialKind = "kind";
inline constexpr const char* kTrialLoad = "load";
inline constexpr const char* kTrialOthers = "others";

// How a link that is tried is recorded.
struct TrialRecord {
  bool wanted = false;
  bool redacted = false;
  std::uint64_t link = 1;
};

std::vector<std::string> LibraryTrialWords(std::string_view library);
std::vector<std::string> LinkTrialWords(const Settings& settings, const TrialRecord& record);

// The words ask for a trial, and for nothing else.
bool IsTrial(const std::vector<std::string>& words);

// Does it; the exit code is 0 when it came to its end, whatever it found.
int RunTrial(const std::vector<std::string>& words, std::ostream& out);

// What it does: a library by its name, and the link, which is asked and not changed. A failure that
// makes the rest pointless ends it.
void TryLibrary(const std::filesystem::path& folder, std::string_view library, std::ostream& out);
void TryLink(const BeamlinkProvider& provider, const Settings& settings, const TrialRecord& record,
             std::ostream& out);

}  // namespace warpline
