#include <nlohmann/json.hpp>

#include "cli/verb_input.h"
#include "core/system.h"
#include "model/registers.h"
#include "tests/cli/cli_run.h"

namespace warpline {
namespace {

constexpr PanelSize kPanel{1024, 768};

// A triangle: at its kink the second difference is far beyond four bits.
constexpr const char* kKinkFile =
    "[Warpline Tool Data File 3.0]\r\nScreenType=3\r\nDistortionH=150\r\nCorrePointNumH=3\r\n"
    "CorreDataPtsX00H=0\r\nCorreDataPtsY00H=750000\r\nCorreDataPtsX01H=500000\r\n"
    "CorreDataPtsY01H=1000000\r\nCorreDataPtsX02H=1000000\r\nCorreDataPtsY02H=750000\r\n";

class VerifyTest : public FilesTest {
 protected:
  // The state of a projector that shows a register file.
  nlohmann::json StateShowing(const std::string& correction) {
    const std::string panel = std::to_string(kPanel.Width) + "x" + std::to_string(kPanel.Height);
    const CliResult built = RunCli({"registers", correction, "--panel", panel});
    RegisterSet registers;
    for (const std::string& line : LinesOf(built.out)) {
      const Axis axis = line.front() == 'h' ? kHorizontal : kVertical;
      for (std::size_t field = 0; field < kRegisterFieldCount; ++field) {
        if (line.find(kRegisterFields[field].name) == 2)
          registers[axis][field] += line.substr(line.find('=') + 1);
      }
    }
    return {{"panel", {{"width", kPanel.Width}, {"height", kPanel.Height}}},
            {"line_scales",
             {{"horizontal", RebuildLineScales(registers[kHorizontal], kPanel.Height)},
              {"vertical", RebuildLineScales(registers[kVertical], kPanel.Width)}}},
            {"session", {{"frames", 7}, {"bytes", 123}}}};
  }

  CliResult Verify(const std::string& correction, const std::string& state) {
    return RunCli({"verify", correction, "--state", Put("state.json", state)});
  }

  const std::string bent_ = Put("bent.wlt", kBentFile);
};

TEST_F(VerifyTest, AgreesWithWhatItsOwnRegistersShow) {
  const CliResult result = Verify(bent_, StateShowing(bent_).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_EQ(result.out.find("Spherical Screen: 123 bytes, 7 frames, largest difference H 0."), 0U)
      << result.out;
  EXPECT_TRUE(Holds(result.out, "; agrees\n")) << result.out;
}

TEST_F(VerifyTest, TellsWhereTheEncodingCannotFollow) {
  const std::string kink = Put("kink.wlt", kKinkFile);
  const CliResult result = Verify(kink, StateShowing(kink).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_TRUE(Holds(result.out, "cannot follow the profile at H line 393\n")) << result.out;
}

TEST_F(VerifyTest, SeesOneWrongLine) {
  nlohmann::json state = StateShowing(bent_);
  state["line_scales"]["vertical"][40] = 65536;
  const CliResult result = Verify(bent_, state.dump());
  EXPECT_EQ(result.exit_code, 1) << result;
  EXPECT_TRUE(Holds(result.out, "something else at V line 40")) << result.out;

  const std::string flat = Put("flat.wlt", kFlatFile);
  EXPECT_EQ(Verify(flat, StateShowing(bent_).dump()).exit_code, 1);
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
  for (const std::string& text : Words{"", "{", "[1]", short_scales.dump(), no_session.dump(),
                                       huge_panel.dump(), tiny_panel.dump()}) {
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
