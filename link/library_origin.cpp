#include "link/library_origin.h"

#include <array>

#include "link/beamlink.h"
#include "link/beamseek.h"
#include "platform/files.h"
#include "platform/shared_library.h"

namespace warpline {

namespace {

// In the order of the origins.
constexpr std::array<std::string_view, 3> kOriginNames{"missing", "found", "stand-in"};

}  // namespace

LibraryOrigin OriginOf(const std::filesystem::path& folder, std::string_view name) {
  std::string bytes;
  const std::string file = SharedLibrary::FileName(name);
  if (ReadWholeFile(folder / PathOf(file), bytes)) return LibraryOrigin::kMissing;
  // What a library exports stands in its file by name.
  const bool marked = bytes.find(kStandInMark) != std::string::npos;
  return marked ? LibraryOrigin::kStandIn : LibraryOrigin::kMaker;
}

std::string LibraryVersionText(const std::filesystem::path& folder) {
  std::string text;
  for (const std::string_view name : {kBeamlinkName, kBeamseekName}) {
    const auto origin = static_cast<std::size_t>(OriginOf(folder, name));
    text.append(name).append(": ").append(kOriginNames.at(origin)).append("\n");
  }
  return text;
}

}  // namespace warpline
