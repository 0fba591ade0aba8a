#include "fit/marks.h"

#include <array>
#include <cmath>

#include "core/conversions.h"

namespace warpline {
namespace {

constexpr std::string_view kHeader = "u,v,x,y";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<Mark> MarkOf(std::string_view line) {
  std::array<std::string_view, 4> parts;
  for (std::string_view& part : parts) part = Trimmed(TakeUpTo(line, ','));
  Mark mark;
  const bool read = line.empty() && ReadReal(parts[0], 0, 1, mark.U) &&
                    ReadReal(parts[1], 0, 1, mark.V) &&
                    ReadReal(parts[2], -kFarthestMark, kFarthestMark, mark.X) &&
                    ReadReal(parts[3], -kFarthestMark, kFarthestMark, mark.Y);
  return read ? std::optional(mark) : std::nullopt;
}

}  // namespace

std::string MarksText(const Marks& marks) {
  std::string text(kHeader);
  text += '\n';
  for (const Mark& mark : marks) {
    text += ShortestText(mark.U) + ',' + ShortestText(mark.V) + ',' + ShortestText(mark.X) + ',' +
            ShortestText(mark.Y) + '\n';
  }
  return text;
}

std::optional<Marks> MarksOf(std::string_view text, NamedText& reason) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  if (WithoutBlanks(Trimmed(TakeUpTo(text, '\n'))) != kHeader) {
    reason = {"MarksHeaderWrong"};
    return std::nullopt;
  }
  Marks marks;
  for (std::size_t number = 2; !text.empty(); ++number) {
    const std::string_view line = Trimmed(TakeUpTo(text, '\n'));
    if (line.empty()) continue;
    const std::optional<Mark> mark = MarkOf(line);
    if (!mark) {
      reason = {"MarksLineWrong", {std::to_string(number)}};
      return std::nullopt;
    }
    if (marks.size() == kMostMarks) {
      reason = {"MarksTooMany", {std::to_string(kMostMarks)}};
      return std::nullopt;
    }
    marks.push_back(*mark);
  }
  return marks;
}

}  // namespace warpline
