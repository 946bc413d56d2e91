#include "bench/families/families.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "base/text_format.h"
#include "solver/example_problem.h"
#include "solver/search/search.h"

namespace polefit::testing {
namespace {

using families::FamilyProblem;

Summary Solved(const ResponseRecord& record, Problem& problem) {
  Listener nobody;
  problem = GoodProblem(record);
  return Solve(problem, nobody, [] { return false; });
}

std::vector<std::complex<double>> PolesOf(const Problem& problem, const Iterate& iterate) {
  std::vector<std::complex<double>> poles;
  for (const Factor& factor : problem.constellation.factors) {
    const double real = iterate.parameters[factor.parameter];
    if (factor.kind == FactorKind::sigmaPole) poles.emplace_back(-real, 0);
    if (factor.kind == FactorKind::polePair) {
      poles.emplace_back(-real, iterate.parameters[factor.parameter + 1]);
    }
  }
  return poles;
}

TEST(Families, TextbookFiltersAreFoundFromCrudeStarts) {
  const std::set<std::string> hard = {"Butterworth 10",       "Bessel 10",
                                      "inverse Chebyshev 10", "elliptic 9",
                                      "elliptic 7 =",         "Bessel 8 flat",
                                      "all-pass 4 (0.7)",     "pole to Bessel 6",
                                      "Q 20 and 50",          "elliptic 5, Yout 4e-5",
                                      "5 real poles"};
  std::size_t solved = 0;
  for (const FamilyProblem& family : families::TextbookProblems()) {
    if (!hard.contains(family.name)) continue;
    SCOPED_TRACE(family.name);
    Problem problem;
    const Summary summary = Solved(family.record, problem);
    EXPECT_TRUE(IsConverged(summary.ending));
    EXPECT_LE(summary.best.Cost(), 1e-13);
    EXPECT_LE(summary.evaluations, 2000);
    EXPECT_LE(families::WorstPoleError(family.filter, PolesOf(problem, summary.best)), 1e-3);
    ++solved;
  }
  EXPECT_EQ(solved, hard.size());
}

TEST(Families, ApproximationsReachTheBestKnownFit) {
  for (const FamilyProblem& family : families::Approximations()) {
    if (family.record.nFreqPoints > 57) continue;
    Problem problem;
    const Summary summary = Solved(family.record, problem);
    EXPECT_TRUE(IsConverged(summary.ending)) << family.name;
    EXPECT_LE(summary.best.Cost(), 1.001 * family.cost) << family.name;
  }
}

TEST(Families, RandomStartsAndRandomFiltersEndRight) {
  const std::vector<FamilyProblem> textbook = families::TextbookProblems();
  for (std::size_t i = 4; i < textbook.size(); i += 17) {
    for (const unsigned seed : {101U, 102U}) {
      Problem problem;
      const auto record = families::WithRandomStarts(textbook[i].record, seed);
      EXPECT_LE(Solved(record, problem).best.Cost(), 1e-13) << textbook[i].name << " " << seed;
    }
  }
  for (const FamilyProblem& family : families::RandomProblems(6, 77)) {
    Problem problem;
    const Summary summary = Solved(family.record, problem);
    EXPECT_TRUE(IsConverged(summary.ending)) << family.name;
    EXPECT_LE(summary.best.Cost(), 2 * summary.roundingCost) << family.name;
  }
}

TEST(Families, TellWhatAnotherStructureReaches) {
  for (const FamilyProblem& family : families::TextbookProblems()) {
    if (family.name != "2 real poles") continue;
    ResponseRecord record = family.record;
    record.Slot(slot::kNPoles) = "0 1";
    record.Slot(slot::kPoleReal) = ".5";
    record.Slot(slot::kPoleImag) = ".5";
    Problem problem;
    const Summary summary = Solved(record, problem);
    ASSERT_TRUE(summary.splitPairs);
    EXPECT_EQ(summary.splitPairs->poleCounts, (std::array<int, 2>{2, 0}));
    EXPECT_LT(summary.splitPairs->cost, 1e-13);
    EXPECT_GT(summary.best.Cost(), 1e-6);
  }
}

TEST(Families, PutAPairThatCannotSplitOntoTheSigmaAxis) {
  int found = 0;
  for (const FamilyProblem& family : families::TextbookProblems()) {
    const bool hasSingle = family.name == "Bessel 3" || family.name == "Butterworth 5";
    if (!hasSingle) continue;
    ResponseRecord record = families::WithoutStarts(family.record);
    record.Slot(slot::kNPoles) = family.name == "Bessel 3" ? "0 2" : "0 3";
    Problem problem;
    const Summary summary = Solved(record, problem);
    ASSERT_TRUE(summary.splitPairs) << family.name;
    double least = 1;
    for (const std::complex<double>& pole : PolesOf(problem, summary.best)) {
      least = std::min(least, pole.imag());
    }
    EXPECT_EQ(least, 0) << family.name;
    ++found;
  }
  EXPECT_EQ(found, 2);
}

TEST(Families, PartZerosThatHaveMetAndTellWhatTheyWant) {
  families::Filter filter = families::Butterworth(4);
  filter.zeros = {{-.05, 1.4}, {.05, 1.4}};  // a quad
  ResponseRecord record;
  for (const FamilyProblem& family : families::TextbookProblems()) {
    if (family.name == "Butterworth 4") record = family.record;
  }
  for (int row = 1; row <= record.nFreqPoints; ++row) {
    const double w = ParseNumber(record.passband.At(row, 1)).value() / 10;
    record.passband.At(row, 3) = Format("%.14g", filter.MagnitudeAt(w));
  }
  record.Slot(slot::kZeroCounts) = "2 0 0";
  record.Slot(slot::kYzero) = "1.2 2";
  Problem problem;
  const Summary summary = Solved(record, problem);
  EXPECT_TRUE(summary.hasMetZeros);
  EXPECT_TRUE(std::any_of(summary.starts.begin(), summary.starts.end(),
                          [](const auto& start) { return start.kind == StartKind::parted; }));
  ASSERT_TRUE(summary.joinedZeros);
  EXPECT_EQ(summary.joinedZeros->zeroCounts, (std::array<int, 3>{0, 0, 1}));
  EXPECT_LT(summary.joinedZeros->cost, 1e-13);
  EXPECT_GT(summary.best.Cost(), 1e-8);
}

}  // namespace
}  // namespace polefit::testing
