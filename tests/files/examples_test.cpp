#include <algorithm>
#include <random>

#include "core/fault.h"
#include "tests/files/file_fixture.h"

namespace warpline {
namespace {

struct Example {
  const char* name;
  const char* type;
  bool present_version;
};

constexpr Example kExamples[] = {
    {"cylinder.wlt", "wlt", true},         {"cylinder_vertical_bow.wlt", "wlt", true},
    {"sphere.wlt", "wlt", true},           {"corner_wall.wlt", "wlt", true},
    {"corner_ceiling.wlt", "wlt", true},   {"other_bspline.wlt", "wlt", true},
    {"other_quartic.wlt", "wlt", true},    {"old_version_2.wlt", "wlt", false},
    {"shape_version_1.wls", "wls", false}, {"shape_version_2.wls", "wls", true},
    {"registers.wlr", "wlr", true},
};

std::string TextOf(const Example& example) {
  return TempFolder::Read(SourceFolder() / "examples" / example.name);
}

TEST(Examples, AreReadAndWrittenAsTheyStand) {
  for (const Example& example : kExamples) {
    const std::string text = TextOf(example);
    FileWorld world;
    EXPECT_EQ(world.Read(example.type, text), std::nullopt) << example.name;
    EXPECT_EQ(world.Written(example.type) == text, example.present_version) << example.name;
  }
}

std::string WithoutALine(std::string text, std::mt19937& random) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::size_t start = 0;
  for (std::size_t skipped = random() % (lines + 1); skipped > 0; --skipped) {
    start = text.find('\n', start) + 1;
  }
  return text.erase(start, text.find('\n', start) - start + 1);
}

// One to four random changes: a line left out, a byte put in, a piece cut out or doubled, digits or
// separators put in.
std::string Mutated(std::string text, std::mt19937& random) {
  for (auto changes = random() % 4 + 1; changes > 0; --changes) {
    if (random() % 3 == 0) {
      text = WithoutALine(text, random);
      continue;
    }
    const std::size_t at = random() % (text.size() + 1);
    const std::string piece = text.substr(at, random() % 40);
    const std::string inserted[] = {std::string(1, static_cast<char>(random() % 256)), piece,
                                    "99999999999", std::string("-=;\r\n H_").substr(random() % 8),
                                    ""};
    const std::string& put = inserted[random() % std::size(inserted)];
    if (put.empty()) text.erase(at, piece.size());
    text.insert(at, put);
  }
  return text;
}

// What was accepted can be written, and is accepted as the same again.
void ExpectToComeBack(FileWorld& world, std::string_view type) {
  const std::optional<std::string> written = world.Written(type);
  ASSERT_TRUE(written);
  FileWorld again;
  ASSERT_EQ(again.Read(type, *written), kAccepted) << *written;
  EXPECT_EQ(again.Written(type), written);
}

TEST(Examples, MutationsAreRefusedOrComeBackFromWhatIsWritten) {
  std::mt19937 random(20240611);
  int accepted = 0;
  int refused = 0;
  int faults = 0;
  for (int round = 0; round < 5000; ++round) {
    const Example& example = kExamples[static_cast<std::size_t>(round) % std::size(kExamples)];
    // Some go to another format than their own.
    const std::string_view type = round % 16 == 0   ? kTypeWlr
                                  : round % 16 == 8 ? kTypeIni
                                                    : std::string_view(example.type);
    FileWorld world;
    try {
      SCOPED_TRACE(round);
      const bool taken = !world.Read(type, Mutated(TextOf(example), random));
      if (taken) ExpectToComeBack(world, type);
      ++(taken ? accepted : refused);
    } catch (const Fault&) {
      ++faults;
    }
  }
  // The changes are neither all harmless nor all fatal.
  EXPECT_GT(accepted, 100);
  EXPECT_GT(refused, 100);
  EXPECT_GT(faults, 10);
}

}  // namespace
}  // namespace warpline
