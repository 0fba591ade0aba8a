#include <nlohmann/json.hpp>

#include "tests/cli/cli_run.h"
#include "tests/support/sim_hex.h"
#include "tests/support/source_folder.h"

// The verbs that need no projector.

namespace warpline {
namespace {

using sim::kClear, sim::kMode1, sim::kPrepare, sim::kShow, sim::kStore;

using WorkTest = FilesTest;

constexpr const char* kFlatRegisters =
    "[Warpline Register File]\n"
    "h_panel_ext=0000\nh_scroll=0000\nh_opt_center=E0\nh_linearity=00\nh_comp_disp=00\n"
    "h_stadium=00\nh_corre_0=0080\nh_corre_1=00\nh_corre_2_0000=000000000000000000\n"
    "v_panel_ext=0000\nv_scroll=0000\nv_opt_center=E0\nv_linearity=00\nv_comp_disp=00\n"
    "v_stadium=00\nv_corre_0=0080\nv_corre_1=00\nv_corre_2_0000=00000000000000\n";

std::string WithCrLf(const std::string& text) {
  std::string crlf;
  for (const std::string& line : LinesOf(text)) crlf += line + "\r\n";
  return crlf;
}

TEST_F(WorkTest, RegistersArePrintedOrWritten) {
  const std::string flat = Put("flat.wlt", kFlatFile);
  const CliResult printed = RunCli({"registers", flat, "--panel", "16x20"});
  EXPECT_EQ(printed.exit_code, 0) << printed;
  EXPECT_EQ(printed.out, kFlatRegisters);
  EXPECT_EQ(printed.err, "");

  const CliResult written = RunCli({"registers", flat, "--panel", "16x20", "-o", Name("flat.wlr")});
  EXPECT_EQ(written.exit_code, 0) << written;
  EXPECT_EQ(written.out, "");
  EXPECT_EQ(TempFolder::Read(folder_ / "flat.wlr"), WithCrLf(kFlatRegisters));
  EXPECT_EQ(RunCli({"check", Name("flat.wlr")}).exit_code, 0);
}

TEST_F(WorkTest, RegistersOfTheExampleStayWhatTheyWere) {
  const std::filesystem::path examples = SourceFolder() / "examples";
  const CliResult result = RunCli({"registers", (examples / "sphere.wlt").string()});
  EXPECT_EQ(WithCrLf(result.out), TempFolder::Read(examples / "registers.wlr"));
}

TEST_F(WorkTest, ProfileHasOneNumberALine) {
  const std::string flat = Put("flat.wlt", kFlatFile), bent = Put("bent.wlt", kBentFile);
  const auto numbers = [](const Words& words) { return LinesOf(RunCli(words).out); };
  EXPECT_EQ(numbers({"profile", flat, "--axis", "h"}), Words(768, "1024"));
  EXPECT_EQ(numbers({"profile", flat, "--axis", "v", "--panel", "1920X1200"}), Words(1920, "1200"));
  // The arch is 0.8 at both ends: with 30 percent the size is 1024 * (1 - 0.2 * 0.3), the preview's
  // 1024 * (1 - 2 * ...).
  const Words arch = numbers({"profile", bent, "--axis", "h"});
  ASSERT_EQ(arch.size(), 768U);
  EXPECT_NEAR(std::stod(arch.front()), 962.56, 1e-6);
  EXPECT_NEAR(std::stod(arch[384]), 1024.0, 0.01);
  const Words preview = numbers({"profile", bent, "--axis", "h", "--preview"});
  EXPECT_NEAR(std::stod(preview.front()), 901.12, 1e-6);
}

TEST_F(WorkTest, CurveOfBothKindsOfFile) {
  const std::string bent = Put("bent.wlt", kBentFile);
  EXPECT_EQ(LinesOf(RunCli({"curve", bent}).out).size(), 501U);
  const std::string shape =
      Put("line.wls",
          "[Warpline Shape File 2.0]\r\nCorrePointNum=2\r\nCorreInterp=1\r\nCorreDataPtsX00=0\r\n"
          "CorreDataPtsY00=750000\r\nCorreDataPtsX01=1000000\r\nCorreDataPtsY01=1000000\r\n");
  EXPECT_EQ(RunCli({"curve", shape, "--samples", "3"}).out, "0.75\n0.875\n1\n");
}

constexpr const char* kHorizontal = "01DF0000140200100000000000008000E0000000000000000066";
constexpr const char* kVertical = "01DF0000140300100000000000008000E0000000000000000067";

TEST_F(WorkTest, FramesOfEverySequence) {
  const Words apply{
      kPrepare, kClear, kHorizontal, kVertical, "01DF0000051000010000F6", "01DF0000051100010000F7",
      kShow};
  const Words store{kStore, kMode1};
  const std::pair<Words, Words> rows[] = {
      {{"apply"}, apply},
      {{"store"}, store},
      {{"store", "--mode", "2"}, store},  // always 1
      {{"initialize"}, {kPrepare, kClear, kShow}},
      {{"1,0"}, {kShow, kClear}},
      {{"18"}, {"01DE0000020000E1"}},
      {{"18", "--mode", "2"}, {"01DE0000020200E3"}},
      {{"19"}, {kMode1}},
  };
  const std::string flat = Put("flat.wlt", kFlatFile);
  ASSERT_EQ(RunCli({"registers", flat, "--panel", "16x16", "-o", Name("flat.wlr")}).exit_code, 0);
  for (const auto& [send, frames] : rows) {
    SCOPED_TRACE(send.front());
    Words words = Words{"frames", flat, "--panel", "16x16", "--send"} + send;
    const CliResult result = RunCli(words);
    EXPECT_EQ(result.exit_code, 0) << result;
    EXPECT_EQ(LinesOf(result.out), frames);
    words[1] = Name("flat.wlr");
    EXPECT_EQ(RunCli(words).out, result.out) << "from the registers";
  }
}

TEST_F(WorkTest, StoreByTheWholeBlock) {
  const std::string flat = Put("flat.wlt", kFlatFile);
  const auto store = [&flat](const Words& more) {
    return RunCli(Words{"frames", flat, "--send", "21"} + more);
  };
  // Header, count, address, data length: 1536 bytes of tables and 22 of short fields.
  EXPECT_EQ(store({"--class", "4"}).out.substr(0, 22), "01FC00061D006004001606");
  EXPECT_EQ(store({"--class", "4", "--reply5", "13"}).out.substr(10, 8), "00500400");
  EXPECT_EQ(LinesOf(RunCli({"frames", flat, "--send", "store", "--class", "4"}).out).size(), 2U);

  const std::string refused = "This is not supported by the currently connected projectors.";
  for (const Words& words : {Words{"--class", "2"}, {"--class", "3", "--panel", "1920x1200"}}) {
    const CliResult result = store(words);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(Holds(result.err, refused)) << result.err;
  }
}

TEST_F(WorkTest, FramesOfRegistersThatDoNotFitAreRefused) {
  std::string text = kFlatRegisters;
  text.replace(text.find("h_scroll=0000"), 13, "h_scroll=00");
  const std::string brief = Put("brief.wlr", text), whole = Put("whole.wlr", kFlatRegisters);
  for (const Words& words : {Words{"frames", brief}, {"frames", whole, "--panel", "16x22"}}) {
    const CliResult result = RunCli(words + Words{"--send", "apply"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, words[1] + ": The length of parameter is not correct.\n");
  }
}

TEST_F(WorkTest, CheckTellsEachFile) {
  const std::string flat = Put("flat.WLT", kFlatFile);
  const std::string broken = Put("broken.wlt", "[Warpline Tool Data File 3.0]\r\nScreenType=6\r\n");
  const std::string notes = Put("notes.txt", "nothing of ours\r\n");
  const std::string huge =
      Put("huge.wlt", "[Warpline Tool Data File 3.0]\r\nScreenType=99999999999\r\n");
  const std::string registers = Put("bad.wlr", "[Warpline Register File]\nh_opt_center=1G0\n");
  const CliResult result = RunCli({"check", flat, broken, notes, huge, registers, flat});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "");
  const Words expected{flat + ": ok",
                       broken + ":2: ScreenType: The parameter value is not correct.",
                       notes + ": The file format is corrupted.",
                       huge + ":2: ScreenType: [1] Wrong value.",
                       registers +
                           ":2: h_opt_center: The length of parameter is not correct. "
                           "The parameter value is not correct.",
                       flat + ": ok"};
  EXPECT_EQ(LinesOf(result.out), expected);
  EXPECT_EQ(RunCli({"check", flat}).exit_code, 0);
  const CliResult converted = RunCli({"convert", huge, Name("new.wlt")});
  EXPECT_EQ(converted.exit_code, 1);
  EXPECT_EQ(converted.err, huge + ":2: ScreenType: [1] Wrong value.\n");
  const CliResult japanese = RunCli({"check", broken}, "ja");
  EXPECT_EQ(japanese.exit_code, 1);
  EXPECT_EQ(japanese.out.find("not correct"), std::string::npos) << japanese.out;

  const auto json = nlohmann::json::parse(RunCli({"check", flat, broken, "--json"}).out);
  EXPECT_EQ(json["ok"], false);
  EXPECT_EQ(json["files"][0]["ok"], true);
  EXPECT_EQ(json["files"][1]["line"], 2);
  EXPECT_EQ(json["files"][1]["key"], "ScreenType");
  const std::string hostile = Put("esc.wlt", "[Warpline Tool Data File 3.0]\r\n\x1b[2J=1\r\n");
  EXPECT_EQ(RunCli({"check", hostile}).out, hostile + ":2: The parameter value is not correct.\n");
}

TEST_F(WorkTest, StandardStreamsStandForFiles) {
  const auto run = [](const Words& words, const std::string& input) {
    std::istringstream in(input);
    std::ostringstream out, err;
    const Words all = words + Words{"--language", "en"};
    const int exit_code = RunCommandLine(all, out, err, false, in);
    return CliResult{exit_code, out.str(), err.str()};
  };
  const std::string flat = Put("flat.wlt", kFlatFile);
  const CliResult made = run({"registers", "-", "--panel", "16x20", "--output", "-"}, kFlatFile);
  EXPECT_EQ(made.out, WithCrLf(kFlatRegisters)) << made;
  const CliResult checked = run({"check", "-", flat}, made.out);
  EXPECT_EQ(checked.out, "-: ok\n" + flat + ": ok\n");
  EXPECT_EQ(run({"convert", "-", "-"}, made.out).out, made.out) << "a kind by its header";
  EXPECT_EQ(run({"check", "-"}, "[Warpline Tool 3.0]\n").out, "-: ok\n");
  EXPECT_TRUE(Holds(run({"frames", "-", "--send", "1"}, made.out).out, "01"));
  EXPECT_TRUE(run({"preview", flat, "-o", "-"}, "").out.starts_with("<")) << "an SVG picture";
  EXPECT_TRUE(Holds(run({"sheet", "-", "-o", "-"}, kFlatFile).out, "download=\"correction.wlt\""));
  const CliResult card = run({"picture", "card", "-o", "-", "--panel", "400x320"}, "");
  EXPECT_EQ(run({"picture", "own", "--image", "-", "-o", "-", "--panel", "400x320"}, card.out).out,
            card.out);
  EXPECT_EQ(run({"profile", "-", "--axis", "h"}, "[Warpline Tool Data File 3.0]\nOpticalH=x\n").err,
            "-:2: OpticalH: The parameter value is not correct.\n");
  EXPECT_TRUE(Holds(run({"convert", "-", flat}, "notes").err, "no known kind"));
}

TEST_F(WorkTest, CheckAndRegistersTellWhereTheProjectorCannotFollow) {
  std::string text = TempFolder::Read(SourceFolder() / "examples/corner_wall.wlt");
  text.replace(text.find("DistortionV=24"), 14, "DistortionV=150");
  const std::string sharp = Put("sharp.wlt", text.replace(text.find("calV=-16"), 8, "calV=-17"));
  const std::string cut = Put("cut.wlt", text.replace(text.find("calV=-17"), 8, "calV=-13"));
  const std::string start =
      ": The projector cannot follow the vertical correction between columns ";
  const std::string told = sharp + start + "513 and 1023: up to 3.9 pixels off.\n" + cut + start +
                           "0 and 1023: up to 768 pixels off.\n";
  const CliResult checked = RunCli({"check", sharp, cut, "--panel", "1024x768"});
  EXPECT_EQ(checked.exit_code, 0) << checked;
  EXPECT_EQ(checked.err, told);
  EXPECT_EQ(RunCli({"check", sharp, cut}).out + RunCli({"check", cut}).err, checked.out);
  EXPECT_EQ(RunCli({"registers", sharp}).err + RunCli({"registers", cut}).err, told);
  EXPECT_TRUE(Holds(RunCli({"registers", cut}, "ja").err, "列 0～1023"));
  EXPECT_EQ(RunCli({"check", sharp, "--panel", "1024"}).exit_code, 2);
}

TEST_F(WorkTest, MissingFilesSaySo) {
  for (const char* name : {"gone.wlt", "gone.wlr", "gone.wls", "gone.ini"}) {
    const CliResult check = RunCli({"check", Name(name)});
    EXPECT_EQ(check.exit_code, 1) << name;
    EXPECT_TRUE(check.out.starts_with(Name(name) + ": ")) << check.out;
    EXPECT_GT(check.out.size(), Name(name).size() + 3) << check.out;
    const CliResult convert = RunCli({"convert", Name(name), Name(name) /* never written */});
    EXPECT_EQ(convert.exit_code, 1) << name;
    EXPECT_TRUE(convert.err.starts_with(Name(name) + ": ")) << convert;
  }
  for (Words words :
       {Words{"registers"}, {"curve"}, {"profile", "--axis", "v"}, {"frames", "--send", "apply"}}) {
    words.push_back(Name("gone.wlt"));
    const CliResult result = RunCli(words);
    EXPECT_EQ(result.exit_code, 1) << words.front();
    EXPECT_EQ(result.out, "") << words.front();
    EXPECT_TRUE(result.err.starts_with(Name("gone.wlt") + ": ")) << result;
  }
  EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(WorkTest, ConvertWritesThePresentVersion) {
  const std::string old =
      Put("old.wlt", "[Warpline Tool Data File 2.0]\r\nDistortionH=5\r\nScreenType=2\r\n");
  ASSERT_EQ(RunCli({"convert", old, Name("new.WLT")}).exit_code, 0);
  const Words lines = LinesOf(TempFolder::Read(folder_ / "new.WLT"));
  ASSERT_EQ(lines.size(), 88U);
  EXPECT_EQ(lines[0], "[Warpline Tool Data File 3.0]\r");
  EXPECT_EQ(lines[1], "ScreenType=2\r");
  EXPECT_EQ(lines[4], "DistortionH=2\r");

  const std::string shape = Put(
      "old.wls", "[Warpline Shape File]\r\nCorreDataPtsX1=1000000\r\nCorreDataPtsY0=760000\r\n");
  ASSERT_EQ(RunCli({"convert", shape, Name("new.wls")}).exit_code, 0);
  EXPECT_EQ(LinesOf(TempFolder::Read(folder_ / "new.wls"))[6], "CorreDataPtsY00=760000\r");

  const std::string settings = Put("old.ini", "LANPort=4352\nDemoMode=7\n[Warpline Tool 3.0]\n");
  ASSERT_EQ(RunCli({"convert", settings, Name("new.ini")}).exit_code, 0);
  const std::string written = TempFolder::Read(folder_ / "new.ini");
  EXPECT_TRUE(Holds(written, "LANPort=4352\r\n"));
  EXPECT_TRUE(Holds(written, "DemoMode=0\r\n"));

  const std::string registers = Put("old.wlr", kFlatRegisters);
  ASSERT_EQ(RunCli({"convert", registers, Name("new.wlr")}).exit_code, 0);
  EXPECT_EQ(TempFolder::Read(folder_ / "new.wlr"), WithCrLf(kFlatRegisters));
}

TEST_F(WorkTest, NamesWithoutAFolderAreInTheCurrentOne) {
  Put("in.wlt", kFlatFile);
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.Path());
  const CliResult result = RunCli({"convert", "in.wlt", "out.wlt"});
  std::filesystem::current_path(before);
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_EQ(folder_.Names(), (Words{"in.wlt", "out.wlt"}));
}

TEST_F(WorkTest, OutputThatCannotBeWrittenIsAFailure) {
  const std::string flat = Put("flat.wlt", kFlatFile);
  const std::string settings = Put("own.ini", "[Warpline Tool 3.0]\n");
  for (const Words& words : {Words{"registers", flat, "-o", Name("none/out.wlr")},
                             {"convert", flat, Name("none/out.wlt")},
                             {"convert", settings, Name("none/out.ini")}}) {
    const CliResult result = RunCli(words);
    EXPECT_EQ(result.exit_code, 1) << words.front();
    EXPECT_TRUE(result.err.starts_with(words.back() + ": ")) << result;
  }
  std::ostringstream out;
  out.setstate(std::ios::badbit);
  std::ostringstream err;
  EXPECT_EQ(RunCommandLine({"registers", flat, "--language", "en"}, out, err), 1);
  EXPECT_EQ(err.str(), "The output could not be written.\n");
}

}  // namespace
}  // namespace warpline
