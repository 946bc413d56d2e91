#include "app/run_output.h"

#include <gtest/gtest.h>

namespace polefit {
namespace {

TEST(RunOutputTest, ProgressIsFoundInAnyLineThatTellsIt) {
  const std::pair<const char*, std::optional<RunProgress>> cases[] = {
      {"start 1, problem 2, step 9, evaluations 16 of 2000, rho 1e-5", RunProgress{16, 2000}},
      {"120 of 2000", RunProgress{120, 2000}},
      {"one of many, 3 of 7; more", RunProgress{3, 7}},
      {"start 1: typed values", std::nullopt},
      {"5 of 0", std::nullopt},
      {"(6 of 8 starts agree)", std::nullopt},
      {" of ", std::nullopt},
      {"9 of 9999999999", std::nullopt}};
  for (const auto& [line, expected] : cases) EXPECT_EQ(ProgressOf(line), expected) << line;
}

TEST(RunOutputTest, TheVerdictFollowsTheClosingLineTheReportAndTheStop) {
  struct Case {
    EndOfRun end;
    Outcome outcome;
  };
  const Case cases[] = {
      {{"pfit: converged (6 of 8 starts agree)", "", true, false}, Outcome::converged},
      {{"pfit: stopped at STEPSLIM; best point found is given", "", true, false},
       Outcome::limitReached},
      {{"pfit: stopped on request; best point found is given", "", true, true}, Outcome::stopped},
      {{"pfit: converged (1 of 1 starts agree)", "", true, true}, Outcome::converged},
      {{"pfit: ended at once on request; nothing is written", "", false, true}, Outcome::stopped},
      {{"pfit: another run is using the program folder", "", false, false}, Outcome::failed},
      {{"start 3: random point", "", true, false}, Outcome::failed},
      {{"start 3: random point", "", true, true}, Outcome::stopped},
      {{"", "", false, false}, Outcome::noReport}};
  for (const Case& expected : cases) {
    EXPECT_EQ(VerdictOn(expected.end).outcome, expected.outcome) << expected.end.lastLine;
  }
}

TEST(RunOutputTest, ARefusedProblemIsToldWithItsFirstFault) {
  const EndOfRun end{"pfit: NOT RUN: 2 faults in the answers",
                     "Question 5 (Freq Norm): it is empty.", true, false};
  EXPECT_EQ(VerdictOn(end).text,
            "Failed: NOT RUN: 2 faults in the answers.  Question 5 (Freq Norm): it is empty.");
}

}  // namespace
}  // namespace polefit
