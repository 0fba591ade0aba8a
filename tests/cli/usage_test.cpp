#include <gtest/gtest.h>

#include "cli/verbs.h"
#include "tests/cli/cli_run.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

struct UsageRow {
  const char* name;
  std::vector<std::string> words;
  const char* english;
  const char* japanese;
};

// FLAT stands for a correction file that is there.
const UsageRow kUsageRows[] = {
    {"nothing at all", {}, "A verb is missing.", "コマンドを指定してください"},
    {"language without a value",
     {"--language"},
     "--language needs a value.",
     "--language に値を指定してください"},
    {"unknown verb", {"seek"}, "no verb \"seek\"", "「seek」というコマンドはありません"},
    {"unknown option of the program", {"--fast"}, "no option \"--fast\"", "「--fast」"},
    {"unknown option of a verb", {"check", "--fast", "FLAT"}, "no option \"--fast\"", "「--fast」"},
    {"unknown option before what is missing", {"check", "--fast"}, "\"--fast\"", "「--fast」"},
    {"missing file", {"registers"}, "FILE is missing.", "FILE を指定してください"},
    {"missing second file", {"convert", "FLAT"}, "OUT is missing.", "OUT を指定してください"},
    {"missing axis", {"profile", "FLAT"}, "--axis is missing.", "--axis を指定してください"},
    {"option without value",
     {"registers", "FLAT", "--panel"},
     "--panel needs a value.",
     "--panel に値を指定してください"},
    {"one file too many", {"registers", "FLAT", "FLAT"}, "is one too many", "が余分です"},
    {"panel 0x0", {"registers", "FLAT", "--panel", "0x0"}, "\"0x0\" is not correct", "「0x0」"},
    {"panel 1x1", {"registers", "FLAT", "--panel", "1x1"}, "16 to 2048", "16～2048"},
    {"panel too large",
     {"frames", "FLAT", "--send", "apply", "--panel", "99999x99999"},
     "\"99999x99999\"",
     "「99999x99999」"},
    {"panel not a size",
     {"profile", "FLAT", "--axis", "h", "--panel", "abc"},
     "\"abc\"",
     "「abc」"},
    {"panel with a sign", {"registers", "FLAT", "--panel", "-64x64"}, "-64x64", "-64x64"},
    {"panel beyond 32 bits",
     {"registers", "FLAT", "--panel", "64x99999999999"},
     "16 to 2048",
     "16～"},
    {"panel too low by one", {"registers", "FLAT", "--panel", "16x15"}, "\"16x15\"", "「16x15」"},
    {"panel with a tail", {"registers", "FLAT", "--panel", "64x64x"}, "\"64x64x\"", "「64x64x」"},
    {"empty panel", {"registers", "FLAT", "--panel", ""}, "\"\" is not correct", "「」"},
    {"wrong axis", {"profile", "FLAT", "--axis", "x"}, "use h or v", "h または v"},
    {"axis of a shape", {"curve", "a.wls", "--axis", "v"}, "holds one curve", "曲線が 1 つ"},
    {"one sample", {"curve", "FLAT", "--samples", "1"}, "--samples must be", "--samples には"},
    {"too many samples", {"curve", "FLAT", "--samples", "2050"}, "2 to 2049", "2～2049"},
    {"command 13", {"frames", "FLAT", "--send", "20,13"}, "\"20,13\" cannot be sent", "「20,13」"},
    {"command 22", {"frames", "FLAT", "--send", "22"}, "cannot be sent", "送信できません"},
    {"no command", {"frames", "FLAT", "--send", "20,"}, "cannot be sent", "送信できません"},
    {"class not a number", {"frames", "FLAT", "--send", "1", "--class", "x"}, "0 to 255", "0～255"},
    {"reply byte too large",
     {"frames", "FLAT", "--send", "1", "--reply5", "256"},
     "--reply5",
     "--reply5"},
    {"unknown kind", {"convert", "a.txt", "b.wlt"}, "\"a.txt\" is of no known kind", "「a.txt」"},
    {"unknown kind written", {"convert", "FLAT", "b"}, "\"b\" is of no known kind", "「b」"},
    {"kinds differ", {"convert", "FLAT", "b.wls"}, "not of the same kind", "種類が異なります"},
    {"registers cannot be stored", {"store", "a.wlr"}, "correction data file (wlt)", "(wlt)"},
    {"mode 3", {"mode", "3"}, "MODE must be a whole number from 0 to 2", "0～2"},
    {"two connections", {"mode", "--usb", "1", "--lan", "a:1"}, "only one", "同時に"},
    {"address without port", {"mode", "--lan", "127.0.0.1"}, "ADDRESS:PORT", "アドレス:ポート"},
    {"port 0", {"mode", "--lan", "127.0.0.1:0"}, "\"127.0.0.1:0\"", "「127.0.0.1:0」"},
    {"port 65536", {"mode", "--lan", "127.0.0.1:65536"}, "1 to 65535", "1～65535"},
    {"no address", {"mode", "--lan", ":7142"}, "\":7142\"", "「:7142」"},
    {"address too long", {"mode", "--lan", "12345678901234567:1"}, "16 characters", "16 文字"},
    {"serial without speed", {"mode", "--serial", "1"}, "N:SPEED", "番号:速度"},
    {"serial speed", {"mode", "--serial", "1:9601"}, "9600", "9600"},
    {"COM9", {"initialize", "--serial", "9:9600"}, "from 1 to 8", "1～8"},
    {"USB0", {"initialize", "--usb", "0"}, "--usb must be", "--usb には"},
    {"search time too long", {"search", "--timeout", "7001"}, "500 to 7000", "500～7000"},
    {"time-out too short", {"mode", "--timeout", "499"}, "500 to 7000", "500～7000"},
};

