#pragma once

#include <functional>
#include <string>
#include <vector>

#include "exchange/import/import_plan.h"
#include "form/state.h"

namespace polefit {

/// Shows a plan for the form's cells and lets the user change it; false when it is given up.
using AskForPlan =
    std::function<bool(ImportPlan& plan, const FormCells& form, const ImportFiles& files)>;

/// Brings the points of the file at `paths[0]` into the form, a delay from `paths[1]` where that
/// is given. What cannot be read or has no points is told in a message. A new problem asks first
/// what becomes of changed data; nothing is changed unless the plan is taken.
void ImportPoints(Program& program, const std::vector<std::string>& paths, const AskForPlan& ask);

/// Brings the delay column of the file at `path` into the delay table alone; false, and nothing
/// done, when it has none.
bool ImportDelay(Program& program, const std::string& path, const AskForPlan& ask);

/// Brings points in that are at hand as a text (UTF-8), into the delay table alone where they are
/// for that and have a delay; false, and nothing done, when there are none in it.
bool ImportText(Program& program, const std::string& text, bool isForDelays, const AskForPlan& ask);

/// Asks for a file and brings its points in. The folder that is current stays so, but for a new
/// problem, which is saved beside its points.
void ImportChosenFile(Program& program, const AskForPlan& ask);

}  // namespace polefit
