#include "app/start_answer.h"
#include "cli/verbs.h"
#include "link/library_origin.h"
#include "platform/shared_library.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

// FLAT stands for a correction file that is there, '' for an empty word.
constexpr const char* kUsageRows[][3] = {
    {"", "A verb is missing.", "コマンドを指定してください"},
    {"", "\nUsage: warpline [OPTIONS] VERB", "\n使い方: warpline"},
    {"preview FLAT --output", "--output needs a value.", "--output に値"},
    {"--language", "--language needs a value.", "--language に値を指定してください"},
    {"seek", "no verb \"seek\"", "「seek」というコマンドはありません"},
    {"serach", "no verb \"serach\". Did you mean \"search\"?", "「search」ではありませんか"},
    {"check --panle=9 FLAT", "Did you mean \"--panel\"?", "「--panel」ではありませんか"},
    {"--fast", "no option \"--fast\"", "「--fast」"},
    {"check --fast FLAT", "no option \"--fast\"", "「--fast」"},
    {"check --fast", "\"--fast\"", "「--fast」"},
    {"registers", "FILE is missing.", "FILE を指定してください"},
    {"convert FLAT", "OUT is missing.", "OUT を指定してください"},
    {"profile FLAT", "--axis is missing.", "--axis を指定してください"},
    {"registers FLAT --panel", "--panel needs a value.", "--panel に値を指定してください"},
    {"registers FLAT FLAT", "is one too many", "が余分です"},
    {"profile FLAT --axis h --panel abc", "\"abc\"", "「abc」"},
    {"registers FLAT --panel -64x64", "-64x64", "-64x64"},
    {"registers FLAT --panel 64x99999999999", "16 to 2048", "16～"},
    {"registers FLAT --panel 16x15", "\"16x15\"", "「16x15」"},
    {"registers FLAT --panel 64x64x", "\"64x64x\"", "「64x64x」"},
    {"registers FLAT --panel ''", "\"\" is not correct", "「」"},
    {"profile FLAT --axis x", "use h or v", "h または v"},
    {"curve a.wls --axis v", "holds one curve", "曲線が 1 つ"},
    {"curve FLAT --samples 1", "--samples must be", "--samples には"},
    {"curve FLAT --samples 2050", "2 to 2049", "2～2049"},
    {"frames FLAT --send 20,13", "\"20,13\" cannot be sent", "「20,13」"},
    {"frames FLAT --send 20,", "cannot be sent", "送信できません"},
    {"frames FLAT --send 1 --class x", "0 to 255", "0～255"},
    {"frames FLAT --send 1 --reply5 256", "--reply5", "--reply5"},
    {"convert a.txt b.wlt", "\"a.txt\" is of no known kind", "「a.txt」"},
    {"convert FLAT b", "\"b\" is of no known kind", "「b」"},
    {"convert FLAT b.wls", "not of the same kind", "種類が異なります"},
    {"store a.wlr", "correction data file (wlt)", "(wlt)"},
    {"mode 3", "MODE must be a whole number from 0 to 2", "0～2"},
    {"mode --usb 1 --lan a:1", "only one", "同時に"},
    {"mode --lan 127.0.0.1:", "ADDRESS:PORT", "アドレス:ポート"},
    {"mode --lan 12345678901234567", "16 characters", "16 文字"},
    {"mode --lan 127.0.0.1:0", "\"127.0.0.1:0\"", "「127.0.0.1:0」"},
    {"mode --lan 127.0.0.1:65536", "1 to 65535", "1～65535"},
    {"mode --lan :7142", "\":7142\"", "「:7142」"},
    {"mode --lan 12345678901234567:1", "16 characters", "16 文字"},
    {"mode --serial 1", "N:SPEED", "番号:速度"},
    {"mode --serial 1:9601", "9600", "9600"},
    {"initialize --serial 9:9600", "from 1 to 8", "1～8"},
    {"initialize --usb 0", "--usb must be", "--usb には"},
    {"picture cards -o a.png", "use one of card, grid, checkerboard", "「cards」"},
    {"search --timeout 7001", "500 to 7000", "500～7000"},
    {"mode --timeout 499", "500 to 7000", "500～7000"},
};

