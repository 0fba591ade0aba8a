#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <tuple>

#include "cli/connection.h"
#include "cli/verb_input.h"
#include "sim/device/profile.h"
#include "tests/cli/cli_run.h"
#include "tests/support/environment.h"
#include "tests/support/projector_server.h"
#include "tests/support/source_folder.h"

// The whole way: the command line, the stand-in library loaded from the program's folder, TCP, the
// simulated projector.

namespace warpline {
namespace {

std::vector<sim::RecordedEvent> RecordedIn(const std::string& text) {
  NamedText reason;
  auto events = sim::ParseRecording(text, reason);
  EXPECT_TRUE(events) << Said(reason);
  return events.value_or(std::vector<sim::RecordedEvent>());
}

class ProjectorVerbsTest : public FilesTest {
 protected:
  // A projector with these fault rules, and its address.
  std::string Start(const Words& rules = {}, int model_class = 5, int reply5 = 0) {
    sim::StationSetup setup{.Faults = FaultRules(rules), .State = folder_ / "state.json"};
    setup.Projector.ModelClass = model_class;
    setup.Projector.Reply5 = reply5;
    projector_.emplace(setup);
    return projector_->Place();
  }

  sim::StationSnapshot Snapshot() const { return projector_->Snapshot(); }

  CliResult Verify() const { return RunCli({"verify", bent_, "--state", Name("state.json")}); }

  void WriteSettings(const std::string& text) const {
    const std::filesystem::path folder =
        ApplicationDataFolder() / "Varnok Beamkit" / "Warpline Tool 3.0";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "WarplineTool.ini") << text;
  }

  OwnSettings settings_{folder_.Path()};
  const std::string bent_ = Put("bent.wlt", kBentFile);
  std::optional<ProjectorServer> projector_;
};

TEST_F(ProjectorVerbsTest, ApplyShowsWhatWasMeant) {
  const std::string address = Start();
  const CliResult applied = RunCli({"apply", bent_, "--lan", address});
  EXPECT_EQ(applied.exit_code, 0) << applied;
  EXPECT_EQ(applied.out + applied.err, "");
  const CliResult verified = Verify();
  EXPECT_EQ(verified.exit_code, 0) << verified;
  EXPECT_TRUE(Holds(verified.out, "agrees")) << verified.out;
  EXPECT_EQ(Snapshot().Count.Stores, 0U);

  EXPECT_EQ(RunCli({"initialize", "--lan", address}).exit_code, 0);
  EXPECT_EQ(Verify().exit_code, 1);
  ASSERT_EQ(RunCli({"registers", bent_, "-o", Name("bent.WLR")}).exit_code, 0);
  EXPECT_EQ(RunCli({"apply", Name("bent.WLR"), "--lan", address}).exit_code, 0);
  EXPECT_EQ(Verify().exit_code, 0) << "a register file shows the same";
}

TEST_F(ProjectorVerbsTest, StoreKeepsAndSetsTheMode) {
  for (const auto& [model_class, reply5] : {std::pair(3, 0), {4, 11}, {4, 0}, {5, 0}}) {
    std::filesystem::remove(folder_ / "state.json");
    const std::string address = Start({}, model_class, reply5);
    ASSERT_EQ(RunCli({"apply", bent_, "--lan", address}).exit_code, 0) << model_class;
    const CliResult stored = RunCli({"store", bent_, "--lan", address});
    EXPECT_EQ(stored.exit_code, 0) << model_class << stored;
    EXPECT_EQ(Holds(stored.err, "keeps what it shows"), model_class == 5) << stored;
    EXPECT_EQ(Snapshot().Count.Stores, 1U) << model_class;
    EXPECT_EQ(Snapshot().Stored, Snapshot().Working) << model_class;

    const Words both{"apply", Put("flat.wlt", kFlatFile), "--store", "--json", "--lan", address};
    const CliResult kept = RunCli(both);
    EXPECT_EQ(kept.exit_code, 0) << kept;
    EXPECT_EQ(nlohmann::json::parse(kept.out)["kept"], "file");
    EXPECT_EQ(Snapshot().Stored, Snapshot().Working) << model_class;
    EXPECT_EQ(Snapshot().Count.Stores, 2U) << model_class;
  }
}

// A profile that cannot take one of the two says so in its name.
TEST_F(ProjectorVerbsTest, ShippedProfilesTakeWhatTheirNamesSay) {
  std::set<int> classes;
  for (const auto& entry :
       std::filesystem::directory_iterator(SourceFolder() / "examples/profiles")) {
    SCOPED_TRACE(entry.path().filename());
    NamedText reason;
    const auto profile = sim::ParseProfile(TempFolder::Read(entry.path()), reason);
    ASSERT_TRUE(profile) << Said(reason);
    classes.insert(profile->Projector.ModelClass);
    const bool applies = !Holds(profile->Name, "no Apply");
    const bool stores = !Holds(profile->Name, "no Store");
    projector_.emplace(profile->Projector);
    const std::string address = projector_->Place();
    EXPECT_EQ(RunCli({"apply", bent_, "--lan", address}).exit_code, applies ? 0 : 1);
    EXPECT_EQ(Snapshot().Count.Shows, applies ? 1U : 0U);
    EXPECT_EQ(RunCli({"store", bent_, "--lan", address}).exit_code, stores ? 0 : 1);
    EXPECT_EQ(Snapshot().Count.Stores, stores ? 1U : 0U);
  }
  EXPECT_EQ(classes, (std::set<int>{2, 3, 4, 5}));
}

TEST_F(ProjectorVerbsTest, ModeIsSetAndPrinted) {
  const std::string address = Start();
  EXPECT_EQ(RunCli({"mode", "--lan", address}).out, "0\n");
  for (const auto& [wanted, printed] : {std::pair("1", "1\n"), {"2", "0\n"}, {"0", "0\n"}}) {
    const CliResult set = RunCli({"mode", wanted, "--lan", address});
    EXPECT_EQ(set.exit_code, 0) << wanted << set;
    EXPECT_EQ(set.out, "") << wanted;
    EXPECT_EQ(std::to_string(Snapshot().Mode), wanted);
    EXPECT_EQ(RunCli({"mode", "--lan", address}).out, printed);
  }
}

TEST_F(ProjectorVerbsTest, FailuresSayOneThingAndEndTheWork) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"kind=prepare:timeout", "There is no projector response.", "  Error : -3\n"},
      {"kind=2:checksum", "A receive error has occurred.", "  Error : -5\n"},
      {"kind=17:refuse", "The projector has failed in command execution.", "  Error : 2\n"},
  };
  for (const auto& [rule, text, code] : rows) {
    SCOPED_TRACE(rule);
    const Words words{"apply", bent_, "--lan", Start({rule}), "--timeout", "500"};
    const CliResult english = RunCli(words);
    EXPECT_EQ(english.exit_code, 1);
    EXPECT_EQ(english.err, projector_->Place() + ": " + text + code);
    const CliResult japanese = RunCli(words, "ja");
    EXPECT_EQ(japanese.exit_code, 1);
    EXPECT_TRUE(japanese.err.ends_with(code)) << japanese.err;
    EXPECT_FALSE(Holds(japanese.err, "projector")) << japanese.err;
  }
  const std::string address = Start();
  projector_->Stop();
  const CliResult nobody = RunCli({"mode", "--lan", address});
  EXPECT_EQ(nobody.exit_code, 1);
  EXPECT_EQ(nobody.err, address + ": Failure in the connection.  Error : -8\n");
  const CliResult json = RunCli({"mode", "--json", "--lan", address}, "ja");
  const auto message = nlohmann::json::parse(json.out)["messages"][0];
  EXPECT_EQ(message["about"], address);
  EXPECT_EQ(message["kind"], "open");
  EXPECT_EQ(message["code"], -8);
  EXPECT_EQ(json.err, "");
  EXPECT_EQ(nobody.out, "");
}

