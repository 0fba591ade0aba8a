#pragma once

#include <string>

namespace warpline {

// Makes the console show UTF-8 texts.
void PrepareConsole();

// Prints a text (UTF-8) for whoever started a program that has windows and may have no console of
// its own. False when nobody can be told like this.
bool PrintToStarter(const std::string& text);

// Standard input or output takes bytes as they are, and not lines of text.
void MakeInputBinary();
void MakeOutputBinary();

// Standard error goes to a terminal, where somebody may look at it, and which knows the codes that
// rewrite a line.
bool ErrorsAreSeen();

}  // namespace warpline
