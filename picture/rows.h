#pragma once

#include <functional>

namespace warpline {

// Draws rows 0..rows-1 of an image on several threads; every row is drawn once.
void ForEachRow(int rows, const std::function<void(int)>& draw);

}  // namespace warpline
