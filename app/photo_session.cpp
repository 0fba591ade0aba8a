#include "app/photo_session.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <system_error>
#include <utility>

#include "app/fault_report.h"
#include "core/catalogue.h"
#include "picture/photograph.h"
#include "platform/files.h"

namespace warpline {
namespace {

// The orientations of EXIF that turn by so many quarters to the right.
constexpr std::array kOrientations{1, 6, 3, 8};

constexpr double kFirstPoint = 0.1;  // of the photograph, where a line begins by key
constexpr double kNextPoint = 0.1;   // of its width, to the next point

}  // namespace

bool PhotoSession::Clear() {
  controller_.SetComparing(true);
  return controller_.Comparing() || engine_.global.Settings.DemoMode == 1;
}

bool PhotoSession::OpenFile(const std::filesystem::path& file) {
  std::string bytes;
  if (const std::error_code error = ReadWholeFile(file, bytes)) {
    refused_ = SystemErrorText(error) + "\n" + Utf8Of(file);
    return false;
  }
  return Open(bytes);
}

bool PhotoSession::Open(std::string_view bytes) {
  NamedText reason;
  std::optional<RgbImage> photo = ImageOfPhotograph(bytes, reason);
  if (photo) return Take(*std::move(photo));
  refused_ = TextOf(engine_.global, reason);
  return false;
}

bool PhotoSession::Take(RgbImage photo) {
  NamedText reason;
  if (!IsPhotographSize({photo.Width, photo.Height}, reason)) {
    refused_ = TextOf(engine_.global, reason);
    return false;
  }
  photo_ = Oriented(std::move(photo), kOrientations.at(static_cast<std::size_t>(turned_)));
  refused_.clear();
  const FoundMarks found = FindMarks(photo_, engine_.global.Panel);
  NoteFindings(found);
  layout_ = {PhotoMarks(found, Size()), std::nullopt, {}};
  selected_.reset();
  drawing_ = false;
  report_.reset();
  wanted_type_.reset();
  return true;
}

void PhotoSession::NoteFindings(const FoundMarks& found) {
  marks_refused_ = found.Refusal;
  mark_warnings_ = found.Warnings;
  Changed();
}

void PhotoSession::Turn(bool right) {
  turned_ = (turned_ + (right ? 1 : 3)) % 4;
  if (!HasPhoto()) return;
  const PhotoSize before = Size();
  const auto turn = [&](PlanePoint& place) { place = Turned(place, right, before); };
  layout_.Marks.Turn(right, before);
  if (layout_.Corners) std::ranges::for_each(*layout_.Corners, turn);
  for (PlaneLine& line : layout_.Lines) std::ranges::for_each(line, turn);
  photo_ = Oriented(std::move(photo_), right ? 6 : 8);
  report_.reset();
  Changed();
}

void PhotoSession::FindMarksNear() {
  if (!HasPhoto()) return;
  const FoundMarks around =
      warpline::FindMarksNear(photo_, engine_.global.Panel, layout_.Marks.Places());
  NoteFindings(around);
  layout_.Marks.Take(around);
}

std::vector<PlacedHandle> PhotoSession::Handles() const {
  std::vector<PlacedHandle> handles;
  const std::vector<PhotoMark>& marks = layout_.Marks.All();
  for (std::size_t i = 0; i < marks.size(); ++i) {
    handles.push_back({{PhotoHandleKind::kMark, i}, marks[i].At, marks[i].State});
  }
  if (layout_.Corners || report_) {
    const PhotoCorners& corners = layout_.Corners ? *layout_.Corners : report_->Corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
      handles.push_back({{PhotoHandleKind::kCorner, i},
                         corners[i],
                         layout_.Corners ? MarkState::kByHand : MarkState::kExpected});
    }
  }
  for (std::size_t line = 0; line < layout_.Lines.size(); ++line) {
    for (std::size_t i = 0; i < layout_.Lines[line].size(); ++i) {
      handles.push_back(
          {{PhotoHandleKind::kLinePoint, i, line}, layout_.Lines[line][i], MarkState::kByHand});
    }
  }
  return handles;
}

std::optional<PlacedHandle> PhotoSession::Selected() const {
  const std::vector<PlacedHandle> handles = Handles();
  const auto found = std::ranges::find_if(
      handles, [&](const PlacedHandle& each) { return each.Handle == selected_; });
  return found == handles.end() ? std::nullopt : std::optional(*found);
}

std::optional<PhotoHandle> PhotoSession::HandleNear(PlanePoint at, double reach) const {
  const std::vector<PlacedHandle> handles = Handles();
  const auto nearest = std::ranges::min_element(
      handles, {}, [&](const PlacedHandle& each) { return DistanceOf(each.At, at); });
  if (nearest == handles.end() || DistanceOf(nearest->At, at) > reach) return std::nullopt;
  return nearest->Handle;
}

bool PhotoSession::SelectNext(bool forward) {
  const std::vector<PlacedHandle> handles = Handles();
  const auto at = std::ranges::find_if(
      handles, [&](const PlacedHandle& each) { return each.Handle == selected_; });
  const std::ptrdiff_t count = std::ssize(handles);
  const std::ptrdiff_t none = forward ? -1 : count;
  const std::ptrdiff_t from = at == handles.end() ? none : at - handles.begin();
  const std::ptrdiff_t next = from + (forward ? 1 : -1);
  const bool there = next >= 0 && next < count;
  selected_ = there ? std::optional(handles[static_cast<std::size_t>(next)].Handle) : std::nullopt;
  return there;
}

