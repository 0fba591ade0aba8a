#pragma once

#include <cstdint>
#include <optional>

#include "core/register_set.h"
#include "sim/line/wire.h"

// The projector itself: what it knows, and what each frame does to it. No transport, no files.

namespace warpline::sim {

// As the library's records count.
enum class Power : std::uint8_t { kStandby = 0, kOn = 1, kWarmingUp = 2, kCoolingDown = 3 };

inline constexpr int kMinPanel = 64;  // pixels, each way
inline constexpr int kMaxPanel = 4096;
inline constexpr int kCorrectionClass = 2;  // the first model class with a geometric correction

// What a projector is. Only its power changes while it runs.
struct ProjectorSetup {
  PanelSize Panel;            // kMinPanel..kMaxPanel each way
  bool ReportsPanel = true;   // false: asked for its panel, it says that this is not supported
  int ModelClass = 5;         // 0..255; below 2 it has no geometric correction, below 3 no store,
                              // 3 and 4 store by the whole block, 5 and above by command 21
  int Reply5 = 0;             // 0..255, byte 5 of the model-class answer: class 4's memory layout
  bool TakesCommands = true;  // false: an old one that takes registers as a whole block alone
  Power PowerState = Power::kOn;
};

// The registers that leave the picture as it is: all parameters 0, every line at its full length.
RegisterSet NeutralRegisters(PanelSize panel);

// True when every text is hexadecimal and has its field's length for the panel.
bool RegistersFit(const RegisterSet& registers, PanelSize panel);

// What the projector remembers of one link until it closes.
struct LinkMemory {
  bool ModeOneAsked = false;  // mode 1 was asked for and is not yet in force
  bool Stored = false;        // a store succeeded over this link
};

struct Counters {
  std::uint64_t Exchanges = 0;  // frames of all kinds, echoes excepted
  std::uint64_t Refused = 0;    // answered with an error byte
  std::uint64_t Shows = 0;      // times that the working set was replaced
  std::uint64_t Stores = 0;     // times that the stored set was written
};

class SimulatedProjector {
 public:
  // Starts with the stored set shown. The set must fit the panel.
  SimulatedProjector(const ProjectorSetup& setup, const RegisterSet& stored);

  // Executes a frame and returns the reply. Whatever is wrong with the frame (length, checksum,
  // header, number, data length for this panel) is answered with an error byte and changes nothing.
  // Fewer than two bytes have no reply.
  Bytes HandleFrame(LinkMemory& link, ByteView frame);

  // The answer of a projector that refuses a frame without looking at it.
  Bytes Refuse(ByteView frame);

  // Counts a frame that is neither executed nor answered.
  void Ignore(ByteView frame);

  // Executes a frame for its reply alone: registers, mode and input stay as they are.
  Bytes HandleWithoutKeeping(ByteView frame);

  // What a restart leaves: the stored set is shown, everything that was only set is lost.
  void Restart();

  void SetPower(Power power) { setup_.PowerState = power; }

  const ProjectorSetup& Setup() const { return setup_; }
  const RegisterSet& Working() const { return working_; }
  const RegisterSet& Stored() const { return stored_; }
  int Mode() const { return mode_; }  // picture mode, 0..2
  std::int32_t Input() const { return input_; }
  const Counters& Count() const { return counters_; }

 private:
  struct HeaderRow;
  static const HeaderRow* FindHeader(ByteView frame);

  Bytes Answer(ByteView frame, Bytes payload);
  Bytes HandleData(LinkMemory& link, ByteView frame);
  Bytes HandleMode(LinkMemory& link, ByteView frame);
  Bytes HandlePrepare(LinkMemory& link, ByteView frame);
  Bytes HandleModelClass(LinkMemory& link, ByteView frame);
  Bytes HandleWholeBlock(LinkMemory& link, ByteView frame);
  Bytes HandleLibrary(LinkMemory& link, ByteView frame);
  ErrorByte RunBareCommand(LinkMemory& link, int number);
  ErrorByte WriteRegisters(int number, ByteView data);
  ErrorByte Store(LinkMemory& link);
  void Show(const RegisterSet& registers);
  void SettleMode(LinkMemory& link, bool input_selected);

  ProjectorSetup setup_;
  RegisterSet incoming_;
  RegisterSet working_;
  RegisterSet stored_;
  int mode_ = 0;
  std::int32_t input_;
  Counters counters_;
};

}  // namespace warpline::sim
