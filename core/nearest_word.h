#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace warpline {

// The known word that was probably meant by one that is mistyped: letters wrong, missing, too many
// or swapped with their neighbour, one and another for every four. Empty when none is that near. Of
// equally near ones the first.
std::string NearestWord(std::string_view word, const std::vector<std::string>& known);

}  // namespace warpline
