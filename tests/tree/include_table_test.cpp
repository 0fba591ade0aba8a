#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

// Who may include whom, and where conditional compilation may stand, over all sources of the tree.

namespace warpline {
namespace {

namespace fs = std::filesystem;
using Names = std::set<std::string>;

// For each folder what its includes may begin with: folders of the tree, and libraries beside the
// standard one. "*": anything.
const std::map<std::string, Names>& Table() {
  static const std::map<std::string, Names> table{
      {"core", {"core"}},
      {"model", {"core", "model"}},
      {"files", {"core", "model", "files"}},
      {"link", {"core", "model", "link"}},
      {"app", {"core", "model", "files", "link", "app"}},
      {"ui", {"core", "model", "files", "link", "app", "ui", "wx"}},
      {"cli", {"core", "model", "files", "link", "app", "cli", "CLI", "nlohmann"}},
      {"sim", {"core", "model", "sim", "CLI", "nlohmann", "stb"}},
      {"tests", {"*"}},
      {"bench", {"*"}},
      {"fuzz", {"*"}},
  };
  return table;
}

std::string FirstPart(const std::string& path) {
  return path.substr(0, path.find('/'));
}

struct Line {
  std::string path;  // of the file, from the root, with "/"
  std::string text;
};

// Every line of every source.
const std::vector<Line>& Lines() {
  static const std::vector<Line> lines = [] {
    const fs::path root = WARPLINE_SOURCE_DIR;
    std::vector<Line> found;
    for (const auto& [folder, unused] : Table()) {
      if (!fs::exists(root / folder)) continue;
      for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") continue;
        const std::string path = entry.path().lexically_relative(root).generic_string();
        std::ifstream stream(entry.path());
        for (std::string text; std::getline(stream, text);) found.push_back({path, text});
      }
    }
    return found;
  }();
  return lines;
}

bool IsTwin(const std::string& path) {
  const std::string name = path.substr(0, path.rfind('.'));
  return name.ends_with("_win") || name.ends_with("_posix");
}

struct Directive {
  std::string name;  // "include", "if"...; empty on any line without a directive
  std::string mark;  // before what is included: a quotation mark or "<"
  std::string path;
};

Directive DirectiveOf(const std::string& text) {
  if (text.find('#') == std::string::npos) return {};
  static const std::regex pattern("\\s*#\\s*([a-z]+)\\s*(?:([\"<])([^\">]*))?.*");
  std::smatch parts;
  if (!std::regex_match(text, parts, pattern)) return {};
  return {parts[1], parts[2], parts[3]};
}

// Headers of the standard library are told by their plain names. The simulator's windows may use
// the toolkit, and its stand-ins of the maker's libraries see the headers with the entry points.
bool IsAllowed(const Line& line) {
  const Directive include = DirectiveOf(line.text);
  if (include.name != "include" || include.mark.empty()) return true;
  const std::string folder = FirstPart(line.path);
  const std::string first = FirstPart(include.path);
  const Names& table = Table().at(folder);
  const bool in_table = table.contains(first) || table.contains("*");
  if (include.mark == "\"") {
    const bool is_entry = include.path == "link/beamlink.h" || include.path == "link/beamseek.h";
    return first != include.path && (in_table || (folder == "sim" && is_entry));
  }
  const bool is_window = folder == "sim" && line.path.find("window") != std::string::npos;
  return include.path.find_first_of("./") == std::string::npos || IsTwin(line.path) || in_table ||
         (is_window && first == "wx");
}

TEST(IncludeTable, HoldsInEverySource) {
  ASSERT_GT(Lines().size(), 5000U) << "the tree was not found";
  for (const Line& line : Lines()) EXPECT_TRUE(IsAllowed(line)) << line.path << ": " << line.text;
}

TEST(IncludeTable, SeesWhatBreaksIt) {
  const struct {
    const char* path;
    const char* include;
    bool allowed;
  } rows[] = {
      {"core/a.h", "<vector>", true},
      {"core/a.h", "\"core/b.h\"", true},
      {"core/a.h", "\"model/b.h\"", false},
      {"core/a.h", "\"b.h\"", false},
      {"core/a.cpp", "<windows.h>", false},
      {"core/a_win.cpp", "<windows.h>", true},
      {"core/a_win.cpp", "\"app/b.h\"", false},
      {"app/a.cpp", "<wx/wx.h>", false},
      {"ui/a.cpp", "<wx/wx.h>", true},
      {"cli/a.cpp", "\"sim/b.h\"", false},
      {"sim/a.cpp", "\"link/beamlink.h\"", true},
      {"sim/a.cpp", "\"link/command_frames.h\"", false},
      {"sim/picture_window.cpp", "<wx/wx.h>", true},
      {"sim/picture.cpp", "<wx/wx.h>", false},
      {"tests/a.cpp", "\"b.h\"", false},
  };
  for (const auto& row : rows) {
    const Line line{row.path, std::string("#  include ") + row.include};
    EXPECT_EQ(IsAllowed(line), row.allowed) << row.path << ": " << row.include;
  }
}

TEST(Twins, HoldAllConditionalCompilation) {
  const Names conditionals{"if", "ifdef", "ifndef", "elif", "else"};
  for (const Line& line : Lines()) {
    const bool is_conditional = conditionals.contains(DirectiveOf(line.text).name);
    EXPECT_TRUE(!is_conditional || IsTwin(line.path)) << line.path << ": " << line.text;
  }
}

}  // namespace
}  // namespace warpline
