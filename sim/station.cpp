#include "sim/station.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/system.h"

namespace warpline::sim {
namespace {

// The stored set that the last run left, or the neutral one.
RegisterSet StartingSet(const StationSetup& setup) {
  const PanelSize panel = setup.Projector.Panel;
  std::error_code ignored;
  if (!setup.State || !std::filesystem::exists(*setup.State, ignored)) {
    return NeutralRegisters(panel);
  }
  std::string text;
  std::string reason;
  const std::error_code error = ReadWholeFile(*setup.State, text);
  if (error) reason = SystemErrorText(error);
  if (!error) {
    if (const std::optional<RegisterSet> stored = StoredSetOf(text, panel, reason)) return *stored;
  }
  std::filesystem::path kept = *setup.State;
  kept += ".kept";
  std::filesystem::rename(*setup.State, kept, ignored);
  setup.Log("The state file \"" + Utf8Of(*setup.State) + "\" cannot be used (" + reason +
            "). The projector starts without a stored correction; the file is kept as \"" +
            Utf8Of(kept) + "\".");
  return NeutralRegisters(panel);
}

StationSetup Completed(StationSetup setup) {
  if (!setup.Log) setup.Log = [](const std::string&) {};
  return setup;
}

bool IsLibraryFrame(ByteView frame) {
  return HasHeader(frame, kLibraryHeader);
}

bool IsEcho(ByteView frame) {
  return IsLibraryFrame(frame) && frame.size() > kPayloadStart + 1 &&
         frame[kPayloadStart] == kEchoOperation;
}

// What the projector is given to show: nothing when it is off, or nobody looks.
RgbImage SourceOf(const StationSetup& setup) {
  const PanelSize panel = setup.Projector.Panel;
  if (!setup.Picture) return {};
  return setup.Projector.PowerState == Power::kOn ? TestPicture(panel) : BlackImage(panel);
}

}  // namespace

Station::Station(StationSetup setup)
    : setup_(Completed(std::move(setup))),
      projector_(setup_.Projector, StartingSet(setup_)),
      source_(SourceOf(setup_)) {
  WritePicture();
  WriteState();
}

int Station::OpenLink() {
  const std::lock_guard lock(mutex_);
  newest_link_ = static_cast<int>(link_count_++);
  links_[newest_link_] = {};
  session_ = {};
  tool_frames_.clear();
  return newest_link_;
}

void Station::CloseLink(int link) {
  const std::lock_guard lock(mutex_);
  links_.erase(link);
  WriteState();
}

Outgoing Station::Exchange(int link, ByteView frame) {
  const std::lock_guard lock(mutex_);
  const auto memory = links_.find(link);
  if (memory == links_.end()) return {};
  if (IsEcho(frame)) return {.Reply = projector_.HandleFrame(memory->second, frame)};
  Note(link, frame);
  const FaultRule* fault = FaultFor(frame);
  const std::uint64_t shows = projector_.Count().Shows;
  const bool executed = fault == nullptr || IsExecuted(fault->Effect);
  Bytes reply = executed ? projector_.HandleFrame(memory->second, frame) : projector_.Refuse(frame);
  if (projector_.Count().Shows != shows) WritePicture();
  WriteState();
  if (fault != nullptr) return Spoil(*fault, std::move(reply));
  return {.Reply = std::move(reply)};
}

StationSnapshot Station::Snapshot() const {
  const std::lock_guard lock(mutex_);
  return {projector_.Working(), projector_.Stored(), projector_.Mode(),
          projector_.Input(),   projector_.Count(),  session_,
          tool_frames_,         link_count_,         links_.size()};
}

void Station::SetFaults(std::vector<FaultRule> faults) {
  const std::lock_guard lock(mutex_);
  setup_.Faults = std::move(faults);
}

const FaultRule* Station::FaultFor(ByteView frame) const {
  const std::uint64_t exchange = projector_.Count().Exchanges + 1;
  const auto rule = std::ranges::find_if(setup_.Faults, [&](const FaultRule& candidate) {
    return Matches(candidate, exchange, frame);
  });
  return rule == setup_.Faults.end() ? nullptr : &*rule;
}

void Station::Note(int link, ByteView frame) {
  if (link != newest_link_ || IsLibraryFrame(frame)) return;
  ++session_.Frames;
  session_.Bytes += frame.size();
  if (tool_frames_.size() < kKeptFrames) tool_frames_.emplace_back(frame.begin(), frame.end());
}

void Station::WriteState() {
  if (!setup_.State) return;
  StateExtras extras{session_, link_count_, false, {}};
  const auto newest = links_.find(newest_link_);
  extras.ModeOneAsked = newest != links_.end() && newest->second.ModeOneAsked;
  for (const FaultRule& rule : setup_.Faults) extras.Faults.push_back(rule.Text);
  WriteFile(*setup_.State, StateText(projector_, extras));
}

void Station::WritePicture() {
  if (!setup_.Picture) return;
  const std::optional<std::string> png = PngOf(PanelPicture(source_, projector_.Working()));
  if (png) WriteFile(*setup_.Picture, *png);
}

void Station::WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  const std::error_code error = ReplaceFile(path, bytes);
  if (error) setup_.Log("Cannot write \"" + Utf8Of(path) + "\": " + SystemErrorText(error));
}

}  // namespace warpline::sim
