#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/source_folder.h"

// Who may include whom, and where conditional compilation may stand, over all sources of the tree.

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string, std::less<>>;

struct FolderRow {
  std::string_view folder;
  Names own;    // folders of the tree beside the folder itself
  Names other;  // libraries beside the standard one, by the first part of the include; "*": any
};

const Names kEverything{"core", "model", "files", "link", "app", "ui", "cli", "sim", "tests"};

const std::vector<FolderRow>& Rows() {
  static const std::vector<FolderRow> rows{
      {"core", {}, {}},
      {"model", {"core"}, {}},
      {"files", {"core", "model"}, {}},
      {"link", {"core", "model"}, {}},
      {"app", {"core", "model", "files", "link"}, {}},
      {"ui", {"core", "model", "files", "link", "app"}, {"wx"}},
      {"cli", {"core", "model", "files", "link", "app"}, {"CLI", "nlohmann"}},
      {"sim", {"core", "model"}, {"CLI", "nlohmann", "stb"}},
      {"tests", kEverything, {"*"}},
      {"bench", kEverything, {"*"}},
      {"fuzz", kEverything, {"*"}},
  };
  return rows;
}

// The stand-ins of the maker's libraries see the headers that declare their entry points.
const Names kLibraryHeaders{"link/beamlink.h", "link/beamseek.h"};

const std::string kStandardHeaders =
    "algorithm any array atomic bit bitset cctype cerrno cfenv charconv chrono climits "
    "clocale cmath compare concepts condition_variable csignal cstddef cstdint cstdio cstdlib "
    "cstring ctime cwchar deque exception filesystem format forward_list fstream functional "
    "future initializer_list iomanip ios iosfwd iostream istream iterator limits list locale "
    "map memory mutex new numbers numeric optional ostream queue random ranges ratio regex "
    "set shared_mutex source_location span sstream stack stdexcept stop_token streambuf "
    "string string_view system_error thread tuple type_traits typeindex typeinfo "
    "unordered_map unordered_set utility valarray variant vector";

Names WordsOf(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}

struct Source {
  std::string path;  // from the root, with "/"
  std::string folder;
  std::vector<std::string> lines;
};

