#include <nlohmann/json.hpp>

#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"

// The real program, because it starts itself once more for each library and for the link.

namespace warpline {
namespace {

TEST_F(FilesTest, DoctorTellsWhatWorksAndWhatNot) {
  const OwnSettings settings(folder_.Path());
  ProjectorServer projector;
  const Words words{"doctor",          "--language", "en",          "--lan",
                    projector.Place(), "--record",   Name("d.txt"), "--redact"};
  const CliResult good = RunProgram(words);
  EXPECT_EQ(good.exit_code, 0) << good;
  for (const char* row : {"Beamlink: PJAnyCommand\n", "Beamseek2: kind: ", "Panel: 1024x768, ",
                          "Model class: 5, ", "Verdict: Everything works."}) {
    EXPECT_TRUE(Holds(good.out, row)) << row << good;
  }
  EXPECT_EQ(projector.Snapshot().Count.Shows + projector.Snapshot().Count.Stores, 0U);
  const std::string record = TempFolder::Read(folder_ / "d.txt");
  EXPECT_TRUE(Holds(record, "request\tMode (18, 19)\t") && record.ends_with("\tclosed\n"))
      << record;
  EXPECT_FALSE(Holds(record, "127.0.0.1"));

  projector.SetFaults({"kind=probe:refuse"});
  const CliResult failed = RunProgram(words + Words{"--json"});
  EXPECT_EQ(failed.exit_code, 1);
  const auto json = nlohmann::json::parse(failed.out);
  EXPECT_EQ(json["rows"].back()["step"], "close");
  const auto& probe = json["rows"][json["rows"].size() - 2];
  EXPECT_EQ(probe["step"].get<std::string>() + probe["state"].get<std::string>(), "probefailed");
  EXPECT_EQ(probe["code"], 2);
  EXPECT_EQ(json["good"], false);
}

}  // namespace
}  // namespace warpline
