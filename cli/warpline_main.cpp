#include <iostream>

#include "app/link_trial.h"
#include "cli/run_command_line.h"
#include "platform/console.h"
#include "platform/environment.h"

int main(int argc, char** argv) {
  const std::vector<std::string> words = warpline::CommandLineWords(argc, argv);
  if (warpline::IsTrial(words)) return warpline::RunTrial(words, std::cout);
  warpline::PrepareConsole();
  return warpline::RunCommandLine(words, std::cout, std::cerr, warpline::ErrorsAreSeen());
}
