#include "runs/compare_runs.h"

#include <gmock/gmock.h>

#include "platform/temporary_folder.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

ResultLocation PolePair(double real, double imaginary) {
  return {FactorKind::polePair, true, true, real, imaginary};
}

TEST(PairLocationsTest, TheNearestOfAKindAreOneAndTheRestStandsLast) {
  FilterResult one;
  one.locations = {
      PolePair(-.5, 1), PolePair(-.4, .2), {FactorKind::sigmaPole, true, false, -1, 0}};
  FilterResult other;
  // The same filter at another Freq Norm, the pairs in the other order, and one more pair.
  other.freqNorm = 2;
  other.locations = {PolePair(-.2, .1), PolePair(-.25, .51), PolePair(-.1, 2)};
  const std::vector<LocationPair> pairs = PairLocations(one, other);
  ASSERT_THAT(pairs, SizeIs(4));
  EXPECT_EQ(pairs[0].other->imaginary, .51);
  EXPECT_EQ(pairs[1].other->imaginary, .1);
  EXPECT_TRUE(pairs[2].one && !pairs[2].other) << "a single pole is no pair";
  EXPECT_EQ(pairs[3].other->imaginary, 2);
  EXPECT_FALSE(pairs[3].one);
}

ComparedRun RunWith(const std::string& values, const std::string& power) {
  ComparedRun run;
  run.run.verdict = {Outcome::good, "Good: rms 0.1 %.", "converged"};
  run.run.figures = {{"rms", .001}, {"F", 2e-6}};
  run.contents.values = values;
  run.contents.input = power;
  return run;
}

TEST(CompareRunsTest, TheChangeIsToldInPartsOfTheFirst) {
  const std::string example = FileBytes(EXAMPLES "/Ex-Yzero.101");
  std::string changed = example;
  const std::size_t line = changed.find("! 5.");
  ASSERT_NE(line, std::string::npos);
  const std::size_t begin = changed.rfind('\n', line) + 1;
  changed.replace(begin, changed.find_first_of(" \t", begin) - begin, "10.1");
  const auto tables = CompareRuns(RunWith(example, example), RunWith(changed, changed));
  ASSERT_THAT(tables, SizeIs(3));
  for (const auto& row : tables[0].rows) EXPECT_EQ(row.size(), tables[0].heading.size());
  ASSERT_FALSE(tables[0].rows.empty());
  ASSERT_THAT(tables[1].rows, SizeIs(1));
  EXPECT_THAT(tables[1].rows[0][0], HasSubstr("5. "));
  EXPECT_EQ(tables[1].rows[0][2], "10.1");
  // All locations are normalised, so that f0 goes as Freq Norm and Q stays.
  const double factor = 10.1 / std::stod(tables[1].rows[0][1]);
  for (const auto& row : tables[0].rows) {
    EXPECT_NEAR(std::stod(row[2]) / std::stod(row[1]), factor, 1e-4 * factor) << row[0];
    EXPECT_EQ(row[4], row[5]);
  }
  EXPECT_THAT(TextOf(tables), HasSubstr("\nCost F\t2e-06\t2e-06\n"));
}

TEST(CompareRunsTest, RunsThatLeftNothingAreComparedByWhatThereIs) {
  const auto tables = CompareRuns(RunWith("", "torn"), RunWith("no file", ""));
  EXPECT_THAT(tables[0].rows, IsEmpty());
  EXPECT_THAT(tables[2].rows[0], ElementsAre("Verdict", "Good", "Good"));
}

}  // namespace
}  // namespace polefit::testing
