#include <iostream>

#include "cli/console.h"
#include "cli/run_command_line.h"
#include "core/system.h"

int main(int argc, char** argv) {
  warpline::PrepareConsole();
  return warpline::RunCommandLine(warpline::CommandLineWords(argc, argv), std::cout, std::cerr);
}