TEST(Usage, WrongCommandLinesSayWhatIsWrong) {
  const TempFolder folder;
  const std::string flat = folder.Write("flat.wlt", kFlatFile).string();
  for (const auto& [line, english, japanese] : kUsageRows) {
    Words words;
    std::istringstream stream(line);
    for (std::string word; stream >> word;) {
      words.push_back(word == "FLAT" ? flat : word == "''" ? "" : word);
    }
    // The last word may be an option that lacks its value, so the language goes in front.
    for (const auto& [language, text] : {std::pair("en", english), {"ja", japanese}}) {
      std::ostringstream out, err;
      EXPECT_EQ(RunCommandLine(Words{"--language", language} + words, out, err), 2) << line;
      EXPECT_EQ(out.str(), "") << line;
      EXPECT_TRUE(Holds(err.str(), text)) << line << ": " << err.str();
      EXPECT_TRUE(Holds(err.str(), "--help")) << line << ": " << err.str();
    }
  }
}

TEST(Usage, VersionTellsWhoseLibrariesAreThere) {
  const CliResult result = RunCli({"--version"});
  EXPECT_EQ(result.exit_code, 0) << result;
  const Words lines = LinesOf(result.out);
  ASSERT_EQ(lines.size(), 5U) << result;
  EXPECT_EQ(lines[0], "warpline 3.0");
  EXPECT_TRUE(lines[1].starts_with("commit: ")) << lines[1];
  EXPECT_EQ((Words{lines.begin() + 2, lines.end()}),
            (Words{"wxWidgets: none", "Beamlink: stand-in", "Beamseek2: stand-in"}));
  const TempFolder folder;
  folder.Write(SharedLibrary::FileName("Beamseek2").c_str(), "of the maker's");
  EXPECT_EQ(LibraryVersionText(folder.Path()), "Beamlink: missing\nBeamseek2: found\n");
  const auto tool = StartAnswer({"--version"}, "3.2", folder.Path());
  EXPECT_EQ(tool, "WarplineTool 3.0\n" + lines[1] +
                      "\nwxWidgets: 3.2\nBeamlink: missing\nBeamseek2: found\n");
  EXPECT_TRUE(StartAnswer({"--help", "/J"}, "", "")->starts_with("使い方: WarplineTool"));
  EXPECT_EQ(StartAnswer({"a.wlt", "/E"}, "", ""), std::nullopt);
}

TEST(Usage, LanguageStandsAnywhere) {
  std::ostringstream out, err, unknown;
  RunCommandLine({"--language", "en", "--language=ja"}, out, err);
  EXPECT_TRUE(Holds(err.str(), "コマンドを指定してください")) << err.str();
  EXPECT_EQ(RunCommandLine({"check", "x.wlt", "--language", "fr"}, out, unknown), 2);
  EXPECT_TRUE(Holds(unknown.str(), "\"fr\"")) << unknown.str();
}

TEST(Usage, HelpOnEveryLevel) {
  for (const char* language : {"en", "ja"}) {
    const CliResult program = RunCli({"--help"}, language);
    EXPECT_EQ(program.exit_code, 0);
    EXPECT_EQ(program.err, "");
    for (const Verb& verb : Verbs()) {
      EXPECT_TRUE(Holds(program.out, std::string(verb.name))) << verb.name;
      const std::string name(verb.name);
      const CliResult help = RunCli({name, "--help"}, language);
      EXPECT_EQ(help.exit_code, 0) << name;
      EXPECT_EQ(Holds(help.out, "Options:"), language == std::string("en")) << help.out;
      EXPECT_TRUE(Holds(help.out, "warpline " + name)) << help.out;
      for (const ArgumentRow& row : verb.arguments) {
        EXPECT_TRUE(Holds(help.out, std::string(row.name))) << name << " " << row.name;
      }
    }
  }
}

}  // namespace
}  // namespace warpline
