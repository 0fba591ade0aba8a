#pragma once

#include "core/correction.h"
#include "fit/residuals.h"
#include "fit/view.h"

// The correction of a screen type that makes the picture straightest.

namespace warpline {

// A correction, and what its registers make of the picture.
struct Candidate {
  CorrectionData Correction;
  Straightness Off;
  double Height = 0;  // of the picture, in the frame
  double Area = 0;    // of the picture, share of the largest rectangle
  double Unfit = 0;   // percent of the picture's height, for what leaves the panel or is too small
  double Score = 0;   // likewise, with what is not straight; what is compared, less is better
};

// Measures what the registers of the correction make the panel show. Throws what
// BuildAxisRegisters throws.
Candidate JudgeCorrection(const FitTask& task, const CorrectionData& correction);

// How the lines would have to be drawn if curves were free and nothing was rounded. Where the
// search of each screen type begins; found once.
DrawnLines StraighteningLines(const FitTask& task);

// The best correction of a screen type, its linearity as a reset leaves it.
Candidate BestCorrection(const FitTask& task, std::int16_t screen_type, const DrawnLines& near);

}  // namespace warpline
