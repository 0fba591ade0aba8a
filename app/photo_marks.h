#pragma once

#include <cstddef>
#include <vector>

#include "fit/lens.h"
#include "fit/mark_finder.h"
#include "fit/plane.h"

// The marks as they lie over a photograph while somebody sets them right.

namespace warpline {

enum class MarkState { kExpected, kFound, kByHand };

struct PhotoMark {
  PlanePoint At;  // pixels of the photograph
  MarkState State = MarkState::kExpected;

  bool operator==(const PhotoMark&) const = default;
};

class PhotoMarks {
 public:
  // None.
  PhotoMarks() = default;

  // All marks of picture/marks_picture.h. Those of a photograph that was refused are no more than
  // expected where they seem to be; without any they are expected in its middle.
  PhotoMarks(const FoundMarks& found, PhotoSize photo);

  // Row by row; none or all.
  const std::vector<PhotoMark>& All() const { return marks_; }

  // Puts a mark by hand. Those that are only expected follow, but for the four at the corners: they
  // and those that were found or set hold the others.
  void Set(std::size_t mark, PlanePoint at);

  // It is no more than expected where it is.
  void Unset(std::size_t mark);

  // What was found near the marks. Those that were not stay as they are.
  void Take(const FoundMarks& around);

  // The photograph was turned by a quarter, to the right or to the left; photo is its size before.
  void Turn(bool right, PhotoSize photo);

  // Those that were found or set, and all.
  Marks Counting() const;
  Marks Places() const;

  bool operator==(const PhotoMarks&) const = default;

 private:
  std::vector<PhotoMark> marks_;
};

// Where a place is once the photograph is turned so.
PlanePoint Turned(PlanePoint place, bool right, PhotoSize photo);

}  // namespace warpline
