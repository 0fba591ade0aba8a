#pragma once

#include "cli/session.h"
#include "cli/verb_input.h"

namespace warpline {

// Puts the connection to use into the session's settings: those of the settings file, overridden by
// --lan, --serial,
// --usb and --timeout. A connection that was asked for by name is used in demo mode too. False when
// the words are wrong, which has been said; then nothing may be contacted.
bool ChooseConnection(const VerbInput& input, Session& session);

}  // namespace warpline
