#pragma once

// Who may come to the front: a system that lets nobody push himself forward wants to be told.

namespace warpline {

// Lets the next window that asks for it, whichever process it belongs to, come to the front in this
// one's place. For a program that the user has just started.
void GiveForegroundAway();

}  // namespace warpline
