#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/check_rows.h"
#include "core/LSSglobal.h"

// What the rows of the check of the connection say.

namespace warpline {

std::string GroupName(const LSSglobal& global, CheckGroup group);

// "ok", "note", "failed".
const std::string& StateName(const LSSglobal& global, CheckState state);

// The name of a step, also of a library's: "Beamlink: file".
std::string StepName(const LSSglobal& global, std::string_view step);

// What a step of a trial found, and what to do about it.
std::string StepText(const LSSglobal& global, const TrialStep& step);
std::string StepAdvice(const LSSglobal& global, const TrialStep& step);

// The whole table as text: the groups with their rows below them, at the end the verdict. For
// people; ends with LF.
std::string CheckText(const LSSglobal& global, const std::vector<CheckRow>& rows,
                      const CheckVerdict& verdict);

// The parts of it, for one who writes as the rows come. before: of the row told before, or null.
std::string RowText(const LSSglobal& global, const CheckRow& row, const CheckRow* before);
std::string VerdictText(const LSSglobal& global, const CheckVerdict& verdict);

}  // namespace warpline
