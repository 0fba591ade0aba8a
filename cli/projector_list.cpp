#include "cli/projector_list.h"

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string_view>

#include "cli/connection.h"
#include "platform/files.h"

namespace warpline {

namespace {

using Projectors = std::vector<ListedProjector>;

constexpr std::string_view kBlanks = " \t\r";

// Takes the first word and the blanks behind it off the rest of a line.
std::string TakeWord(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of(kBlanks), rest.size());
  std::string word(rest.substr(0, end));
  rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks, end), rest.size()));
  return word;
}

std::string_view WithoutOuterBlanks(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  return line.substr(0, line.find_last_not_of(kBlanks) + 1);
}

// Files of the list are named from its own folder on.
// Nothing when a name is no UTF-8.
std::optional<ListedProjector> ProjectorOfLine(std::string_view line,
                                               const std::filesystem::path& folder) {
  ListedProjector projector;
  projector.name = TakeWord(line);
  projector.address = TakeWord(line);
  if (line.empty()) return projector;
  const std::optional<std::filesystem::path> file = PathOfForeign(line);
  if (!file) return std::nullopt;
  projector.file = folder / *file;
  return projector;
}

// Gives the address its port. What is wrong with it, or that it stands there already.
std::optional<CliText> ComplaintAbout(ListedProjector& projector, const Projectors& before) {
  const std::optional<LanAddress> address = LanAddressOf(projector.address);
  if (!address) return CliText::kBadLan;
  projector.address = address->address + ":" + address->port;
  const auto same = std::ranges::count(before, projector.address, &ListedProjector::address);
  return same == 0 ? std::nullopt : std::optional(CliText::kGivenTwice);
}

bool ReadList(const std::filesystem::path& path, const std::string& text, Session& session,
              Projectors& projectors) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::istringstream lines(text.substr(text.starts_with(kByteOrderMark) ? 3 : 0));
  FilePlace place{1, {}};
  for (std::string line; std::getline(lines, line); ++place.line) {
    const std::string_view words = WithoutOuterBlanks(line);
    if (words.empty() || words.starts_with('#')) continue;
    std::optional<ListedProjector> projector = ProjectorOfLine(words, path.parent_path());
    const std::optional<CliText> complaint =
        projector ? ComplaintAbout(*projector, projectors) : CliText::kNameNotUtf8;
    if (complaint) {
      return session.About([&] { return NameOfPlace(path, place); },
                           [&] {
                             session.Tell(*complaint, {projector ? projector->address : ""});
                             return false;
                           });
    }
    projectors.push_back(*std::move(projector));
  }
  if (projectors.empty()) session.Tell(CliText::kNoProjectors, {Utf8Of(path)});
  return !projectors.empty();
}

std::optional<Projectors> ListOfFile(const std::filesystem::path& path, Session& session) {
  std::string text;
  Projectors projectors;
  const bool read = session.OnFile(path, [&] {
    const std::error_code error = session.Read(path, text);
    if (error) session.engine.messages.ShowSystemError(SystemErrorText(error));
    return !error;
  });
  if (!read || !ReadList(path, text, session, projectors)) return std::nullopt;
  return projectors;
}

std::optional<Projectors> ListOfWords(const std::vector<std::string>& addresses, Session& session) {
  Projectors projectors;
  for (const std::string& address : addresses) {
    ListedProjector projector{address, address, std::nullopt};
    if (const std::optional<CliText> complaint = ComplaintAbout(projector, projectors)) {
      session.UsageError(*complaint, {address});
      return std::nullopt;
    }
    projectors.push_back(std::move(projector));
  }
  return projectors;
}

}  // namespace

std::optional<Projectors> ProjectorsOf(const VerbInput& input, Session& session, int& exit_code) {
  const std::vector<std::string>& addresses = input.Texts("--lan");
  const bool listed = input.Has("--projectors");
  exit_code = kExitUsage;
  if (!listed && addresses.size() < 2) return Projectors();
  if (input.Has("--serial") || input.Has("--usb") || (listed && !addresses.empty())) {
    session.UsageError(CliText::kManyConnections);
    return std::nullopt;
  }
  if (!listed) return ListOfWords(addresses, session);
  exit_code = kExitFailed;
  return ListOfFile(input.Path("--projectors"), session);
}

}  // namespace warpline
