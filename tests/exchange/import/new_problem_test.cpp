#include "exchange/import/new_problem.h"

#include <gmock/gmock.h>

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

/// Points at 1, 2, 3 ... MHz.
std::vector<PassbandRow> Rising(const std::vector<double>& yout) {
  std::vector<PassbandRow> rows;
  for (std::size_t i = 0; i < yout.size(); ++i) {
    rows.push_back({{static_cast<double>(i + 1)}, {1}, {yout[i]}, {1}});
  }
  return rows;
}

TEST(NewProblemTest, ThePointsSayPassbandNullsAndErrorPower) {
  struct Case {
    std::vector<double> yout;
    const char* freqNorm;
    int nulls;
    const char* ipower;
  };
  const Case cases[] = {
      {{1, .9, .8, .5, .1}, "3", 0, "1"},
      {{1, 1, .99, .98}, "4", 0, "1"},                             // never falls by 3 dB
      {{1, .9, .5, .01, .2, .1}, "2", 1, "1"},                     // a null behind the passband
      {{1, .9, .5, 0, .9, .5}, "2", 1, "0"},                       // comes back behind the null
      {{1, .9, .5, .1, .2, .1}, "2", 0, "1"},                      // 6 dB under its peak: no null
      {{1, .5, .01, .5, .01, .5, .01, .5, .01, .5}, "1", 0, "1"},  // four are noise
      {{.1, .5, 1, .8, .3}, "4", 0, "1"},
      {{1, .5, .01, .012, .011, .5}, "1", 1, "1"}};  // one null with noise in it
  for (const Case& one : cases) {
    const NewProblem problem = LookAtPoints(Rising(one.yout));
    EXPECT_EQ(problem.freqNorm, one.freqNorm);
    EXPECT_EQ(problem.nulls, one.nulls);
    EXPECT_EQ(problem.ipower, one.ipower);
    EXPECT_EQ(problem.note.empty(), one.yout.size() != 10);
  }
}

TEST(NewProblemTest, ANewProblemHasTheBuiltInAnswersButTheListedOnes) {
  ResponseRecord record = BuiltInAnswers();
  StartProblem({"1", "20", 2, ""}, "Points of x", "1 2", record);
  PutRows({{"1", "1", ".5", "1"}, {"2", "1", ".4", "1"}}, record);
  PutDelays({{"1", "0"}, {"2", "5"}}, record);
  EXPECT_THAT(record.slots,
              ElementsAre("Y", "0", "-2", "1", "N", "10", "20", "1 2", "", "", "", "N", ".05", "N",
                          "N", "2 0 0", "", "", "", "1", ".005", "4", " 2", " 2"));
  EXPECT_EQ(record.Note1, "Points of x");
  EXPECT_EQ(record.passband.At(2, 3), ".4");
  EXPECT_EQ(record.delay.At(2, 2), "5");
}

const std::vector<PassbandCells> kTable = {
    {"1", "a", "1", "1"}, {"2", "b", ".5", "2"}, {"4", "c", ".25", "3"}};

/// Points at 2, 3 and 6 MHz.
std::vector<PassbandRow> FreshPoints() {
  return {{{2, "2.0"}, {1}, {.8, ".80"}, {1}}, {{3}, {1}, {.2}, {1}}, {{6}, {1}, {.1}, {1}}};
}

TEST(MergingTest, PointsComeIntoATableAtItsFrequenciesOrTheirs) {
  const TakenColumns onlyYout = {false, true, false};
  MergedTable merged = Merge(kTable, FreshPoints(), onlyYout, Frequencies::table);
  // 1 MHz lies outside; 4 MHz is a third of the way from .2 to .1, in dB.
  EXPECT_THAT(merged.rows,
              ElementsAre(PassbandCells{"1", "a", "1", "1"}, PassbandCells{"2", "b", ".80", "2"},
                          PassbandCells{"4", "c", ".158740105", "3"}));
  EXPECT_EQ(merged.keptRows, 1);

  const TakenColumns all = {true, true, false};
  merged = Merge(kTable, FreshPoints(), all, Frequencies::file);
  EXPECT_THAT(merged.rows, ElementsAre(PassbandCells{"2.0", "1", ".80", "2"},
                                       PassbandCells{"3", "1", ".2", "2.44948974"},
                                       PassbandCells{"6", "1", ".1", "1"}));

  const TakenColumns onlyYin = {true, false, false};
  merged = Merge(kTable, FreshPoints(), onlyYin, Frequencies::file);
  EXPECT_THAT(merged.rows, ElementsAre(PassbandCells{"2.0", "1", ".5", "2"},
                                       PassbandCells{"3", "1", ".353553391", "2.44948974"}));
  EXPECT_EQ(merged.droppedPoints, 1);

  merged = Merge(kTable, FreshPoints(), all, Frequencies::both);
  EXPECT_THAT(merged.rows, ElementsAre(kTable[0], PassbandCells{"2", "1", ".80", "2"},
                                       PassbandCells{"3", "1", ".2", "2.44948974"}, kTable[2],
                                       PassbandCells{"6", "1", ".1", "1"}));
}

}  // namespace
}  // namespace polefit::testing