TEST(Usage, WrongCommandLinesSayWhatIsWrong) {
  const TempFolder folder;
  const std::string flat = folder.Write("flat.wlt", kFlatFile).string();
  for (const UsageRow& row : kUsageRows) {
    std::vector<std::string> words = row.words;
    for (std::string& word : words) {
      if (word == "FLAT") word = flat;
    }
    // The last word may be an option that lacks its value, so the language goes in front.
    for (const auto& [language, text] : {std::pair("en", row.english), {"ja", row.japanese}}) {
      std::vector<std::string> all{"--language", language};
      all.insert(all.end(), words.begin(), words.end());
      std::ostringstream out;
      std::ostringstream err;
      EXPECT_EQ(RunCommandLine(all, out, err), 2) << row.name;
      EXPECT_EQ(out.str(), "") << row.name;
      EXPECT_NE(err.str().find(text), std::string::npos) << row.name << ": " << err.str();
      EXPECT_NE(err.str().find("--help"), std::string::npos) << row.name << ": " << err.str();
    }
  }
}

TEST(Usage, LanguageStandsAnywhere) {
  const std::string japanese = "コマンドを指定してください";
  std::ostringstream out;
  std::ostringstream err;
  RunCommandLine({"--language", "en", "--language=ja"}, out, err);
  EXPECT_NE(err.str().find(japanese), std::string::npos) << err.str();

  std::ostringstream unknown;
  EXPECT_EQ(RunCommandLine({"check", "x.wlt", "--language", "fr"}, out, unknown), 2);
  EXPECT_NE(unknown.str().find("\"fr\""), std::string::npos) << unknown.str();
}

TEST(Usage, HelpOnEveryLevel) {
  for (const char* language : {"en", "ja"}) {
    const CliTexts& texts = CliTextsOf(language == std::string("ja") ? 1 : 0);
    const CliResult program = RunCli({"--help"}, language);
    EXPECT_EQ(program.exit_code, 0);
    EXPECT_EQ(program.err, "");
    for (const Verb& verb : Verbs()) {
      EXPECT_NE(program.out.find(texts[verb.help]), std::string::npos) << verb.name;
      const CliResult help = RunCli({std::string(verb.name), "--help"}, language);
      EXPECT_EQ(help.exit_code, 0) << verb.name;
      EXPECT_EQ(help.out.find("Options:") == std::string::npos, language == std::string("ja"))
          << help.out;
      EXPECT_NE(help.out.find(std::string("warpline ") + std::string(verb.name)), std::string::npos)
          << help.out;
      for (const ArgumentRow& row : verb.arguments) {
        EXPECT_NE(help.out.find(row.name), std::string::npos) << verb.name << " " << row.name;
        EXPECT_NE(help.out.find(texts[row.help]), std::string::npos) << help.out;
      }
    }
  }
}

}  // namespace
}  // namespace warpline
