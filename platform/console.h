#pragma once

namespace warpline {

// Makes the console show UTF-8 texts.
void PrepareConsole();

// Standard error goes to a terminal, where somebody may look at it, and which knows the codes that
// rewrite a line.
bool ErrorsAreSeen();

}  // namespace warpline
