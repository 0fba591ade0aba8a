#pragma once

namespace warpline {

// Makes the console show UTF-8 texts.
void PrepareConsole();

// Standard error goes to a terminal, where somebody may look at it.
bool ErrorsAreSeen();

}  // namespace warpline
