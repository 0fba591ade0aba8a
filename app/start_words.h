#pragma once

#include <filesystem>
#include <string>
#include <vector>

// What the words behind the program's name ask for.

namespace warpline {

struct StartWords {
  std::string switches;        // the words that are no files, in their order, a blank behind each
  std::filesystem::path file;  // the first of the files, absolute; empty when there is none
};

// Words are UTF-8. One that names an existing file is that file, whatever it begins with; so is one
// that ends in ".wlt" or ".wlr" (any case) and looks like no switch, whether the file is there or
// not. Relative names start in the current folder.
StartWords SortWords(const std::vector<std::string>& words);

}  // namespace warpline
