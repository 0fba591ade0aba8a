#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/texts.h"

// Marks that the projector throws, and where a photograph shows them; on file one row a mark under
// the header "u,v,x,y".

namespace warpline {

struct Mark {
  double U = 0;  // the exact place on the panel, 0..1 from its left edge
  double V = 0;  // 0..1 from its top edge
  double X = 0;  // in the photograph, pixels from its left edge; a pixel's centre is at a half
  double Y = 0;  // from its top edge

  bool operator==(const Mark&) const = default;
};

using Marks = std::vector<Mark>;

inline constexpr std::size_t kMostMarks = 10000;
inline constexpr double kFarthestMark = 1e6;  // pixels, either way

// The bytes of the file.
std::string MarksText(const Marks& marks);

// The marks of a file's bytes, at most kMostMarks. Lines end with LF or CRLF; blanks around numbers
// and empty lines do not count. Else nothing, and the reason.
std::optional<Marks> MarksOf(std::string_view text, NamedText& reason);

}  // namespace warpline