std::vector<std::string> LinesOf(const fs::path& path) {
  std::ifstream stream(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

const std::vector<Source>& Sources() {
  static const std::vector<Source> sources = [] {
    const fs::path& root = SourceFolder();
    std::vector<Source> found;
    for (const FolderRow& row : Rows()) {
      if (!fs::exists(root / row.folder)) continue;
      for (const auto& entry : fs::recursive_directory_iterator(root / row.folder)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        const fs::path relative = entry.path().lexically_relative(root);
        found.push_back(
            {relative.generic_string(), std::string(row.folder), LinesOf(entry.path())});
      }
    }
    return found;
  }();
  return sources;
}

bool IsTwin(const std::string& path) {
  const std::string name = path.substr(0, path.rfind('.'));
  return name.ends_with("_win") || name.ends_with("_posix");
}

struct Directive {
  std::string name;  // "include", "if"...
  std::string rest;  // what follows, without blanks in front
};

std::string WithoutLeadingBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string::npos ? std::string() : text.substr(first);
}

// The preprocessor directive on a line; nothing on any other line.
std::optional<Directive> DirectiveOf(const std::string& line) {
  const std::string text = WithoutLeadingBlanks(line);
  if (!text.starts_with('#')) return std::nullopt;
  const std::string directive = WithoutLeadingBlanks(text.substr(1));
  const auto end = std::find_if_not(directive.begin(), directive.end(),
                                    [](char c) { return c >= 'a' && c <= 'z'; });
  return Directive{{directive.begin(), end}, WithoutLeadingBlanks({end, directive.end()})};
}

std::string FirstPart(const std::string& include) {
  return include.substr(0, include.find('/'));
}

// What is wrong with one include, empty when nothing is.
std::string FaultOf(const Source& source, const FolderRow& row, bool quoted,
                    const std::string& include) {
  const std::string first = FirstPart(include);
  if (quoted) {
    if (include.find('/') == std::string::npos) return "is not written from the root";
    if (first == row.folder || row.own.contains(first)) return "";
    if (row.folder == "sim" && kLibraryHeaders.contains(include)) return "";
    return "is not for this folder";
  }
  static const Names standard = WordsOf(kStandardHeaders);
  if (standard.contains(include) || IsTwin(source.path)) return "";
  if (row.folder == "sim" && first == "wx" && source.path.find("window") != std::string::npos) {
    return "";
  }
  return row.other.contains(first) || row.other.contains("*")
             ? ""
             : "is no header of the standard library";
}

std::vector<std::string> IncludeFaults(const Source& source) {
  const auto row = std::find_if(Rows().begin(), Rows().end(), [&source](const FolderRow& each) {
    return each.folder == source.folder;
  });
  std::vector<std::string> faults;
  for (const std::string& line : source.lines) {
    const std::optional<Directive> directive = DirectiveOf(line);
    if (!directive || directive->name != "include" || directive->rest.empty()) continue;
    const bool quoted = directive->rest.front() == '"';
    if (!quoted && directive->rest.front() != '<') continue;
    const std::string include =
        directive->rest.substr(1, directive->rest.find_first_of("\">", 1) - 1);
    const std::string fault = FaultOf(source, *row, quoted, include);
    if (!fault.empty()) faults.push_back(source.path + ": " + include + " " + fault);
  }
  return faults;
}

TEST(IncludeTable, HoldsInEverySource) {
  ASSERT_GT(Sources().size(), 50U) << "the tree was not found";
  std::vector<std::string> faults;
  for (const Source& source : Sources()) {
    const std::vector<std::string> more = IncludeFaults(source);
    faults.insert(faults.end(), more.begin(), more.end());
  }
  EXPECT_EQ(faults, std::vector<std::string>());
}

TEST(IncludeTable, SeesWhatBreaksIt) {
  struct Row {
    const char* path;
    const char* line;
    bool allowed;
  };
  const Row rows[] = {
      {"core/a.h", "#include <vector>", true},
      {"core/a.h", "#include \"core/b.h\"", true},
      {"core/a.h", "#include \"model/b.h\"", false},
      {"core/a.h", "#include \"b.h\"", false},
      {"core/a.cpp", "#include <windows.h>", false},
      {"core/a_win.cpp", "#include <windows.h>", true},
      {"core/a_win.cpp", "#include \"app/b.h\"", false},
      {"model/a.cpp", "#  include \"files/b.h\"", false},
      {"files/a.cpp", "#include \"link/b.h\"", false},
      {"app/a.cpp", "#include \"cli/b.h\"", false},
      {"app/a.cpp", "#include <wx/wx.h>", false},
      {"ui/a.cpp", "#include <wx/wx.h>", true},
      {"cli/a.cpp", "#include <CLI/CLI.hpp>", true},
      {"cli/a.cpp", "#include \"sim/b.h\"", false},
      {"sim/a.cpp", "#include \"link/beamlink.h\"", true},
      {"sim/a.cpp", "#include \"link/beamseek.h\"", true},
      {"sim/a.cpp", "#include \"link/command_frames.h\"", false},
      {"sim/picture_window.cpp", "#include <wx/wx.h>", true},
      {"sim/picture.cpp", "#include <wx/wx.h>", false},
      {"tests/a.cpp", "#include \"sim/b.h\"", true},
  };
  for (const Row& row : rows) {
    const Source source{row.path, FirstPart(row.path), {row.line}};
    EXPECT_EQ(IncludeFaults(source).empty(), row.allowed) << row.path << ": " << row.line;
  }
}

TEST(Twins, HoldAllConditionalCompilation) {
  const Names conditionals{"if", "ifdef", "ifndef", "elif", "else"};
  for (const Source& source : Sources()) {
    if (IsTwin(source.path)) continue;
    for (const std::string& line : source.lines) {
      const std::optional<Directive> directive = DirectiveOf(line);
      EXPECT_FALSE(directive && conditionals.contains(directive->name))
          << source.path << ": " << line;
    }
  }
}

TEST(Twins, StandBesideEachOther) {
  Names paths;
  for (const Source& source : Sources()) paths.insert(source.path);
  for (const std::string& path : paths) {
    if (!IsTwin(path)) continue;
    const std::size_t mark = path.rfind('_');
    const std::string extension = path.substr(path.rfind('.'));
    for (const char* twin : {"_win", "_posix"}) {
      EXPECT_TRUE(paths.contains(path.substr(0, mark) + twin + extension)) << path;
    }
  }
}

}  // namespace
}  // namespace warpline
