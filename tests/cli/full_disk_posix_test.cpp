#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"

namespace warpline {
namespace {

TEST_F(FilesTest, AFullDiskEndsTheRecordingAlone) {
  const OwnSettings settings(folder_.Path());
  const ProjectorServer projector;
  const CliResult told = RunCli({"mode", "--lan", projector.Place(), "--record", "/dev/full"});
  EXPECT_EQ(told.exit_code, 0);
  EXPECT_EQ(told.out, "0\n");
  EXPECT_EQ(
      told.err,
      projector.Place() +
          ": The recording has ended because its file cannot be written any more.\n/dev/full\n");
}

}  // namespace
}  // namespace warpline
