#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

// The form of a recording of what passed between the tool and a projector, which the tool and the
// simulated projector both write: a text file of one line an event, each of which ends with LF.
// The first line is kRecordingTitle, or kToolRecordingTitle, a tab, and the tool's name and
// version. Behind it a line has these fields with tabs between:
//   link   its number, from 1
//   time   milliseconds since that link was opened; never less than in the link's line before
//   event  opened, request, reply, closed, call
//   name   of a request or reply: what the request asks for, for people to read
//   bytes  of a request or reply, at least one, as pairs of hex digits
// A call of the control library stands in recordings of the tool alone, at the time when it came
// back, behind the request and reply that it carried. It has instead of name and bytes:
//   name      of the entry point
//   result    decimal
//   duration  milliseconds with three decimals
//   details   its parameters and what it told, "key=value" with blanks between
// Empty lines and those that begin with "#" say nothing. An event belongs to a link that is open,
// but PJCommDevOpen comes before its opened line, and alone when it failed; a link has no two
// opened lines; a reply follows its request with no other event of the link between. A request
// without a reply was not answered. CR LF is accepted.

namespace warpline {

inline constexpr std::string_view kRecordingTitle = "warpline-projector recording 1";
inline constexpr std::string_view kToolRecordingTitle = "warpline-projector recording 2";

inline constexpr std::string_view kOpenedEvent = "opened";
inline constexpr std::string_view kRequestEvent = "request";
inline constexpr std::string_view kReplyEvent = "reply";
inline constexpr std::string_view kClosedEvent = "closed";
inline constexpr std::string_view kCallEvent = "call";

// One line, its LF included.
std::string RecordingLine(std::uint64_t link, std::chrono::milliseconds time,
                          std::string_view event, std::initializer_list<std::string_view> more);

// A new file to record into, in an old one's place; null when it cannot be written. A symbolic link
// is not followed.
std::unique_ptr<std::ofstream> OpenRecord(const std::filesystem::path& path);

}  // namespace warpline
