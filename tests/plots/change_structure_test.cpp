#include "plots/change_structure.h"

#include <gmock/gmock.h>

#include "plots/move_location.h"
#include "plots/start_values.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

FitCurves TypedCurves(const ResponseRecord& record) {
  std::vector<Finding> findings;
  std::optional<FitCurves> curves = CurvesOf(record, CurveRole::typed, "typed", findings);
  EXPECT_TRUE(curves) << "no curves";
  return std::move(*curves);
}

std::string Text(const std::optional<std::vector<ChangedAnswer>>& answers) {
  if (!answers) return "none";
  std::string all;
  for (const ChangedAnswer& answer : *answers) {
    all += std::string(QuestionNumber(answer.slot)) + "=" + answer.text + "; ";
  }
  return all;
}

TEST(AddLocation, ChangesCountAndListsTogether) {
  // Two pole pairs, one zero pair and one quad would be too many zeros: three pole pairs more.
  const ResponseRecord record = ExampleRecord(
      "Ex-Zpair.1", "6=0 5; 8=.5 .5 .4 .3 .2; 9=.1 .3 .5 .7 .9; 11=0 1 1; 11b=.05 .3; 11c=1.1 2");
  struct Case {
    FactorKind kind;
    double real;
    double imaginary;
    const char* answers;
  };
  const Case cases[] = {
      {FactorKind::polePair, -.25, .66, "6=0 6; 8=.5 .5 .4 .3 .2 .25; 9=.1 .3 .5 .7 .9 .66; "},
      {FactorKind::polePair, .25, -1, "6=0 6; 8=.5 .5 .4 .3 .2 .25; 9=.1 .3 .5 .7 .9 0; "},
      {FactorKind::polePair, -1e-9, 99, "6=0 6; 8=.5 .5 .4 .3 .2 .005; 9=.1 .3 .5 .7 .9 4; "},
      {FactorKind::sigmaPole, -.123456, 0, "6=1 5; 7=.1235; "},
      {FactorKind::zeroPair, .2, .9, "11=0 2 1; 11b=.05 -.2 .3; 11c=1.1 .9 2; "},
      {FactorKind::omegaZero, -.2, 1, "11=1 1 1; 11a=1.001; "},
      {FactorKind::sigmaZero, .2, 1, "10=Y; 10a=-.2; "},
      {FactorKind::zeroQuad, .2, .9, "11=0 1 2; 11b=.05 .3 .2; 11c=1.1 2 .9; "},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Text(AddLocation(record, each.kind, each.real, each.imaginary)), each.answers);
  }
}

TEST(AddLocation, RefusesWhatHCannotBe) {
  const ResponseRecord record = ExampleRecord("Ex-Delay.101");
  EXPECT_EQ(Text(AddLocation(record, FactorKind::zeroQuad, -.2, .5)), "11=1 0 1; 11b=.2; 11c=.5; ");
  const ResponseRecord full = ExampleRecord("Ex-Delay.101", "11=3 0 0; 11a=1 2 3");
  EXPECT_EQ(Text(AddLocation(full, FactorKind::omegaZero, 0, 2)), "none") << "9 zeros, 7 poles";
  EXPECT_EQ(Text(AddLocation(record, FactorKind::sigmaZero, -.2, 0)), "none") << "there is one";
}

TEST(RemoveLocation, TakesTheWordOutOfEachList) {
  const ResponseRecord record =
      ExampleRecord("Ex-Delay.101", "6=1 3; 7=.8; 10c=N; 11=2 0 0; 11a=1.5 1");
  const FitCurves curves = TypedCurves(record);
  const auto without = [&](std::size_t location) {
    return Text(RemoveLocation(record, curves, location));
  };
  // In the order of the questions; the omega-axis zeros ascending.
  EXPECT_EQ(without(0), "6=0 3; 7=; ");
  EXPECT_EQ(without(2), "6=1 2; 8=.5 .3; 9=.3 1.1; ");
  EXPECT_EQ(without(4), "10=N; ");
  EXPECT_EQ(without(5), "11=1 0 0; 11a=1.5; ") << "the held one is typed second";
  const ResponseRecord last = ExampleRecord("Ex-Zpair.1", "6=0 1; 8=.5; 9=.3; 11=0 0 0");
  EXPECT_EQ(Text(RemoveLocation(last, TypedCurves(last), 0)), "none") << "H(s) needs a pole";
  const ResponseRecord quads = ExampleRecord("Ex-Zpair.1", "11=0 1 1; 11b=.05 .3; 11c=1.1 2");
  EXPECT_EQ(Text(RemoveLocation(quads, TypedCurves(quads), 5)), "11=0 1 0; 11b=.05; 11c=1.1; ");
}

