#pragma once

namespace warpline {

// Makes the console show UTF-8 texts.
void PrepareConsole();

}  // namespace warpline
