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

// One to four random changes: a byte put in, a piece cut out or doubled, digits or separators put
// in.
std::string Mutated(std::string text, std::mt19937& random) {
  for (auto changes = random() % 4 + 1; changes > 0; --changes) {
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

TEST(Examples, MutationsAreRefusedOrReadAsWhatCanBeWritten) {
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
      const bool taken = !world.Read(type, Mutated(TextOf(example), random));
      ASSERT_TRUE(!taken || world.Written(type)) << round;
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
