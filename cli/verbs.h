#pragma once

#include <span>
#include <string_view>

#include "cli/cli_texts.h"
#include "cli/session.h"
#include "cli/verb_input.h"

// The verbs of the command line, as data: names, arguments, help and the function that does the
// work.

namespace warpline {

enum class Take {
  kFlag,      // given or not
  kOptional,  // one value, may be left out
  kRequired,  // one value
  kMany,      // one value or more
  kLists,     // one value or more, may be left out, may be given again: see kNextGiven
  kSeveral,   // an option that may be given several times, each with one value
};

struct ArgumentRow {
  std::string_view name;        // "FILE" stands alone, "--panel" introduces its value
  std::string_view value_name;  // what the help calls the value of an option
  Take take;
  CliText help;
};

// Of every verb that has it: results and messages as one line of JSON.
inline constexpr std::string_view kJsonOption = "--json";

// Of every verb that talks to a projector: the file of the recording.
inline constexpr std::string_view kRecordOption = "--record";

struct Verb {
  std::string_view name;
  CliText help;
  std::span<const ArgumentRow> arguments;
  // Returns the exit code; results on session.out, messages on session.err.
  int (*run)(const VerbInput& input, Session& session);
};

std::span<const Verb> Verbs();

// One function a verb.
int RunRegisters(const VerbInput& input, Session& session);
int RunProfile(const VerbInput& input, Session& session);
int RunCurve(const VerbInput& input, Session& session);
int RunFrames(const VerbInput& input, Session& session);
int RunCheck(const VerbInput& input, Session& session);
int RunConvert(const VerbInput& input, Session& session);
int RunApply(const VerbInput& input, Session& session);
int RunStore(const VerbInput& input, Session& session);
int RunInitialize(const VerbInput& input, Session& session);
int RunMode(const VerbInput& input, Session& session);
int RunVerify(const VerbInput& input, Session& session);
int RunMarks(const VerbInput& input, Session& session);
int RunPreview(const VerbInput& input, Session& session);
int RunPicture(const VerbInput& input, Session& session);
int RunSheet(const VerbInput& input, Session& session);
int RunSearch(const VerbInput& input, Session& session);
int RunFit(const VerbInput& input, Session& session);
int RunDoctor(const VerbInput& input, Session& session);

}  // namespace warpline
