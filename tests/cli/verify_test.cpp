#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "core/system.h"
#include "model/registers.h"
#include "tests/cli/cli_run.h"
#include "tests/support/temp_folder.h"

namespace warpline {
namespace {

constexpr PanelSize kPanel{1024, 768};

// A triangle: at its kink the second difference is far beyond four bits.
constexpr const char* kKinkFile =
    "[Warpline Tool Data File 3.0]\r\nScreenType=3\r\nDistortionH=150\r\nCorrePointNumH=3\r\n"
    "CorreDataPtsX00H=0\r\nCorreDataPtsY00H=750000\r\nCorreDataPtsX01H=500000\r\n"
    "CorreDataPtsY01H=1000000\r\nCorreDataPtsX02H=1000000\r\nCorreDataPtsY02H=750000\r\n";

class VerifyTest : public testing::Test {
 protected:
  // The state of a projector that shows a register file.
  nlohmann::json StateShowing(const std::string& correction) {
    const std::string panel = std::to_string(kPanel.Width) + "x" + std::to_string(kPanel.Height);
    const CliResult built = RunCli({"registers", correction, "--panel", panel});
    RegisterSet registers;
    std::istringstream stream(built.out);
    for (std::string line; std::getline(stream, line);) {
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
    const std::string path = folder_.Write("state.json", state).string();
    return RunCli({"verify", correction, "--state", path});
  }

  TempFolder folder_;
};

TEST_F(VerifyTest, AgreesWithWhatItsOwnRegistersShow) {
  const std::string bent = folder_.Write("bent.wlt", kBentFile).string();
  const CliResult result = Verify(bent, StateShowing(bent).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_EQ(result.out.find("Spherical Screen: 123 bytes, 7 frames, largest difference H 0."), 0U)
      << result.out;
  EXPECT_NE(result.out.find("; agrees\n"), std::string::npos) << result.out;
}

TEST_F(VerifyTest, TellsWhereTheEncodingCannotFollow) {
  const std::string kink = folder_.Write("kink.wlt", kKinkFile).string();
  const CliResult result = Verify(kink, StateShowing(kink).dump());
  EXPECT_EQ(result.exit_code, 0) << result;
  EXPECT_NE(result.out.find("cannot follow the profile at H line "), std::string::npos)
      << result.out;
  EXPECT_EQ(result.out.find("V line"), std::string::npos) << result.out;
}

TEST_F(VerifyTest, SeesOneWrongLine) {
  const std::string bent = folder_.Write("bent.wlt", kBentFile).string();
  nlohmann::json state = StateShowing(bent);
  state["line_scales"]["vertical"][40] = 65536;
  const CliResult result = Verify(bent, state.dump());
  EXPECT_EQ(result.exit_code, 1) << result;
  EXPECT_NE(result.out.find("something else at V line 40"), std::string::npos) << result.out;

  const std::string flat = folder_.Write("flat.wlt", kFlatFile).string();
  EXPECT_EQ(Verify(flat, StateShowing(bent).dump()).exit_code, 1);
}

TEST_F(VerifyTest, RefusesWhatIsNoState) {
  const std::string bent = folder_.Write("bent.wlt", kBentFile).string();
  nlohmann::json short_scales = StateShowing(bent);
  short_scales["line_scales"]["horizontal"].erase(0);
  nlohmann::json no_session = StateShowing(bent);
  no_session.erase("session");
  nlohmann::json huge_panel = StateShowing(bent);
  huge_panel["panel"]["width"] = 1000000;
  for (const std::string& text : {std::string(), std::string("{"), std::string("[1]"),
                                  short_scales.dump(), no_session.dump(), huge_panel.dump()}) {
    const CliResult result = Verify(bent, text);
    EXPECT_EQ(result.exit_code, 1) << text.substr(0, 40);
    EXPECT_NE(result.err.find("is not a state file"), std::string::npos) << result.err;
  }
  EXPECT_EQ(RunCli({"verify", bent, "--state", (folder_ / "gone.json").string()}).exit_code, 1);
}

}  // namespace
}  // namespace warpline
