#include "form/field_rules.h"

#include <gtest/gtest.h>

#include "form/fake_form.h"
#include "platform/error_of.h"

namespace polefit::testing {
namespace {

TEST(FieldRules, TextsDecideWhichBoxesAreEnabled) {
  struct Case {
    const char* control;
    const char* text;
    const char* dependent;
    bool enabled;
  };
  const Case cases[] = {
      {"nPoles", "1  4", "sigmaPoles", true},  {"nPoles", " 0 4", "sigmaPoles", false},
      {"nPoles", "00 4", "sigmaPoles", false}, {"nPoles", "0.5 4", "sigmaPoles", false},
      {"nPoles", "", "sigmaPoles", true},      {"nPoles", " 1 4", "sigmaPoles", true},
      {"nPoles", "-0 4", "sigmaPoles", true},  {"nYzeros", "3", "Yzero", true},
      {"nYzeros", "abc", "Yzero", false},      {"nYzeros", "", "Yzero", false},
      {"nYzeros", " 0 2", "Yzero", true},      {"nYzeros", "-1x", "Yzero", true},
      {"nZpairs", "1", "Zreal", true},         {"nZquads", "0.5", "Zimag", true},
      {"nZquads", "0", "Zimag", false},
  };
  for (const Case& c : cases) {
    FakeForm form;
    form.SetText(c.control, c.text);
    form.SetEnabled(c.dependent, !c.enabled);
    ApplyRuleOf(form, c.control);
    EXPECT_EQ(form.IsEnabled(c.dependent), c.enabled) << c.control << " '" << c.text << "'";
  }
}

TEST(FieldRules, PairsAndQuadsOfOppositeSignDisableBothLists) {
  FakeForm form;
  form.SetText("nZpairs", "1");
  form.SetText("nZquads", "-1");
  ApplyRuleOf(form, "nZpairs");
  EXPECT_FALSE(form.IsEnabled("Zreal"));
  EXPECT_FALSE(form.IsEnabled("Zimag"));
  EXPECT_TRUE(form.IsEnabled("Yzero"));
}

TEST(FieldRules, ASumTooLargeEndsTheRuleQuietlyButReachesWhoShowsARecord) {
  FakeForm form;
  form.SetText("nZpairs", "1e308");
  form.SetText("nZquads", "1e308");
  ApplyRuleOf(form, "nZquads");
  EXPECT_TRUE(form.IsEnabled("Zreal"));
  EXPECT_EQ(ErrorOf([&] { ApplyFieldRules(form); }), error_number::kOverflow);
}

}  // namespace
}  // namespace polefit::testing