TEST(AddLocation, GivesWhatIsThenDrawn) {
  const ResponseRecord record = ExampleRecord("Ex-Delay.101");
  for (const FactorKind kind : {FactorKind::polePair, FactorKind::sigmaPole, FactorKind::zeroPair,
                                FactorKind::omegaZero, FactorKind::zeroQuad}) {
    const auto answers = AddLocation(record, kind, -.3, 1.2);
    ASSERT_TRUE(answers);
    const FitCurves curves = TypedCurves(WithAnswers(record, *answers));
    ASSERT_EQ(curves.locations.size(), TypedCurves(record).locations.size() + 1);
    std::size_t location = 0;
    while (curves.locations[location].kind != kind) ++location;
    while (location + 1 < curves.locations.size() && curves.locations[location + 1].kind == kind) {
      ++location;
    }
    const auto back = RemoveLocation(WithAnswers(record, *answers), curves, location);
    ASSERT_TRUE(back);
    const ResponseRecord again = WithAnswers(WithAnswers(record, *answers), *back);
    EXPECT_EQ(again.Slot(slot::kNPoles), record.Slot(slot::kNPoles));
    EXPECT_EQ(again.Slot(slot::kZeroCounts), record.Slot(slot::kZeroCounts));
    EXPECT_EQ(again.Slot(slot::kPoleReal), record.Slot(slot::kPoleReal));
  }
}

TEST(MoveLocation, KeepsKindsToTheirAxisAndBounds) {
  const ResponseRecord record = ExampleRecord(
      "Ex-Delay.101", "6=1 2; 7=.8; 8=.5 .4; 9=.3 .7; 10c=N; 10a=-.5; 11=2 0 0; 11a=1.5 1");
  const FitCurves curves = TypedCurves(record);
  const auto texts = [&](std::size_t location, double real, double imaginary) {
    std::string all;
    for (const ChangedAnswer& answer : MoveLocation(record, curves, location, real, imaginary)) {
      all += answer.text + "; ";
    }
    return all;
  };
  // The factors stand in the order of the questions; omega-axis zeros ascending.
  EXPECT_EQ(texts(0, -.6, .9), ".6; ");
  EXPECT_EQ(texts(2, -.25, .66), ".5 .25; .3 .66; ");
  EXPECT_EQ(texts(2, +.25, 9), ".5 .05; .3 3; ") << "left half-plane, inside the bounds";
  EXPECT_EQ(texts(3, .75, 1), "-.75; ") << "the typed side stays";
  EXPECT_EQ(texts(5, 7, 1.25), "1.25 1; ") << "the second zero is typed first";
  const ResponseRecord empty = ExampleRecord("Ex-Yzero.101", "6=0 2; 8=; 9=; 11=1 0 0; 11a=");
  EXPECT_EQ(WithDrawnLists(empty, TypedCurves(empty)).Slot(slot::kYzero), "1.1");
  const auto moved = MoveLocation(empty, TypedCurves(empty), 1, -.3, .8);
  ASSERT_EQ(moved.size(), 2U) << "both lists get all their numbers";
  EXPECT_EQ(moved[0].text + "; " + moved[1].text, ".5 .3; .15 .8");
  const ResponseRecord example = ExampleRecord("Ex-Delay.101");
  EXPECT_THAT(MoveLocation(example, TypedCurves(example), 4, 0, 2), ::testing::IsEmpty())
      << "held at 1";
}

TEST(StartValues, FillWhatIsMissingAndLeaveTheRest) {
  using Outcome = SuggestedStart::Outcome;
  const ResponseRecord full = ExampleRecord("Ex-Yzero.101");
  EXPECT_EQ(SuggestStart(full, false).outcome, Outcome::allTyped);
  EXPECT_EQ(SuggestStart(ExampleRecord("Ex-Yzero.101", "8=; 5=x"), false).outcome, Outcome::faulty);
  EXPECT_EQ(SuggestStart(ResponseRecord(), false).outcome, Outcome::faulty);
  const SuggestedStart filled = SuggestStart(ExampleRecord("Ex-Yzero.101", "8=.5 .4"), false);
  ASSERT_EQ(filled.outcome, Outcome::found);
  EXPECT_EQ(Words(filled.record.Slot(slot::kPoleReal)).size(), 4U);
  EXPECT_NE(filled.record.Slot(slot::kPoleImag), full.Slot(slot::kPoleImag)) << "both parts";
  EXPECT_EQ(filled.record.Slot(slot::kYzero), full.Slot(slot::kYzero));
  EXPECT_LT(TypedCurves(filled.record).h->RmsError(), TypedCurves(full).h->RmsError());
  const SuggestedStart replaced = SuggestStart(full, true);
  ASSERT_EQ(replaced.outcome, Outcome::found);
  EXPECT_NE(replaced.record.Slot(slot::kYzero), full.Slot(slot::kYzero));
  // The points have their null below Freq Norm: exactly 1 would hold the zero there for good.
  const SuggestedStart atBound =
      SuggestStart(ExampleRecord("Ex-Yzero.102", "5=20; 11=1 0 0; 11a="), false);
  EXPECT_EQ(atBound.record.Slot(slot::kYzero), "1.001");
}

}  // namespace
}  // namespace polefit::testing
