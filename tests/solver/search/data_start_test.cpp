#include "solver/search/data_start.h"

#include <gtest/gtest.h>

#include <string>

#include "bench/families/families.h"
#include "solver/example_problem.h"
#include "solver/search/root_allotment.h"

namespace polefit::testing {
namespace {

using Root = std::complex<double>;

double CostAt(const Problem& problem, const Eigen::VectorXd& parameters) {
  Objective objective(problem.constellation, problem.rows);
  Fit fit;
  EXPECT_TRUE(objective.Evaluate(parameters, fit));
  return fit.cost;
}

TEST(DataStart, IsTheAnswerWhereTheResponseIsThatOfAFilter) {
  for (const families::FamilyProblem& family : families::TextbookProblems()) {
    // An all-pass does not show in |H|; a maximally flat passband hardly tells the sidelobes.
    if (family.family == "all-pass" || family.name.ends_with("ev 7 =") ||
        family.name.ends_with("ev 9 =")) {
      continue;
    }
    const Problem problem = GoodProblem(families::WithoutStarts(family.record));
    const auto start = FindDataStart(problem);
    ASSERT_TRUE(start) << family.name;
    EXPECT_LT(CostAt(problem, start->parameters), 1e-10) << family.name;
  }
}

TEST(DataStart, IsNoneWhereThePointsAreTooFew) {
  ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  record.nFreqPoints = 11;  // 8 poles and 2 zeros have 12 coefficients
  EXPECT_FALSE(FindDataStart(GoodProblem(record)));
  record.nFreqPoints = 12;
  EXPECT_TRUE(FindDataStart(GoodProblem(record)));
}

TEST(DataStart, FillsTheEmptyAnswersAlone) {
  struct Case {
    const char* answers;
    bool isWhole;
    bool keepsPairs;
    std::size_t warnings;
  };
  const Case cases[] = {{"8=; 9=; 11b=; 11c=; 12=", true, false, 0},
                        {"11b=; 11c=", false, true, 0},
                        {"12=", false, true, 0}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.answers);
    Problem problem = GoodProblem(ExampleRecord("Ex-Zpair.1", one.answers));
    const Eigen::VectorXd before = problem.typedParameters;
    std::vector<Finding> findings;
    FillFromPoints(problem, findings);
    EXPECT_EQ(problem.startsFromPoints, one.isWhole);
    EXPECT_EQ(problem.typedParameters.head(8) == before.head(8), one.keepsPairs);
    EXPECT_EQ(findings.size(), one.warnings);
    EXPECT_EQ(problem.typedGain, 1);
  }
  ResponseRecord few = ExampleRecord("Ex-Zpair.1", "8=; 9=");
  few.nFreqPoints = 5;
  Problem rough = GoodProblem(few);
  std::vector<Finding> findings;
  FillFromPoints(rough, findings);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].severity, Severity::warning);
  EXPECT_EQ(rough.typedParameters[0], .5);
  EXPECT_FALSE(rough.startsFromPoints);
}

TEST(Roots, AreMadeAsManySinglesAndPairsAsAreWanted) {
  struct Case {
    AllottedRoots roots;
    int singles;
    int pairs;
    AllottedRoots wanted;
  };
  const Root pair(.3, .4);
  const Case cases[] = {
      {{{4, 1, 9}, {}}, 1, 1, {{9}, {{2, .02}}}},         // the two smallest join
      {{{}, {pair, {3, 4}}}, 2, 1, {{4, 6.25}, {pair}}},  // the farthest splits
      {{{}, {pair}}, 1, 0, {{.5}, {}}},
      {{{2}, {}}, 2, 1, {{2, 3}, {{.8, 1.2}}}},  // missing ones
      {{{5, 1}, {pair, {3, 4}}}, 1, 1, {{1}, {pair}}},
  };
  for (const Case& one : cases) {
    const AllottedRoots found = AllotRoots(one.roots, one.singles, one.pairs);
    EXPECT_EQ(found.singles, one.wanted.singles);
    EXPECT_EQ(found.pairs, one.wanted.pairs);
  }
}

TEST(Roots, GoToTheAxisThatTheyAreNextTo) {
  Eigen::VectorXcd x(7);
  x << Root(4, .01), Root(4, -.01), Root(-.25, 0), Root(-1, 1), Root(-1, -1), Root(-1.01, 1),
      Root(-1.01, -1);
  const AllottedZeros zeros = AllotZeros(x, {1, 1, 0, 1});
  ASSERT_EQ(zeros.omega.size(), 1U);
  EXPECT_NEAR(zeros.omega[0], 2, .001);
  EXPECT_NEAR(zeros.sigma, .5, 1e-12);
  ASSERT_EQ(zeros.quads.size(), 1U);
  EXPECT_NEAR(std::abs(zeros.quads[0] * zeros.quads[0] - Root(1.005, 1)), 0, .01);
  EXPECT_NEAR(AllotZeros({}, {2, 0, 0, 0}).omega.back(), 1.69, 1e-12);  // missing ones
}

}  // namespace
}  // namespace polefit::testing
