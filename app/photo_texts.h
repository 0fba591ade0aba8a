#pragma once

#include <string>
#include <vector>

#include "app/photo_session.h"
#include "core/LSSglobal.h"

// What straightening from a photograph tells, in the language in force. A text of several sentences
// has a line for each.

namespace warpline {

// Of the photograph and the marks in it.
std::string TextOfPhoto(const LSSglobal& global, const PhotoSession& session);

// Of the selected handle; empty without one.
std::string TextOfHandle(const LSSglobal& global, const PhotoSession& session);

// Of the chosen result and the camera's lens, or why there is no result. Empty without a
// photograph.
std::string TextOfResult(const LSSglobal& global, const PhotoSession& session);

// How far off straight a screen type leaves the picture.
struct PhotoResultRow {
  std::string Screen;
  std::string Now;        // the worst edge
  std::string Corrected;  // likewise
  std::string Grid;       // the worst inner line, now and then

  bool operator==(const PhotoResultRow&) const = default;
};

// In the order of the report; none before the fit.
std::vector<PhotoResultRow> ResultRows(const LSSglobal& global, const PhotoSession& session);

}  // namespace warpline