void PhotoSession::SelectNextKind() {
  const std::vector<PlacedHandle> handles = Handles();
  const auto next = std::ranges::find_if(handles, [&](const PlacedHandle& each) {
    return selected_ && each.Handle.Kind > selected_->Kind;
  });
  if (handles.empty()) return;
  selected_ = next == handles.end() ? handles.front().Handle : next->Handle;
}

PlanePoint PhotoSession::Inside(PlanePoint at) const {
  return {std::clamp(at.X, 0.0, static_cast<double>(photo_.Width)),
          std::clamp(at.Y, 0.0, static_cast<double>(photo_.Height))};
}

void PhotoSession::MoveTo(PlanePoint at) {
  const std::optional<PlacedHandle> selected = Selected();
  if (!selected) return;
  at = Inside(at);
  if (at == selected->At) return;
  const PhotoHandle& handle = selected->Handle;
  if (handle.Kind == PhotoHandleKind::kMark) {
    layout_.Marks.Set(handle.Index, at);
  } else if (handle.Kind == PhotoHandleKind::kCorner) {
    if (!layout_.Corners) layout_.Corners = report_->Corners;
    layout_.Corners->at(handle.Index) = at;
  } else {
    layout_.Lines[handle.Line][handle.Index] = at;
  }
  Changed();
}

void PhotoSession::MoveBy(int steps_right, int steps_down) {
  const std::optional<PlacedHandle> selected = Selected();
  if (!selected) return;
  MoveTo({selected->At.X + kHandleStep * steps_right, selected->At.Y + kHandleStep * steps_down});
}

void PhotoSession::Remove() {
  const std::optional<PlacedHandle> selected = Selected();
  if (!selected) return;
  const PhotoHandle handle = selected->Handle;
  if (handle.Kind == PhotoHandleKind::kMark) {
    layout_.Marks.Unset(handle.Index);
  } else if (handle.Kind == PhotoHandleKind::kCorner) {
    ForgetCorners();
  } else {
    PlaneLine& line = layout_.Lines[handle.Line];
    line.erase(line.begin() + static_cast<std::ptrdiff_t>(handle.Index));
    const bool gone = line.empty() && !drawing_;
    if (gone) layout_.Lines.erase(layout_.Lines.begin() + static_cast<std::ptrdiff_t>(handle.Line));
    if (handle.Index > 0) --selected_->Index;
  }
  Changed();
}

void PhotoSession::ForgetCorners() {
  if (!layout_.Corners) return;
  layout_.Corners.reset();
  Changed();
}

void PhotoSession::LetGo(bool keep) {
  if (!keep) layout_ = grabbed_;
}

void PhotoSession::BeginLine() {
  if (!HasPhoto() || drawing_) return;
  layout_.Lines.emplace_back();
  drawing_ = true;
}

void PhotoSession::AddPoint(PlanePoint at) {
  BeginLine();
  if (!drawing_) return;
  PlaneLine& line = layout_.Lines.back();
  line.push_back(Inside(at));
  selected_ = {PhotoHandleKind::kLinePoint, line.size() - 1, layout_.Lines.size() - 1};
  Changed();
}

void PhotoSession::AddPoint() {
  BeginLine();
  if (!drawing_) return;
  const PlaneLine& line = layout_.Lines.back();
  const PlanePoint first{kFirstPoint * photo_.Width, kFirstPoint * photo_.Height};
  AddPoint(line.empty() ? first
                        : PlanePoint{line.back().X + kNextPoint * photo_.Width, line.back().Y});
}

void PhotoSession::EndLine() {
  if (!std::exchange(drawing_, false)) return;
  std::erase_if(layout_.Lines,
                [](const PlaneLine& line) { return line.size() < kLeastLinePoints; });
}

bool PhotoSession::NeedsFit() const {
  const bool other_panel = report_ && !(fitted_panel_ == engine_.global.Panel);
  return HasPhoto() && !drawing_ && (stale_ || other_panel);
}

void PhotoSession::Fit() {
  if (!NeedsFit()) return;
  FitInput input;
  input.Seen = layout_.Marks.Counting();
  input.Panel = engine_.global.Panel;
  input.Photo = Size();
  input.Corners = layout_.Corners;
  std::ranges::copy_if(layout_.Lines, std::back_inserter(input.StraightLines),
                       [](const PlaneLine& line) { return line.size() >= kLeastLinePoints; });
  fitted_panel_ = input.Panel;
  stale_ = false;
  fit_refused_ = {};
  report_.reset();
  ReportingFaults(engine_.messages, [&] {
    report_ = FitCorrection(input, fit_refused_);
    return true;
  });
  if (!report_) return;
  chosen_ = report_->Chosen;
  const auto wanted = std::ranges::find_if(
      report_->Results, [&](const FitResult& result) { return result.ScreenType == wanted_type_; });
  if (wanted != report_->Results.end()) {
    chosen_ = static_cast<std::size_t>(wanted - report_->Results.begin());
  }
}

void PhotoSession::Choose(std::size_t result) {
  if (!report_ || result >= report_->Results.size()) return;
  chosen_ = result;
  wanted_type_ = report_->Results[result].ScreenType;
}

bool PhotoSession::TakeOver() {
  EndLine();
  Fit();
  if (!report_) return false;
  controller_.TakeCorrection(Chosen()->Correction);
  return true;
}

}  // namespace warpline
