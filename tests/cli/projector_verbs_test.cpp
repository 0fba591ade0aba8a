#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sim/server.h"
#include "sim/station.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/temp_folder.h"

// The whole way: the command line, the stand-in library loaded from the program's folder, TCP, the
// simulated projector.

namespace warpline {
namespace {

class ProjectorVerbsTest : public testing::Test {
 protected:
  // A projector with these fault rules, and its address.
  std::string Start(const std::vector<std::string>& rules = {}, int model_class = 5) {
    sim::StationSetup setup;
    setup.Projector.ModelClass = model_class;
    setup.State = folder_ / "state.json";
    std::string reason;
    for (const std::string& rule : rules) {
      setup.Faults.push_back(sim::ParseFaultRule(rule, reason).value());
    }
    server_.reset();  // its threads use the station
    station_ = std::make_unique<sim::Station>(setup);
    server_ = std::make_unique<sim::Server>(*station_);
    EXPECT_TRUE(server_->Listen(sim::Endpoint{}, reason)) << reason;
    return sim::TextOf(server_->Where());
  }

  std::string Put(const char* name, const char* text) const {
    return folder_.Write(name, text).string();
  }

  void WriteSettings(const std::string& text) const {
    const std::filesystem::path folder =
        ApplicationDataFolder() / "Varnok Beamkit" / "Warpline Tool 3.0";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "WarplineTool.ini") << text;
  }

  TempFolder folder_;
  OwnSettings settings_{folder_.Path()};
  std::unique_ptr<sim::Station> station_;
  std::unique_ptr<sim::Server> server_;
};

TEST_F(ProjectorVerbsTest, ApplyShowsWhatWasMeant) {
  const std::string address = Start();
  const std::string bent = Put("bent.wlt", kBentFile);
  const CliResult applied = RunCli({"apply", bent, "--lan", address});
  EXPECT_EQ(applied.exit_code, 0) << applied;
  EXPECT_EQ(applied.out + applied.err, "");
  const CliResult verified = RunCli({"verify", bent, "--state", (folder_ / "state.json").string()});
  EXPECT_EQ(verified.exit_code, 0) << verified;
  EXPECT_NE(verified.out.find("agrees"), std::string::npos) << verified.out;
  EXPECT_EQ(station_->Snapshot().Count.Stores, 0U);

  EXPECT_EQ(RunCli({"initialize", "--lan", address}).exit_code, 0);
  EXPECT_EQ(RunCli({"verify", bent, "--state", (folder_ / "state.json").string()}).exit_code, 1);
}

TEST_F(ProjectorVerbsTest, ARegisterFileShowsTheSame) {
  const std::string address = Start();
  const std::string bent = Put("bent.wlt", kBentFile);
  const std::string registers = (folder_ / "bent.WLR").string();
  ASSERT_EQ(RunCli({"registers", bent, "-o", registers}).exit_code, 0);
  EXPECT_EQ(RunCli({"apply", registers, "--lan", address}).exit_code, 0);
  EXPECT_EQ(RunCli({"verify", bent, "--state", (folder_ / "state.json").string()}).exit_code, 0);
}

TEST_F(ProjectorVerbsTest, StoreKeepsAndSetsTheMode) {
  for (const int model_class : {3, 4, 5}) {
    const std::string address = Start({}, model_class);
    const std::string bent = Put("bent.wlt", kBentFile);
    ASSERT_EQ(RunCli({"apply", bent, "--lan", address}).exit_code, 0) << model_class;
    const CliResult stored = RunCli({"store", bent, "--lan", address});
    EXPECT_EQ(stored.exit_code, 0) << model_class << stored;
    EXPECT_EQ(station_->Snapshot().Count.Stores, 1U) << model_class;
    EXPECT_EQ(station_->Snapshot().Stored, station_->Snapshot().Working) << model_class;
  }
}

TEST_F(ProjectorVerbsTest, ModeIsSetAndPrinted) {
  const std::string address = Start();
  EXPECT_EQ(RunCli({"mode", "--lan", address}).out, "0\n");
  for (const auto& [wanted, printed] : {std::pair("1", "1\n"), {"2", "0\n"}, {"0", "0\n"}}) {
    const CliResult set = RunCli({"mode", wanted, "--lan", address});
    EXPECT_EQ(set.exit_code, 0) << wanted << set;
    EXPECT_EQ(set.out, "") << wanted;
    EXPECT_EQ(std::to_string(station_->Snapshot().Mode), wanted);
    EXPECT_EQ(RunCli({"mode", "--lan", address}).out, printed);
  }
}

struct FailureRow {
  const char* rule;
  const char* english;
  const char* japanese_error;
};

constexpr FailureRow kFailureRows[] = {
    {"kind=any:timeout", "There is no projector response.  Error : -3", "Error : -3"},
    {"kind=prepare:timeout", "There is no projector response.  Error : -3", "Error : -3"},
    {"kind=2:checksum", "A receive error has occurred.  Error : -5", "Error : -5"},
    {"kind=1:cutmid", "A receive error has occurred.  Error : -5", "Error : -5"},
    {"kind=17:refuse", "The projector has failed in command execution.  Error : 2", "Error : 2"},
};

TEST_F(ProjectorVerbsTest, FailuresSayOneThingAndEndTheWork) {
  for (const FailureRow& row : kFailureRows) {
    const std::string address = Start({row.rule});
    const std::string bent = Put("bent.wlt", kBentFile);
    const CliResult result = RunCli({"apply", bent, "--lan", address, "--timeout", "500"});
    EXPECT_EQ(result.exit_code, 1) << row.rule;
    EXPECT_EQ(result.err, row.english + std::string("\n")) << row.rule;
    const CliResult japanese = RunCli({"apply", bent, "--lan", address, "--timeout", "500"}, "ja");
    EXPECT_EQ(japanese.exit_code, 1) << row.rule;
    EXPECT_NE(japanese.err.find(row.japanese_error), std::string::npos) << japanese.err;
    EXPECT_EQ(japanese.err.find("projector"), std::string::npos) << japanese.err;
  }
}

TEST_F(ProjectorVerbsTest, NobodyThere) {
  const std::string address = Start();
  server_->Stop();
  const CliResult result = RunCli({"mode", "--lan", address});
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "Failure in the connection.  Error : -8\n");
  EXPECT_EQ(result.out, "");
}

