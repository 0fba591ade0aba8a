#pragma once

#include <string>

#include "core/LSSglobal.h"

namespace warpline {

// A caption of the catalogue without its access key, as a name.
std::string PlainCaption(const LSSglobal& global, int number);

}  // namespace warpline
