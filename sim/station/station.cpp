#include "sim/station/station.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/conversions.h"
#include "picture/photograph.h"
#include "picture/test_picture.h"
#include "platform/files.h"
#include "sim/recording/frame_names.h"

namespace warpline::sim {
namespace {

constexpr std::size_t kToldBytes = 64;

// The stored set that the last run left, or the neutral one.
RegisterSet StartingSet(const StationSetup& setup) {
  const PanelSize panel = setup.Projector.Panel;
  std::error_code ignored;
  if (!setup.State || !std::filesystem::exists(*setup.State, ignored)) {
    return NeutralRegisters(panel);
  }
  std::string text;
  NamedText reason;
  const std::error_code error = ReadWholeFile(*setup.State, text);
  if (error) reason = {"SystemError", {SystemErrorText(error)}};
  if (!error) {
    if (const std::optional<RegisterSet> stored = StoredSetOf(text, panel, reason)) return *stored;
  }
  std::filesystem::path kept = *setup.State;
  kept += ".kept";
  std::filesystem::rename(*setup.State, kept, ignored);
  setup.Log({"StateUnusable", {Utf8Of(*setup.State), Utf8Of(kept)}, {reason}});
  return NeutralRegisters(panel);
}

// The picture that is sent; none when nobody asks what becomes of it.
RgbImage SourceOf(const StationSetup& setup) {
  if (!setup.Picture && !setup.Photo) return {};
  return setup.Source ? *setup.Source : TestPicture(setup.Projector.Panel);
}

StationSetup Completed(StationSetup setup) {
  if (!setup.Log) setup.Log = [](const NamedText&) {};
  if (!setup.OnStrike) setup.OnStrike = [](const std::string&) {};
  return setup;
}

bool IsLibraryFrame(ByteView frame) {
  return HasHeader(frame, kLibraryHeader);
}

bool IsEcho(ByteView frame) {
  return IsLibraryFrame(frame) && frame.size() > kPayloadStart + 1 &&
         frame[kPayloadStart] == kEchoOperation;
}

bool IsAcceptance(ByteView request, ByteView reply) {
  return IsWholeFrame(reply) && reply.size() > kPayloadStart + 1 &&
         (HasHeader(request, kModelClassHeader) || reply[kPayloadStart] == kAccepted);
}

}  // namespace

Station::Station(StationSetup setup)
    : setup_(Completed(std::move(setup))),
      projector_(setup_.Projector, StartingSet(setup_)),
      power_(setup_.Projector.PowerState),
      faults_(std::exchange(setup_.Faults, {}), setup_.Seed),
      playback_(setup_.Replay ? std::optional<Playback>(*std::move(setup_.Replay)) : std::nullopt),
      source_(SourceOf(setup_)) {
  power_.SetSpeedUp(setup_.SpeedUp, setup_.Now());
  WritePicture();
  WriteState();
  WriteDuePhoto();
}

Reception Station::Receive() {
  const std::lock_guard lock(mutex_);
  ++callers_;
  const std::optional<FaultRule> fault = faults_.StrikeLink(callers_, !links_.empty());
  if (!fault) {
    if (playback_ && !playback_->TakeOpening()) return {Welcome::kTurnedAway};
    OpenLinkLocked();
    return {Welcome::kServed, newest_link_};
  }
  TellStrike();
  WriteState();
  const bool ignored = fault->Effect == FaultEffect::kHalfOpen;
  return {ignored ? Welcome::kIgnored : Welcome::kTurnedAway};
}

int Station::OpenLink() {
  const std::lock_guard lock(mutex_);
  OpenLinkLocked();
  return newest_link_;
}

void Station::OpenLinkLocked() {
  newest_link_ = static_cast<int>(link_count_++);
  links_[newest_link_] = {};
  traffic_ = {};
  tool_frames_.clear();
  ++revision_;
}

void Station::CloseLink(int link) {
  const std::lock_guard lock(mutex_);
  links_.erase(link);
  WriteState();
}

bool Station::RefusesEveryLink() const {
  const std::lock_guard lock(mutex_);
  return faults_.RefusesEveryLink() || (playback_ && playback_->NeverOpens());
}

bool Station::IsOpen(int link) const {
  const std::lock_guard lock(mutex_);
  return links_.contains(link);
}

Outgoing Station::Exchange(int link, ByteView frame) {
  const std::lock_guard lock(mutex_);
  const auto memory = links_.find(link);
  if (memory == links_.end()) return {};
  if (IsEcho(frame)) return {.Reply = projector_.HandleFrame(memory->second, frame)};
  FollowPowerLocked();
  const std::optional<FaultRule> fault =
      faults_.StrikeExchange(projector_.Count().Exchanges + 1, frame);
  const std::uint64_t shows = projector_.Count().Shows;
  const std::uint64_t mismatches = mismatch_count_;
  Outgoing outgoing = Answer(memory->second, fault, frame);
  Note(link, frame, outgoing, fault);
  if (mismatch_count_ != mismatches) exchanges_.back().Fault = kMismatch;
  if (projector_.Count().Shows != shows) WritePicture();
  if (fault && fault->Effect == FaultEffect::kRestart) RestartLocked();
  WriteState();
  return outgoing;
}

Bytes Station::Execute(LinkMemory& memory, const std::optional<FaultRule>& fault, ByteView frame) {
  if (!fault) return projector_.HandleFrame(memory, frame);
  if (fault->Effect == FaultEffect::kUnkept) return projector_.HandleWithoutKeeping(frame);
  if (IsExecuted(fault->Effect)) return projector_.HandleFrame(memory, frame);
  if (fault->Effect == FaultEffect::kRefuse) return projector_.Refuse(frame);
  projector_.Ignore(frame);
  return {};
}

Outgoing Station::Answer(LinkMemory& memory, const std::optional<FaultRule>& fault,
                         ByteView frame) {
  const bool replayed = playback_ && (!fault || IsExecuted(fault->Effect));
  Outgoing outgoing =
      replayed ? Replayed(memory, frame) : Outgoing{.Reply = Execute(memory, fault, frame)};
  return fault ? Spoil(*fault, std::move(outgoing.Reply)) : outgoing;
}

// What was accepted when it was recorded is executed here too, so that the picture follows.
Outgoing Station::Replayed(LinkMemory& memory, ByteView frame) {
  const RecordedEvent* const recorded = playback_->Find(frame);
  if (recorded != nullptr && IsAcceptance(frame, recorded->Reply)) {
    projector_.HandleFrame(memory, frame);
  } else if (recorded != nullptr && !recorded->Reply.empty()) {
    projector_.Refuse(frame);
  } else {
    projector_.Ignore(frame);
  }
  if (recorded != nullptr) {
    ++agreeing_;
    return {.Reply = recorded->Reply, .Delay = recorded->ReplyAfter};
  }
  NoteMismatch(frame);
  return {};
}

void Station::NoteMismatch(ByteView frame) {
  const std::size_t line = playback_->ExpectedLine();
  if (mismatch_count_++ == 0) first_mismatch_ = line;
  mismatches_.push_back(FrameHex(frame, frame.size()));
  if (mismatches_.size() > kKeptStrikes) mismatches_.erase(mismatches_.begin());
  setup_.Log({"Mismatch",
              {std::to_string(projector_.Count().Exchanges), FrameHex(frame, kToldBytes),
               std::to_string(line)}});
}

StationSnapshot Station::Snapshot() {
  FollowPower();
  const std::lock_guard lock(mutex_);
  return {.Name = setup_.Name,
          .Working = projector_.Working(),
          .Stored = projector_.Stored(),
          .Mode = projector_.Mode(),
          .Input = projector_.Input(),
          .Count = projector_.Count(),
          .LastTraffic = traffic_,
          .ToolFrames = tool_frames_,
          .Links = link_count_,
          .OpenLinks = links_.size(),
          .Setup = projector_.Setup(),
          .PowerLeft = power_.Left(setup_.Now()),
          .SpeedUp = power_.SpeedUp(),
          .BytesIn = bytes_in_,
          .BytesOut = bytes_out_,
          .Faults = faults_.Texts(),
          .Strikes = faults_.Strikes(),
          .Seed = faults_.Seed(),
          .Mismatches = mismatch_count_,
          .Agreeing = agreeing_,
          .FirstMismatch = first_mismatch_,
          .Exchanges = exchanges_};
}

std::uint64_t Station::Revision() {
  FollowPower();
  const std::lock_guard lock(mutex_);
  return revision_;
}

void Station::SetFaults(std::vector<FaultRule> faults) {
  const std::lock_guard lock(mutex_);
  faults_.Replace(std::move(faults));
  WriteState();
}

void Station::AddFault(FaultRule fault) {
  const std::lock_guard lock(mutex_);
  faults_.Add(std::move(fault));
  WriteState();
}

bool Station::RemoveFault(std::string_view text) {
  const std::lock_guard lock(mutex_);
  const bool removed = faults_.Remove(text);
  WriteState();
  return removed;
}

void Station::SetSeed(std::uint64_t seed) {
  const std::lock_guard lock(mutex_);
  faults_.SetSeed(seed);
  ++revision_;
}

void Station::TurnPower(bool on) {
  {
    const std::lock_guard lock(mutex_);
    power_.Turn(on, setup_.Now());
  }
  FollowPower();
}

void Station::SetSpeedUp(int factor) {
  {
    const std::lock_guard lock(mutex_);
    power_.SetSpeedUp(factor, setup_.Now());
    ++revision_;
  }
  FollowPower();
}

void Station::Restart() {
  {
    const std::lock_guard lock(mutex_);
    RestartLocked();
    WriteState();
  }
  WriteDuePhoto();
}

void Station::RestartLocked() {
  projector_.Restart();
  links_.clear();
  WritePicture();
}

void Station::FollowPower() {
  {
    const std::lock_guard lock(mutex_);
    FollowPowerLocked();
  }
  WriteDuePhoto();
}

void Station::FollowPowerLocked() {
  const Power power = power_.At(setup_.Now());
  if (power == projector_.Setup().PowerState) return;
  projector_.SetPower(power);
  if (power == Power::kStandby) projector_.Restart();
  WritePicture();
  WriteState();
}

void Station::Note(int link, ByteView frame, const Outgoing& outgoing,
                   const std::optional<FaultRule>& fault) {
  bytes_in_ += frame.size();
  bytes_out_ += outgoing.Reply.size();
  if (exchanges_.size() >= kKeptExchanges) exchanges_.pop_front();
  exchanges_.push_back({projector_.Count().Exchanges, link, Bytes(frame.begin(), frame.end()),
                        outgoing.Reply, fault ? fault->Text : std::string()});
  if (fault) TellStrike();
  if (link != newest_link_ || IsLibraryFrame(frame)) return;
  ++traffic_.Frames;
  traffic_.Bytes += frame.size();
  if (tool_frames_.size() < kKeptFrames) tool_frames_.emplace_back(frame.begin(), frame.end());
}

void Station::TellStrike() const {
  setup_.OnStrike(faults_.Strikes().back());
}

void Station::WriteState() {
  ++revision_;
  if (!setup_.State) return;
  StateExtras extras{traffic_, link_count_, false, faults_.Texts(), {}};
  const auto newest = links_.find(newest_link_);
  if (playback_) extras.Mismatches = mismatches_;
  extras.ModeOneAsked = newest != links_.end() && newest->second.ModeOneAsked;
  WriteFile(*setup_.State, StateText(projector_, extras));
}

void Station::WritePicture() {
  if (!setup_.Picture && !setup_.Photo) return;
  const bool on = projector_.Setup().PowerState == Power::kOn;
  const PanelSize panel = setup_.Projector.Panel;
  RgbImage image = on ? PanelPicture(source_, projector_.Working()) : BlackImage(panel);
  if (setup_.Photo) photo_due_ = image;
  if (!setup_.Picture) return;
  if (setup_.Wall) image = WallPicture(image, *setup_.Wall, panel);
  const std::optional<std::string> png = PngOf(image);
  if (png) WriteFile(*setup_.Picture, *png);
}

void Station::WriteDuePhoto() {
  const auto is_due = [this] {
    const std::lock_guard lock(mutex_);
    return photo_due_.has_value();
  };
  if (!is_due()) return;
  const std::lock_guard writing(photo_mutex_);
  std::optional<RgbImage> shown;
  {
    const std::lock_guard lock(mutex_);
    shown.swap(photo_due_);
  }
  if (shown) WritePhoto(*shown);
}

void Station::WritePhoto(const RgbImage& panel_picture) {
  constexpr int kQuality = 75;
  const std::string kind = InLowerCase(Utf8Of(setup_.Photo->extension()));
  const bool jpeg = kind == ".jpg" || kind == ".jpeg";
  const RgbImage photo =
      PhotographOf(panel_picture, setup_.Wall.value_or(Wall{}), setup_.Camera.value_or(Camera{}));
  const std::optional<std::string> bytes = jpeg ? JpegOf(photo, kQuality) : PngOf(photo);
  if (bytes) WriteFile(*setup_.Photo, *bytes);
}

void Station::WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  // A link that somebody laid here would lead to a file that is none of ours.
  const std::error_code error = (FileAttributes(path) & kAlias) != 0
                                    ? make_error_code(std::errc::too_many_symbolic_link_levels)
                                    : ReplaceFileContents(path, bytes);
  if (error) setup_.Log({"CannotWrite", {Utf8Of(path), SystemErrorText(error)}});
}

}  // namespace warpline::sim
