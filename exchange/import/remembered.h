#pragma once

#include <string>
#include <string_view>

#include "exchange/import/import_plan.h"

namespace polefit {

/// What the choices for the last kinds of file were, as a text that is kept for the user: a line
/// for each kind, the latest first. A kind is a network file's ports and format, or the headings of
/// a delimited file; choices of frequencies and of other files are not kept.

/// Applies what was chosen for the kind of the plan's file; false when that was never kept or does
/// not fit. Where a new problem starts stays as it is.
bool Recall(std::string_view kept, ImportPlan& plan);

/// `kept` with the plan's choices in it.
std::string Remember(std::string_view kept, const ImportPlan& plan);

}  // namespace polefit
