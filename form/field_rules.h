#pragma once

#include <string_view>

#include "form/form_view.h"

namespace polefit {

/// Enables and disables every box that depends on another answer, from the answers shown. A
/// disabled box keeps its text. Error 6 when a count is too large for a double.
void ApplyFieldRules(FormView& form);

/// Applies the rule that `control` decides, once it has lost the focus; other controls decide
/// none. A count that is too large for a double ends the rule.
void ApplyRuleOf(FormView& form, std::string_view control);

}  // namespace polefit
