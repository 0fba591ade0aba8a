#include <iostream>

#include "cli/run_command_line.h"
#include "platform/console.h"
#include "platform/environment.h"

int main(int argc, char** argv) {
  warpline::PrepareConsole();
  return warpline::RunCommandLine(warpline::CommandLineWords(argc, argv), std::cout, std::cerr,
                                  warpline::ErrorsAreSeen());
}
