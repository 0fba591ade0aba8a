#pragma once

#include <optional>

#include "cli/session.h"
#include "cli/verb_input.h"

namespace warpline {

// Puts the connection to use into the session's settings: those of the settings file, overridden by
// --lan, --serial,
// --usb and --timeout. A connection that was asked for by name is used in demo mode too. False when
// the words are wrong, which has been said; then nothing may be contacted.
bool ChooseConnection(const VerbInput& input, Session& session);

// The recording that --record asks for begins; it ends by itself with the session. Nothing when all
// is well, else the exit code: the words are wrong, or the file cannot be written, which has been
// said.
std::optional<int> BeginRecording(const VerbInput& input, Session& session);

}  // namespace warpline
