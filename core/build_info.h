#pragma once

#include <string>
#include <string_view>

namespace warpline {

// The commit that the programs were built from, abbreviated; empty when that is not known.
std::string_view BuildCommit();

// The version of wxWidgets that the windows were built with; empty when there are none.
std::string_view BuildToolkit();

// What --version says first, the same in every language, because programs read it: the program and
// its version, the commit, and the toolkit; an empty one is none. Each line with its end.
std::string VersionText(std::string_view program, std::string_view toolkit);

}  // namespace warpline
