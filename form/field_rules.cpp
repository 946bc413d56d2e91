#include "form/field_rules.h"

#include <cmath>

#include "base/number.h"
#include "base/run_time_error.h"
#include "base/text.h"

namespace polefit {

namespace {

void RuleDelay(FormView& form) {
  const bool enabled = form.IsChecked("chkEqualDelay");
  form.SetEnabled("tmin", enabled);
  form.SetEnabled("DelRipplePower", enabled);
}

void RuleSigmaPoles(FormView& form) {
  // Kept: the first character decides, not the number: "00 4" and "0.5 4" disable the box as "0 4"
  // does, and an empty answer enables it.
  const std::string answer = form.Text("nPoles");
  form.SetEnabled("sigmaPoles", !TrimBlanks(answer).starts_with('0'));
}

void RuleSigmaZero(FormView& form) {
  const bool enabled = form.IsChecked("chkSigmaZero");
  form.SetEnabled("chkLossless", enabled);
  form.SetEnabled("chkDoublet", enabled);
  form.SetEnabled("sigmaZero", enabled);
}

void RuleOmegaZeros(FormView& form) {
  form.SetEnabled("Yzero", ReadNumber(form.Text("nYzeros")) != 0);
}

void RulePairsAndQuads(FormView& form) {
  // Kept: the sum decides, so that counts of opposite sign disable the lists.
  const double sum = ReadNumber(form.Text("nZquads")) + ReadNumber(form.Text("nZpairs"));
  if (std::isinf(sum)) throw MakeRunTimeError(error_number::kOverflow);
  form.SetEnabled("Zreal", sum != 0);
  form.SetEnabled("Zimag", sum != 0);
}

struct DecidingControl {
  std::string_view name;
  void (*rule)(FormView&);
};

constexpr DecidingControl kDecidingControls[] = {
    {"chkEqualDelay", RuleDelay}, {"nPoles", RuleSigmaPoles},     {"chkSigmaZero", RuleSigmaZero},
    {"nYzeros", RuleOmegaZeros},  {"nZpairs", RulePairsAndQuads}, {"nZquads", RulePairsAndQuads},
};

}  // namespace

void ApplyFieldRules(FormView& form) {
  RuleDelay(form);
  RuleSigmaPoles(form);
  RuleSigmaZero(form);
  RuleOmegaZeros(form);
  RulePairsAndQuads(form);
}

void ApplyRuleOf(FormView& form, std::string_view control) {
  for (const DecidingControl& deciding : kDecidingControls) {
    if (deciding.name != control) continue;
    try {
      deciding.rule(form);
    } catch (const RunTimeError&) {
      // The boxes keep their state; the user sees nothing of it.
    }
  }
}

}  // namespace polefit
