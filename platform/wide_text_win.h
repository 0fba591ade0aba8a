#pragma once

#include <string>
#include <string_view>

// Between UTF-8 and the system's own wide texts. For the sources of this folder alone.

namespace warpline {

std::wstring WideOf(std::string_view utf8);
std::string Utf8OfWide(std::wstring_view wide);

}  // namespace warpline
