#pragma once

namespace warpline {

// Makes the console show UTF-8 texts.
void PrepareConsole();

// Standard input or output takes bytes as they are, and not lines of text.
void MakeInputBinary();
void MakeOutputBinary();

// Standard error goes to a terminal, where somebody may look at it, and which knows the codes that
// rewrite a line.
bool ErrorsAreSeen();

}  // namespace warpline
