#include "form/field_rules.h"

#include <gtest/gtest.h>

#include "base/error_of.h"
#include "form/fake_form.h"

namespace polefit::testing {
namespace {

TEST(FieldRules, TextsDecideWhichBoxesAreEnabled) {
  const std::tuple<const char*, const char*, const char*, bool> cases[] = {
      {"nPoles", "1  4", "sigmaPoles", true},  {"nPoles", " 0 4", "sigmaPoles", false},
      {"nPoles", "00 4", "sigmaPoles", false}, {"nPoles", "0.5 4", "sigmaPoles", false},
      {"nPoles", "", "sigmaPoles", true},      {"nPoles", " 1 4", "sigmaPoles", true},
      {"nPoles", "-0 4", "sigmaPoles", true},  {"nYzeros", "3", "Yzero", true},
      {"nYzeros", "abc", "Yzero", false},      {"nYzeros", "", "Yzero", false},
      {"nYzeros", " 0 2", "Yzero", true},      {"nYzeros", "-1x", "Yzero", true},
      {"nZpairs", "1", "Zreal", true},         {"nZquads", "0.5", "Zimag", true},
      {"nZquads", "0", "Zimag", false},
  };
  for (const auto& [control, text, dependent, enabled] : cases) {
    FakeForm form;
    form.SetText(control, text);
    form.SetEnabled(dependent, !enabled);
    ApplyRuleOf(form, control);
    EXPECT_EQ(form.IsEnabled(dependent), enabled) << control << " '" << text << "'";
  }
}

TEST(FieldRules, PairsAndQuadsOfOppositeSignDisableBothListsAndASumTooLargeNone) {
  FakeForm form;
  for (const auto& [pairs, quads, enabled, error] :
       {std::tuple("1e308", "1e308", true, 6), {"1", "-1", false, 0}}) {
    form.SetText("nZpairs", pairs);
    form.SetText("nZquads", quads);
    ApplyRuleOf(form, "nZpairs");
    EXPECT_EQ(form.IsEnabled("Zreal"), enabled) << pairs;
    EXPECT_EQ(form.IsEnabled("Zimag"), enabled) << pairs;
    EXPECT_EQ(ErrorOf([&] { ApplyFieldRules(form); }), error) << pairs;
  }
}

}  // namespace
}  // namespace polefit::testing