TEST_F(ProjectorVerbsTest, ConnectionOfTheSettings) {
  const std::string address = Start();
  const std::size_t colon = address.rfind(':');
  const std::string own =
      "[Warpline Tool 3.0]\nConnectDevice=1\nIPAddress=" + address.substr(0, colon) +
      "\nLANPort=" + address.substr(colon + 1);
  WriteSettings(own + "\n");
  EXPECT_EQ(RunCli({"mode"}).out, "0\n");

  WriteSettings(own + "\nDemoMode=1\n");
  const std::uint64_t links = station_->Snapshot().Links;
  const CliResult demo = RunCli({"apply", Put("bent.wlt", kBentFile)});
  EXPECT_EQ(demo.exit_code, 0);
  EXPECT_EQ(demo.err, "Demo mode is on in the settings; nothing was sent.\n");
  EXPECT_EQ(station_->Snapshot().Links, links);
  EXPECT_EQ(RunCli({"mode", "1", "--lan", address}).exit_code, 0);
  EXPECT_EQ(station_->Snapshot().Links, links + 1) << "a connection by name is used in demo mode";
}

TEST_F(ProjectorVerbsTest, BadFilesAreFoundBeforeAnythingIsSent) {
  const std::string address = Start();
  for (const char* verb : {"apply", "store"}) {
    EXPECT_EQ(RunCli({verb, Put("notes.wlt", "nothing of ours"), "--lan", address}).exit_code, 1);
    EXPECT_EQ(RunCli({verb, (folder_ / "gone.wlt").string(), "--lan", address}).exit_code, 1);
  }
  EXPECT_EQ(station_->Snapshot().Links, 0U);
}

}  // namespace
}  // namespace warpline
