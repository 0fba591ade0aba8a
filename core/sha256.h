#pragma once

#include <string>
#include <string_view>

namespace warpline {

// The SHA-256 digest of the bytes (FIPS 180-4) as 64 lower-case hex digits, as sha256sum prints it.
std::string Sha256Of(std::string_view bytes);

}  // namespace warpline
