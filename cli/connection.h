#pragma once

#include <optional>
#include <string>

#include "cli/session.h"
#include "cli/verb_input.h"

namespace warpline {

// Puts the connection to use into the session's settings: those of the settings file, overridden by
// --lan, --serial, --usb and --timeout. A connection that was asked for by name is used in demo
// mode too. False when the words are wrong, which has been said; then nothing may be contacted.
bool ChooseConnection(const VerbInput& input, Session& session);

// The recording that --record asks for begins; it ends by itself with the session. prints: the verb
// itself writes to standard output, so that the recording cannot go there too. Nothing when all is
// well, else the exit code: the words are wrong, or the file cannot be written, which has been
// said.
std::optional<int> BeginRecording(const VerbInput& input, bool prints, Session& session);

// An address of --lan, and its port: that of every projector when none is given.
struct LanAddress {
  std::string address;
  std::string port;
};

// Nothing when the text is not correct.
std::optional<LanAddress> LanAddressOf(const std::string& text);

// How messages name the projector that the settings connect to: "192.168.10.10:7142", "COM1",
// "USB1".
std::string TargetName(const Settings& settings);

}  // namespace warpline
