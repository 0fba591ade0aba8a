#include <fcntl.h>
#include <malloc.h>

#include <cmath>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>

#include "app/communication_settings.h"
#include "app/main_controller.h"
#include "core/no_busy_indicator.h"
#include "link/projector_search.h"
#include "model/parameter_groups.h"
#include "model/registers.h"
#include "sim/line/discovery.h"
#include "sim/station/server.h"
#include "tests/support/environment.h"
#include "tests/support/temp_folder.h"

// A tool without a window that sends and sends, through the library of its folder, to projectors
// that fail in every way:
//   soak_worker SEED SEQUENCES SECONDS [leak|descriptor]
// 0 seconds are no limit. The last word plants what has to be found. Each action is told before it
// is done. scripts/soak runs it.

namespace warpline {
namespace {

namespace fs = std::filesystem;

constexpr std::array kQuickFaults{"refuse", "duplicate", "checksum", "late=10~9", "slow",
                                  "cut",    "cutmid",    "restart",  "long"};
constexpr std::array kSlowFaults{"timeout", "short"};  // they cost a time-out
constexpr std::array kLinkFaults{"once:refuselink", "always:refuselink", "once:halfopen"};
constexpr std::size_t kBlock = 50;    // sequences between two looks at memory
constexpr std::size_t kWarmUp = 500;  // sequences whose memory does not count, at most half of all
constexpr double kMostGrowth = 2000;  // bytes, over all that counts, or
constexpr double kMostSlope = 1;      // bytes a sequence: chunks of other sizes in other places
constexpr std::uint32_t kLoopback = 0x7F000001;

void Demand(bool so, const std::string& otherwise) {
  if (!so) throw std::runtime_error(otherwise);
}

std::size_t Entries(const char* folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

class Soak : public MessageDisplay, public NoBusyIndicator, public MainView {
 public:
  explicit Soak(unsigned seed) : random_(seed), answers_(seed) {
    global_.Settings.IPAddress = "127.0.0.1";
    global_.Settings.LANTimeOut = kMinTimeOutMs;
    Search();  // what its library brings stays loaded
    PutProjector();
  }

  // Does one action under one fault at most, and looks at what came of it.
  void Sequence() {
    const Action& action = kActions[Below(kActions.size())];
    const std::string fault = SomeFault();
    std::cout << ++number_ << '\t' << action.name << '\t' << fault << std::endl;
    told_ = 0;
    lost_ = lost_ || fault.ends_with("restart");
    NamedText ignored;
    if (!fault.empty()) station_->AddFault(sim::ParseFaultRule(fault, ignored).value());
    (this->*action.run)();
    station_->SetFaults({});
    Check(action.sends);
  }

  // Bytes in use; without a projector, whose own history is not meant.
  double Measure() {
    controller_.reset();
    server_.reset();
    station_.reset();
    const std::array here{Entries("/proc/self/fd"), Entries("/proc/self/task"),
                          Entries(folder_.Path().c_str())};
    if (resources_[0] == 0) resources_ = here;
    Demand(here == resources_, "descriptors, threads or files: now " + std::to_string(here[0]) +
                                   ", " + std::to_string(here[1]) + ", " + std::to_string(here[2]));
    const struct mallinfo2 info = mallinfo2();
    PutProjector();
    return static_cast<double>(info.uordblks + info.hblkhd);
  }

  std::size_t Show(const UserMessage& message) override {
    std::cout << "\ttold: " << message.text << std::endl;
    ++told_;
    return answers_() % message.choices.size();
  }
  void ShowModel() override {}
  void ShowValues() override {}
  fs::path ChooseFileToOpen(const fs::path&) override { return {}; }
  fs::path ChooseFileToSave(const fs::path&, const fs::path&) override { return file_; }
  void FileUsed(const fs::path&) override {}

 private:
  struct Action {
    const char* name;
    bool sends;  // so that the tool knows what is shown, unless it told of a failure
    void (Soak::*run)();
  };
  static const std::array<Action, 14> kActions;

  std::size_t Below(std::size_t end) { return random_() % end; }

  void PutProjector() {
    constexpr std::array kPanels{PanelSize{64, 64}, PanelSize{96, 80}, PanelSize{80, 128}};
    sim::StationSetup setup{.Seed = random_(), .SpeedUp = sim::kHighestSpeedUp};
    setup.Projector.Panel = kPanels[Below(kPanels.size())];
    setup.Projector.ModelClass = static_cast<int>(2 + Below(4));
    station_ = std::make_unique<sim::Station>(setup);
    server_ = std::make_unique<sim::Server>(*station_);
    NamedText reason;
    Demand(server_->Listen({}, reason), "no port");
    global_.Settings.LANPort = std::to_string(server_->Where().Port);
    controller_ = std::make_unique<MainController>(engine_, *this, folder_.Path());
    controller_->ConnectionChanged();
  }

  std::string SomeFault() {
    const std::string place = "every=" + std::to_string(1 + Below(20)) + ",once:";
    const std::size_t chance = Below(100);
    if (chance < 45) return place + kQuickFaults[Below(kQuickFaults.size())];
    if (chance < 48) return place + kSlowFaults[Below(kSlowFaults.size())];
    return chance < 50 ? kLinkFaults[Below(kLinkFaults.size())] : "";
  }

  void Move() {
    controller_->SelectGroup(static_cast<int>(Below(kGroupCount)));
    const int slider = static_cast<int>(Below(kSliderCount));
    const SliderSetup setup = SetUpSlider(global_.Correction, controller_->Group(), slider);
    const auto range = static_cast<std::size_t>(setup.high - setup.low + 1);
    controller_->MoveSlider(slider, setup.low + static_cast<int>(Below(range)));
  }
  void MoveAndApply() {
    Move();
    controller_->Apply();
  }
  void Drag() {
    Move();
    controller_->ReleaseSlider();
  }
  void Apply() { controller_->Apply(); }
  void Store() { controller_->Store(); }
  void Initialize() { controller_->Initialize(); }
  void Compare() { controller_->SetComparing(!controller_->Comparing()); }
  void SetMode() {
    const auto mode = static_cast<std::int16_t>(Below(3));
    engine_.commands.SetMode(mode);
    Demand(told_ > 0 || station_->Snapshot().Mode == mode, "another mode than the one sent");
  }
  void ReadMode() {
    const std::optional<std::int16_t> mode = engine_.commands.ReadMode();
    Demand(mode ? *mode == (station_->Snapshot().Mode == 1 ? 1 : 0) : told_ > 0, "a wrong mode");
  }
  void OpenAs(const char* name) {
    file_ = folder_ / name;
    Demand(controller_->SaveAs(), "not saved");
    Move();
    controller_->OpenFile(file_);
    sent_registers_ = global_.Registers;
  }
  void OpenCorrection() { OpenAs("soak.wlt"); }
  void OpenRegisters() { OpenAs("soak.wlr"); }
  void Search() {
    if (Below(8) != 0 && resources_[0] != 0) return;  // each takes half a second
    ProjectorSearch search(engine_.messages, beamseek_);
    Demand(search.Start(SearchOptionsOf(global_, SearchWindow::kHidden)), "no search");
    while (search.IsRunning()) {
      search.Poll();
      std::this_thread::sleep_for(milliseconds(5));
    }
    const auto found = search.Found();  // nothing when the answer took too long
    Demand(found.empty() || found == std::vector<FoundProjector>{{"127.0.0.1", "Soak", true}},
           "found another projector");
  }
  void TurnPower() {
    lost_ = true;
    station_->TurnPower(Below(5) != 0);
  }

  RegisterSet Wanted(const ProjectorRecord& record, PanelSize panel) const {
    if (record.shown == Shown::kRegisters) return sent_registers_;
    return record.shown == Shown::kNone ? sim::NeutralRegisters(panel)
                                        : BuildRegisters(record.correction, panel);
  }

  void Check(bool sends) {
    const ProjectorRecord& record = engine_.commands.Record();
    const sim::StationSnapshot state = station_->Snapshot();
    if (sends && told_ == 0) {
      lost_ = false;
      Demand(record.shown != Shown::kUnknown, "neither told of a failure nor sent");
      Demand(record.shown != Shown::kCorrection || record.Shows(global_.Correction), "not sent");
    }
    if (lost_ || record.shown == Shown::kUnknown) return;
    Demand(state.Working == Wanted(record, state.Setup.Panel), "another set than the one sent");
    Demand(!record.kept || state.Stored == state.Working, "another set than the one kept");
  }

  std::mt19937 random_;
  std::mt19937 answers_;  // apart, as time decides how many there are
  TempFolder folder_;
  std::unique_ptr<sim::DiscoveryResponder> responder_ =
      sim::DiscoveryResponder::Open({kLoopback, 0}, {sim::kDefaultLanPort, 5, 1, true, "Soak"});
  EnvironmentValue search_port_{"WARPLINE_DISCOVERY_PORT",
                                std::to_string(responder_->Where().Port)};
  BeamseekProvider beamseek_ = BeamseekFromProgramFolder();
  Engine engine_{*this, *this};
  LSSglobal& global_ = engine_.global;
  std::unique_ptr<sim::Station> station_;
  std::unique_ptr<sim::Server> server_;
  std::unique_ptr<MainController> controller_;
  fs::path file_;
  RegisterSet sent_registers_;
  std::array<std::size_t, 3> resources_{};
  std::size_t number_ = 0;
  std::size_t told_ = 0;  // messages of this sequence
  bool lost_ = false;     // the projector may have lost what it showed, without the tool knowing
};

const std::array<Soak::Action, 14> Soak::kActions{{
    {"apply", true, &Soak::Apply},
    {"move, apply", true, &Soak::MoveAndApply},
    {"move, apply", true, &Soak::MoveAndApply},
    {"drag", false, &Soak::Drag},
    {"store", false, &Soak::Store},
    {"store", false, &Soak::Store},
    {"initialize", true, &Soak::Initialize},
    {"compare", false, &Soak::Compare},
    {"set mode", false, &Soak::SetMode},
    {"read mode", false, &Soak::ReadMode},
    {"open correction", true, &Soak::OpenCorrection},
    {"open registers", true, &Soak::OpenRegisters},
    {"search", false, &Soak::Search},
    {"power", false, &Soak::TurnPower},
}};

// Bytes a sequence, by least squares.
double SlopeOf(const std::vector<double>& bytes) {
  const double middle = static_cast<double>(bytes.size() - 1) / 2;
  double products = 0;
  double squares = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const double off = static_cast<double>(i) - middle;
    products += off * bytes[i];
    squares += off * off;
  }
  return products / squares / kBlock;
}

void Run(unsigned seed, std::size_t sequences, std::chrono::seconds limit, std::string_view plant) {
  const Clock::time_point end = Clock::now() + limit;
  Soak soak(seed);
  std::vector<double> bytes;
  std::size_t done = 0;
  while (done < sequences && (limit.count() == 0 || Clock::now() < end)) {
    soak.Sequence();
    if (plant == "leak") static_cast<void>(*static_cast<volatile char*>(std::malloc(64)) = 0);
    if (++done % kBlock == 0) bytes.push_back(soak.Measure());
    if (plant == "descriptor" && done == kBlock) ::open("/dev/null", O_RDONLY);
  }
  const std::size_t skipped = std::min(kWarmUp / kBlock, bytes.size() / 2);
  bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(skipped));
  Demand(bytes.size() >= 3, "too short to see memory grow");
  const double slope = SlopeOf(bytes);
  std::cout << done << " sequences, " << slope << " bytes each over the last "
            << bytes.size() * kBlock << std::endl;
  const double growth = slope * static_cast<double>(bytes.size() * kBlock);
  Demand(slope < kMostSlope || growth < kMostGrowth, "memory grows");
}

}  // namespace
}  // namespace warpline

int main(int count, char** words) {
  try {
    warpline::Run(static_cast<unsigned>(std::stoul(words[1])), std::stoul(words[2]),
                  std::chrono::seconds(std::stoul(words[3])), count > 4 ? words[4] : "");
    return 0;
  } catch (const std::exception& found) {
    std::cout << "found: " << found.what() << std::endl;
    return 1;
  }
}
