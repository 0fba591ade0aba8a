#include <nlohmann/json.hpp>

#include "cli/verb_input.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"
#include "tests/support/source_folder.h"

namespace warpline {
namespace {

// A triangle: at its kink the second difference is far beyond four bits.
constexpr const char* kKinkFile =
    "[Warpline Tool Data File 3.0]\r\nScreenType=3\r\nDistortionH=150\r\nCorrePointNumH=3\r\n"
    "CorreDataPtsX00H=0\r\nCorreDataPtsY00H=750000\r\nCorreDataPtsX01H=500000\r\n"
    "CorreDataPtsY01H=1000000\r\nCorreDataPtsX02H=1000000\r\nCorreDataPtsY02H=750000\r\n";

class VerifyTest : public FilesTest {
 protected:
  // The state of a projector to which the correction was applied.
  nlohmann::json StateShowing(const std::string& correction, PanelSize panel = {1024, 768}) {
    {
      const ProjectorServer projector(
          sim::StationSetup{.Projector = {.Panel = panel}, .State = folder_ / "state.json"});
      EXPECT_EQ(RunCli({"apply", correction, "--lan", projector.Place()}).exit_code, 0);
    }  // it has ended: nobody replaces the file while it is read
    return nlohmann::json::parse(TempFolder::Read(folder_ / "state.json"));
  }

  CliResult Verify(const std::string& correction, const std::string& state) {
    return RunCli({"verify", correction, "--state", Put("state.json", state)});
  }

  OwnSettings settings_{folder_.Path()};
  const std::string bent_ = Put("bent.wlt", kBentFile);
};

TEST_F(VerifyTest, AgreesWithWhatItsOwnRegistersShow) {
  const CliResult result = Verify(bent_, StateShowing(bent_).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_EQ(result.out.find("Spherical Screen: 984 bytes, 8 frames, largest difference H 0."), 0U)
      << result.out;
  EXPECT_TRUE(Holds(result.out, "; agrees\n")) << result.out;
  const auto json = nlohmann::json::parse(
      RunCli({"verify", bent_, "--state", Name("state.json"), "--json"}, "ja").out);
  EXPECT_EQ(json["verdict"], "agrees");
  EXPECT_EQ(json["bytes"], 984);
  EXPECT_LT(json["vertical"]["pixels"], 1);
  EXPECT_EQ(Verify(bent_, StateShowing(bent_, {2049, 2049}).dump()).exit_code, 0) << "the largest";
}

TEST_F(VerifyTest, TellsWhereTheEncodingCannotFollow) {
  const std::string kink = Put("kink.wlt", kKinkFile);
  const CliResult result = Verify(kink, StateShowing(kink).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_TRUE(Holds(result.out, "cannot follow the profile at H line 393\n")) << result.out;
}

TEST_F(VerifyTest, FailsForAScaleBeyondItsRegister) {
  std::string text = TempFolder::Read(SourceFolder() / "examples/corner_wall.wlt");
  const std::string usual = "DistortionV=24";
  text.replace(text.find(usual), usual.size(), "DistortionV=150");
  const std::string narrow = Put("narrow.wlt", text);  // the first column's scale would be 65536
  const CliResult result = Verify(narrow, StateShowing(narrow).dump());
  EXPECT_EQ(result.exit_code, 1) << result;
  EXPECT_TRUE(Holds(result.out, "scale of V line 0 does not fit its register\n")) << result;
}

TEST_F(VerifyTest, SeesOneWrongLine) {
  nlohmann::json state = StateShowing(bent_);
  state["line_scales"]["vertical"][40] = 0;
  const CliResult result = Verify(bent_, state.dump());
  EXPECT_EQ(result.exit_code, 1) << result;
  EXPECT_FALSE(Holds(result.out, "inf")) << "nothing is drawn: the whole line is missing";
  EXPECT_TRUE(Holds(result.out, "something else at V line 40")) << result.out;
}

TEST_F(VerifyTest, RefusesWhatIsNoState) {
  nlohmann::json short_scales = StateShowing(bent_);
  short_scales["line_scales"]["horizontal"].erase(0);
  nlohmann::json no_session = StateShowing(bent_);
  no_session.erase("session");
  nlohmann::json huge_panel = StateShowing(bent_);
  huge_panel["panel"]["width"] = 1000000;
  nlohmann::json tiny_panel = StateShowing(bent_);
  tiny_panel["panel"]["height"] = kMinPanelLines - 1;
  tiny_panel["line_scales"]["horizontal"] = std::vector<int>(kMinPanelLines - 1, 32768);
  nlohmann::json fraction = StateShowing(bent_);
  fraction["line_scales"]["vertical"][3] = 6.4e37;
  for (const std::string& text : Words{"", "{", "[1]", short_scales.dump(), no_session.dump(),
                                       huge_panel.dump(), tiny_panel.dump(), fraction.dump()}) {
    const CliResult result = Verify(bent_, text);
    EXPECT_EQ(result.exit_code, 1) << text.substr(0, 40);
    EXPECT_TRUE(Holds(result.err, "is not a state file")) << result.err;
  }
  const CliResult gone = RunCli({"verify", bent_, "--state", Name("gone.json")});
  EXPECT_EQ(gone.exit_code, 1);
  EXPECT_TRUE(gone.err.starts_with(Name("gone.json") + ": ")) << gone;
}

}  // namespace
}  // namespace warpline
