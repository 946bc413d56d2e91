#include "form/field_rules.h"

#include <cmath>

#include "base/number.h"
#include "base/run_time_error.h"
#include "base/text.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

void Enable(FormView& form, int slot, bool enabled) {
  form.SetEnabled(BoxName(slot), enabled);
}

void RuleDelay(FormView& form) {
  const bool enabled = form.IsChecked(BoxName(slot::kEqualDelay));
  Enable(form, slot::kTmin, enabled);
  Enable(form, slot::kDelRipplePower, enabled);
}

void RuleSigmaPoles(FormView& form) {
  // Kept: the first character decides, not the number: "00 4" and "0.5 4" disable the box as "0 4"
  // does, and an empty answer enables it.
  const std::string answer = form.Text(BoxName(slot::kNPoles));
  Enable(form, slot::kSigmaPoles, !TrimBlanks(answer).starts_with('0'));
}

void RuleSigmaZero(FormView& form) {
  const bool enabled = form.IsChecked(BoxName(slot::kSigmaZeroWanted));
  Enable(form, slot::kLossless, enabled);
  Enable(form, slot::kDoublet, enabled);
  Enable(form, slot::kSigmaZero, enabled);
}

double ZeroCount(const FormView& form, ZeroCountBox box) {
  return ReadNumber(form.Text(BoxName(slot::kZeroCounts, box)));
}

void RuleOmegaZeros(FormView& form) {
  Enable(form, slot::kYzero, ZeroCount(form, kOmegaAxisZeros) != 0);
}

void RulePairsAndQuads(FormView& form) {
  // Kept: the sum decides, so that counts of opposite sign disable the lists.
  const double sum = ZeroCount(form, kZeroQuads) + ZeroCount(form, kZeroPairs);
  if (std::isinf(sum)) throw MakeRunTimeError(error_number::kOverflow);
  Enable(form, slot::kZreal, sum != 0);
  Enable(form, slot::kZimag, sum != 0);
}

struct DecidingBox {
  int slot;
  std::size_t box;
  void (*rule)(FormView&);
};

constexpr DecidingBox kDecidingBoxes[] = {
    {slot::kEqualDelay, 0, RuleDelay},
    {slot::kNPoles, 0, RuleSigmaPoles},
    {slot::kSigmaZeroWanted, 0, RuleSigmaZero},
    {slot::kZeroCounts, kOmegaAxisZeros, RuleOmegaZeros},
    {slot::kZeroCounts, kZeroPairs, RulePairsAndQuads},
    {slot::kZeroCounts, kZeroQuads, RulePairsAndQuads},
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
  for (const DecidingBox& deciding : kDecidingBoxes) {
    if (BoxName(deciding.slot, deciding.box) != control) continue;
    try {
      deciding.rule(form);
    } catch (const RunTimeError&) {
      // The boxes keep their state; the user sees nothing of it.
    }
  }
}

}  // namespace polefit