// The recording of what the tool saw, and of what the projector saw.
// What the requests of a recording are called.
std::set<std::string> NamesIn(const std::string& recording) {
  std::set<std::string> names;
  for (const std::string& line : LinesOf(recording)) {
    const std::size_t name = line.find("\trequest\t");
    if (name != line.npos) names.insert(line.substr(name, line.rfind('\t') - name));
  }
  return names;
}

TEST_F(ProjectorVerbsTest, RecordsAgreeWithTheProjectors) {
  std::ostringstream seen;
  sim::Recorder recorder(seen);
  sim::Station station({.Projector = {.Panel = {}, .ModelClass = 4}});
  sim::Server server(station, &recorder);
  NamedText reason;
  ASSERT_TRUE(server.Listen({}, reason)) << Said(reason);
  const Words how{"--lan", TextOf(server.Where()), "--record", Name("tool.txt"), "--redact"};
  const Words verbs[] = {{"apply", bent_}, {"store", bent_}, {"mode", "1"}, {"mode"}};
  std::vector<sim::RecordedEvent> told;
  std::set<std::string> names;
  for (std::uint64_t link = 1; const Words& verb : verbs) {
    const bool printed = verb.front() == "store";
    const CliResult result = RunCli(verb + how + (printed ? Words{"--record", "-"} : Words{}));
    ASSERT_EQ(result.exit_code, 0);
    const std::string text = printed ? result.out : TempFolder::Read(folder_ / "tool.txt");
    EXPECT_FALSE(Holds(text, "127.0.0.1"));
    names.merge(NamesIn(text));
    for (sim::RecordedEvent& event : RecordedIn(text)) {
      event.Link = link;
      told.push_back(event);
    }
    ++link;
  }
  server.Stop();
  EXPECT_TRUE(std::ranges::includes(NamesIn(seen.str()), names));
  EXPECT_GT(names.size(), 5U);
  std::vector<sim::RecordedEvent> projectors = RecordedIn(seen.str());
  std::ranges::stable_sort(projectors, {}, &sim::RecordedEvent::Link);  // told by several threads
  ASSERT_EQ(told.size(), projectors.size());
  for (std::size_t i = 0; i < told.size(); ++i) {
    EXPECT_EQ(std::tie(told[i].Kind, told[i].Link, told[i].Request, told[i].Reply),
              std::tie(projectors[i].Kind, projectors[i].Link, projectors[i].Request,
                       projectors[i].Reply))
        << i;
  }
}

