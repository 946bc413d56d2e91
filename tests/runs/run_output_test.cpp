#include "runs/run_output.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

TEST(RunOutputTest, ProgressIsFoundInAnyLineThatTellsIt) {
  const std::pair<const char*, std::optional<RunProgress>> cases[] = {
      {"start 1, problem 2, step 9, evaluations 16 of 2000, rho 1e-5", RunProgress{16, 2000}},
      {"120 of 2000", RunProgress{120, 2000}},
      {"one of many, 3 of 7; more", RunProgress{3, 7}},
      {"start 1: typed values", {}},
      {"5 of 0", {}},
      {"(6 of 8 starts agree)", {}},
      {" of ", {}},
      {"9 of 9999999999", {}}};
  for (const auto& [line, expected] : cases) EXPECT_EQ(ProgressOf(line), expected) << line;
}

TEST(RunOutputTest, FiguresAreToldFromWords) {
  EXPECT_TRUE(IsFigures("pfit-end: exit=0 F=1.5e-04"));
  EXPECT_FALSE(IsFigures("pfit: converged (6 of 8 starts agree)"));
}

TEST(RunOutputTest, TheVerdictFollowsTheClosingLineTheReportAndTheStop) {
  using enum Outcome;
  const std::pair<EndOfRun, Outcome> cases[] = {
      {{"pfit: converged (6 of 8 starts agree)", "", true, false}, converged},
      {{"pfit: stopped at STEPSLIM; best point found is given", "", true, false}, limitReached},
      {{"pfit: stopped on request; best point found is given", "", true, true}, stopped},
      {{"pfit: converged (1 of 1 starts agree)", "", true, true}, converged},
      {{"pfit: ended at once on request; nothing is written", "", false, true}, stopped},
      {{"pfit: another run is using the program folder", "", false, false}, failed},
      {{"start 3: random point", "", true, false}, failed},
      {{"start 3: random point", "", true, true}, stopped},
      {{"", "", false, false}, noReport}};
  for (const auto& [end, outcome] : cases) {
    EXPECT_EQ(VerdictOn(end).outcome, outcome) << end.lastLine;
  }
  EXPECT_EQ(VerdictOn({"pfit: NOT RUN: 2 faults in the answers",
                       "Question 5 (Freq Norm): it is empty.", true})
                .text,
            "Failed: NOT RUN: 2 faults in the answers.  Question 5 (Freq Norm): it is empty.");
}

}  // namespace
}  // namespace polefit::testing
