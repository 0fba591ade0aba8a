#include <tuple>

#include "core/conversions.h"
#include "core/sha256.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"
#include "tests/support/source_folder.h"

namespace warpline {
namespace {

// A date reads ">2026-01-31 12:00<".
std::string WithoutNoteAndDate(std::string page) {
  const std::size_t note = page.find("class=\"note\">");
  if (note != page.npos) page.erase(note, page.find('<', note) - note);
  for (std::size_t at = 0; at + 17 < page.size(); ++at) {
    const bool date = page[at] == '>' && page[at + 5] == '-' && page[at + 8] == '-' &&
                      page[at + 11] == ' ' && page[at + 14] == ':' && page[at + 17] == '<';
    if (date) page.erase(at, 17);
  }
  return page;
}

class SheetVerbTest : public FilesTest {
 protected:
  std::string Sheet(const Words& words, const std::string& language = "en") const {
    const CliResult result = RunCli(Words{"sheet"} + words + Words{"-o", sheet_}, language);
    EXPECT_EQ(result.exit_code, 0) << result;
    EXPECT_EQ(result.out + result.err, "");
    return TempFolder::Read(sheet_);
  }

  OwnSettings settings_{folder_.Path()};
  const std::string sheet_ = Name("sheet.html");
};

TEST_F(SheetVerbTest, HoldsTheCorrectionItselfAndWhatItBecomes) {
  for (const auto& entry : std::filesystem::directory_iterator(SourceFolder() / "examples")) {
    if (entry.path().extension() != ".wlt") continue;
    const std::string file = Name("now & then.wlt"), registers = Name("now.wlr");
    SCOPED_TRACE(entry.path());
    ASSERT_EQ(RunCli({"convert", entry.path().string(), file}).exit_code, 0);
    ASSERT_EQ(RunCli({"registers", file, "-o", registers}).exit_code, 0);
    const std::string page = Sheet({file});
    EXPECT_TRUE(Holds(page,
                      "download=\"now &amp; then.wlt\" href=\"data:"
                      "application/octet-stream;base64," +
                          Base64Of(TempFolder::Read(file)) + "\""));
    EXPECT_TRUE(Holds(page, ">" + Sha256Of(TempFolder::Read(registers)) + "<"));
    for (const char* part : {"<script", "src=", "url(", "https:"}) {
      EXPECT_FALSE(Holds(page, part)) << part;
    }
    for (auto at = page.find("http:"); at != page.npos; at = page.find("http:", at + 1)) {
      EXPECT_EQ(page.substr(at, 11), "http://www.");  // names, not places
    }
    for (const char* language : {"en", "ja"}) {
      std::string pages[] = {Sheet({file, "--note", "Hall \"2\""}, language),
                             Sheet({file, "--note", "<i>&"}, language)};
      EXPECT_TRUE(Holds(pages[0], ">Hall &quot;2&quot;</p>") &&
                  Holds(pages[1], ">&lt;i&gt;&amp;<"));
      EXPECT_EQ(WithoutNoteAndDate(pages[0]), WithoutNoteAndDate(pages[1]));
    }
  }
}

TEST_F(SheetVerbTest, TellsWhatTheProjectorReported) {
  sim::StationSetup setup;
  setup.Projector.Panel = {640, 480};
  setup.Projector.ModelClass = 4;
  const ProjectorServer projector(setup);
  const std::string file = Put("bent.wlt", kBentFile);
  EXPECT_TRUE(Holds(Sheet({file}), "It was not asked."));
  const std::string record = Name("record.txt");
  const Words asking{file, "--lan", projector.Place(), "--record", record};
  const std::string page = Sheet(asking);
  for (const char* part : {">640 x 480 pixels<", ">4<", ">0: Normal mode<", "panel of 640 x 480"}) {
    EXPECT_TRUE(Holds(page, part)) << part;
  }
  for (const char* name : {"request\tModel class?", "reply\tMode (18, 19)"}) {
    EXPECT_TRUE(Holds(TempFolder::Read(record), name)) << name;
  }
  const CliResult printed = RunCli(Words{"sheet", "-o", "-"} + asking);
  EXPECT_EQ(WithoutNoteAndDate(printed.out), WithoutNoteAndDate(page));
}

TEST_F(SheetVerbTest, SaysWhatIsWrongAndKeepsTheOldSheet) {
  const ProjectorServer mute({}, {"kind=mode:timeout"});
  const std::string file = Put("bent.wlt", kBentFile);
  const std::string cubic = Put("cubic.wlt", "[Warpline Tool Data File 3.0]\r\nCorreInterpH=3\r\n");
  const std::string letters(498, 'x'), japanese = "\u88dc\u6b63";
  EXPECT_TRUE(Holds(Sheet({file, "--note", letters + japanese}), letters + japanese));
  const std::string before = TempFolder::Read(sheet_);
  const std::tuple<Words, int, std::string> cases[] = {
      {{file, "--note", letters + japanese + "x"}, 1, "500 characters"},
      {{file, "--note", std::string(10, '\n')}, 1, "10 lines"},
      {{file, "--lan", mute.Place(), "--timeout", "500"}, 1, "no projector response"},
      {{file, "--lan", "nowhere:0"}, 2, "nowhere:0"},
      {{file, "--lan", mute.Place(), "--record", "-", "-o", "-"}, 2, "one thing only"},
      {{file, "-o", folder_.Path().string()}, 1, "Failed writing file."},
      {{cubic}, 1, "[3] Wrong value."},  // through two points
  };
  for (const auto& [words, exit_code, part_of_error] : cases) {
    const CliResult result = RunCli(Words{"sheet", "-o", sheet_} + words);
    EXPECT_EQ(result.exit_code, exit_code) << result;
    EXPECT_TRUE(Holds(result.err, part_of_error)) << result;
    EXPECT_EQ(TempFolder::Read(sheet_), before);
  }
}

}  // namespace
}  // namespace warpline
