#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/engine.h"
#include "app/main_controller.h"
#include "app/photo_marks.h"
#include "fit/fit.h"
#include "picture/picture.h"

// All that straightening from a photograph decides, without its window: the photograph and what
// lies over it (marks, the corners of the wanted rectangle, lines that are straight in reality),
// the fit, and the correction that is taken over. The photograph is only read.

namespace warpline {

enum class PhotoHandleKind { kMark, kCorner, kLinePoint };

// What can be grabbed.
struct PhotoHandle {
  PhotoHandleKind Kind = PhotoHandleKind::kMark;
  std::size_t Index = 0;  // marks row by row, corners as the clock goes, points of a line
  std::size_t Line = 0;   // of a point

  bool operator==(const PhotoHandle&) const = default;
};

struct PlacedHandle {
  PhotoHandle Handle;
  PlanePoint At;  // pixels of the photograph
  MarkState State = MarkState::kFound;
};

// What lies over the photograph.
struct PhotoLayout {
  PhotoMarks Marks;
  std::optional<PhotoCorners> Corners;  // when they were set by hand
  std::vector<PlaneLine> Lines;

  bool operator==(const PhotoLayout&) const = default;
};

// How far a key moves a handle, pixels of the photograph.
inline constexpr double kHandleStep = 0.25;

inline constexpr std::size_t kLeastLinePoints = 3;

class PhotoSession {
 public:
  // Both must outlive this object.
  PhotoSession(Engine& engine, MainController& controller)
      : engine_(engine), controller_(controller) {}

  // Clears the projector's correction, so that the marks can be shown; the model stays. False when
  // that failed, which was told, or when something else is under way.
  bool Clear();

  // The photograph in a file, in a file's bytes, or as it is. The marks are looked for; what lay
  // over the last photograph goes. False when it is none that can be used: then all stays, and
  // Refused tells why.
  bool OpenFile(const std::filesystem::path& file);
  bool Open(std::string_view bytes);
  bool Take(RgbImage photo);

  // Of no size until there is one.
  const RgbImage& Photo() const { return photo_; }
  bool HasPhoto() const { return photo_.Width > 0; }
  PhotoSize Size() const { return {photo_.Width, photo_.Height}; }

  // Why the last one was not taken; empty: it was.
  const std::string& Refused() const { return refused_; }

  // What the search for the marks had to say.
  const std::optional<NamedText>& MarksRefused() const { return marks_refused_; }
  const std::vector<NamedText>& MarkWarnings() const { return mark_warnings_; }

  // By a quarter, with all that lies over it. Later photographs are turned so too.
  void Turn(bool right);

  const PhotoLayout& Layout() const { return layout_; }

  // Looks for the marks where they lie now.
  void FindMarksNear();

  // In the order of the keys: marks, corners (those set, or else those of the fit), points.
  std::vector<PlacedHandle> Handles() const;
  std::optional<PlacedHandle> Selected() const;

  // The nearest handle not farther than that, pixels of the photograph.
  std::optional<PhotoHandle> HandleNear(PlanePoint at, double reach) const;
  void Select(std::optional<PhotoHandle> handle) { selected_ = handle; }

  // The next handle or the previous one; the first or the last when none was selected. False, with
  // none selected, when there is no further one.
  bool SelectNext(bool forward);
  // The first one of the next kind.
  void SelectNextKind();

  // Puts the frame back to the largest one.
  void ForgetCorners();

  // Moves the selected handle, not beyond the photograph.
  void MoveTo(PlanePoint at);
  void MoveBy(int steps_right, int steps_down);  // of kHandleStep

  // Takes the selected point away, or a mark's or the corners' setting by hand.
  void Remove();

  // What was done since Grab is taken back by LetGo(false).
  void Grab() { grabbed_ = layout_; }
  void LetGo(bool keep);

  // Lines of the lens: until EndLine every point added belongs to one line. Without a place the
  // point comes beside the last one. A line of less than kLeastLinePoints goes when it ends.
  void BeginLine();
  bool Drawing() const { return drawing_; }
  void AddPoint(PlanePoint at);
  void AddPoint();
  void EndLine();

  // Whether something has changed since the fit; it takes about a second. While a line is drawn
  // nothing has.
  bool NeedsFit() const;
  void Fit();

  // Nothing, and the reason, when the marks give none.
  const std::optional<FitReport>& Report() const { return report_; }
  const NamedText& FitRefused() const { return fit_refused_; }
  const FitResult* Chosen() const { return report_ ? &report_->Results[chosen_] : nullptr; }
  std::size_t ChosenIndex() const { return chosen_; }

  // A result by its place in the report; the best one is chosen at first. A type chosen by hand
  // stays chosen.
  void Choose(std::size_t result);

  // Makes the chosen correction the model, as one step; fits before when that is needed. False when
  // there is none.
  bool TakeOver();

 private:
  void Changed() { stale_ = true; }
  void NoteFindings(const FoundMarks& found);
  PlanePoint Inside(PlanePoint at) const;

  Engine& engine_;
  MainController& controller_;
  RgbImage photo_;
  int turned_ = 0;  // quarters to the right, 0..3
  std::string refused_;
  std::optional<NamedText> marks_refused_;
  std::vector<NamedText> mark_warnings_;
  PhotoLayout layout_;
  PhotoLayout grabbed_;
  std::optional<PhotoHandle> selected_;
  bool drawing_ = false;
  bool stale_ = false;
  PanelSize fitted_panel_;
  std::optional<FitReport> report_;
  NamedText fit_refused_;
  std::size_t chosen_ = 0;
  std::optional<std::int16_t> wanted_type_;
};

}  // namespace warpline