// A fault in the field is the same fault when its recording is played.
TEST_F(ProjectorVerbsTest, ARecordedFaultIsPlayedAgain) {
  for (const char* rule : {"kind=prepare:timeout", "kind=2:checksum", "kind=running:refuse",
                           "kind=panel:timeout", "kind=17:refuse", "always:refuselink"}) {
    SCOPED_TRACE(rule);
    const auto apply = [&](const std::string& place) {
      return RunCli(
          {"apply", bent_, "--lan", place, "--timeout", "500", "--record", Name("f.txt")});
    };
    const std::string first = Start({rule});
    const CliResult failed = apply(first);
    EXPECT_EQ(failed.exit_code, 1);
    ASSERT_TRUE(failed.err.starts_with(first)) << failed;
    const auto events = RecordedIn(TempFolder::Read(folder_ / "f.txt"));
    projector_.emplace(sim::StationSetup{.Replay = events});
    const std::string second = projector_->Place();
    EXPECT_EQ(apply(second).err, second + failed.err.substr(first.size()));
    EXPECT_EQ(Snapshot().Mismatches, 0U);
  }
}

TEST_F(ProjectorVerbsTest, ConnectionOfTheSettings) {
  const std::string address = Start();
  const std::string own =
      "[Warpline Tool 3.0]\nConnectDevice=1\nIPAddress=127.0.0.1\nLANPort=" + projector_->Port();
  WriteSettings(own + "\n");
  EXPECT_EQ(RunCli({"mode"}).out, "0\n");

  WriteSettings(own + "\nDemoMode=1\n");
  const std::uint64_t links = Snapshot().Links;
  const CliResult demo = RunCli({"apply", bent_});
  EXPECT_EQ(demo.exit_code, 0);
  EXPECT_EQ(demo.err, "Demo mode is on in the settings; nothing was sent.\n");
  EXPECT_EQ(Snapshot().Links, links);
  EXPECT_EQ(RunCli({"mode", "1", "--lan", address}).exit_code, 0);
  EXPECT_EQ(Snapshot().Links, links + 1) << "a connection by name is used in demo mode";
}

TEST_F(ProjectorVerbsTest, OptionsBecomeSettings) {
  Settings first_port, last_port, usb, lan, usual, patient;
  first_port.ConnectDevice = last_port.ConnectDevice = kSerial;
  std::tie(first_port.ComPort, first_port.ComSpeed) = std::tuple(0, 0);
  std::tie(last_port.ComPort, last_port.ComSpeed) = std::tuple(7, 3);
  std::tie(usb.ConnectDevice, usb.USBPort) = std::tuple(kUsb, 7);
  std::tie(lan.IPAddress, lan.LANPort) = std::tuple("1234567890123456", "65535");
  usual.IPAddress = "127.0.0.5";
  patient.SerialTimeOut = patient.LANTimeOut = patient.USBTimeOut = 7000;
  const std::tuple<const char*, const char*, Settings> rows[] = {
      {"--serial", "1:4800", first_port},
      {"--serial", "8:38400", last_port},
      {"--usb", "8", usb},
      {"--lan", "1234567890123456:65535", lan},
      {"--lan", "127.0.0.5", usual},
      {"--timeout", "7000", patient},
  };
  for (const auto& [option, value, expected] : rows) {
    std::ostringstream out, err;
    Session session(out, err, Language::kEnglish);
    VerbInput input(session);
    input.Set(option, {value});
    EXPECT_TRUE(ChooseConnection(input, session)) << err.str();
    EXPECT_EQ(session.engine.global.Settings, expected) << option << " " << value;
  }
}

TEST_F(ProjectorVerbsTest, BadFilesAreFoundBeforeAnythingIsSent) {
  const std::string address = Start();
  for (const char* verb : {"apply", "store"}) {
    EXPECT_EQ(RunCli({verb, Put("notes.wlt", "nothing of ours"), "--lan", address}).exit_code, 1);
    EXPECT_EQ(RunCli({verb, Name("gone.wlt"), "--lan", address}).exit_code, 1);
  }
  EXPECT_EQ(Snapshot().Links, 0U);
}

}  // namespace
}  // namespace warpline
