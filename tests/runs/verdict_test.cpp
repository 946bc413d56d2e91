#include "runs/verdict.h"

#include <gtest/gtest.h>

namespace polefit::testing {
namespace {

TEST(VerdictTest, AMachineLineIsTakenWholeOrNotAtAll) {
  const auto figures = ReadMachineLine("pfit-end: exit=1 F=1.595938e-04 maxdb=-4.408 evals=681");
  EXPECT_EQ(figures,
            (MachineLine{{"exit", 1}, {"F", 1.595938e-04}, {"maxdb", -4.408}, {"evals", 681}}));
  for (const char* const line : {"", "pfit: converged", "pfit-end:", "pfit-end: F=1", "pfit-end: e",
                                 "pfit-end: exit=", "pfit-end: exit=0 F=1,5", "exit=0"}) {
    EXPECT_FALSE(ReadMachineLine(line)) << line;
  }
}

/// A run whose process ended with this exit status, or this signal when it is negative.
EndOfRun Ended(int status, const char* closing, bool hasReport, bool hasValues, int stops = 0) {
  return {.ending = ProcessEnding{1, status < 0, status < 0 ? -status : status},
          .closing = closing,
          .hasReport = hasReport,
          .hasValues = hasValues,
          .stops = stops};
}

TEST(VerdictTest, TheExitStatusDecidesAndTheWordsAreOnlyShown) {
  using enum Outcome;
  const std::tuple<EndOfRun, Outcome, const char*> cases[] = {
      {Ended(0, "converged (6 of 8 starts agree)", true, true), converged,
       "Converged (6 of 8 starts agree)"},
      {Ended(0, "", true, true), converged, "Converged"},
      {Ended(0, "converged", false, false), converged, "Converged  No report was written."},
      {Ended(0, "converged", true, true, 1), converged, "Converged"},
      {Ended(1, "stopped at EVALMAX; best point found is given", true, true), limitReached,
       "Limit reached: stopped at EVALMAX; best point found is given"},
      {Ended(1, "converged, it says", true, true, 1), stopped,
       "Stopped by you; the best values so far are kept."},
      {Ended(1, "", false, false, 1), stopped, "Stopped by you; no values were written."},
      {Ended(1, "", false, false, 2), stopped, "Stopped by you at once; nothing is written."},
      {Ended(4, "cannot write", false, false), failed,
       "Failed: cannot write  No report was written."},
      {Ended(9, "", true, false), failed, "Failed: the solver ended with exit code 9."},
      {Ended(-11, "", false, false), noReport, "Ended without a report: the solver broke off."},
      {Ended(-9, "converged", true, true), failed,
       "Failed: the solver broke off, and its report may not be complete."},
      {Ended(-15, "", true, false, 1), stopped,
       "Stopped by you, before the solver could write its results."},
      {Ended(143, "", false, false, 1), stopped,
       "Stopped by you, before the solver could write its results."}};
  for (const auto& [end, outcome, text] : cases) {
    EXPECT_EQ(VerdictOn(end).outcome, outcome) << text;
    EXPECT_EQ(VerdictOn(end).text, text);
  }
}

TEST(VerdictTest, AFaultInTheAnswersIsNamedBehindTheWords) {
  EndOfRun end = Ended(2, "NOT RUN: 2 faults in the answers", true, false);
  end.lineBefore = "Question 5 (Freq Norm): it is empty.";
  EXPECT_EQ(VerdictOn(end).text,
            "Failed: NOT RUN: 2 faults in the answers.  Question 5 (Freq Norm): it is empty.");
}

TEST(VerdictTest, WithoutAnExitStatusTheMachineLineAndThenTheResultsDecide) {
  using enum Outcome;
  const auto told = [](double exit) { return MachineLine{{"exit", exit}}; };
  const std::pair<EndOfRun, Outcome> cases[] = {
      {{.figures = told(0), .hasReport = true, .hasValues = true}, converged},
      {{.figures = told(1), .hasReport = true, .hasValues = true}, limitReached},
      {{.figures = told(2), .hasReport = true}, failed},
      {{.hasReport = true, .hasValues = true}, limitReached},
      {{.hasReport = true}, failed},
      {{.hasReport = true, .hasValues = true, .stops = 1}, stopped},
      {{}, noReport}};
  int row = 0;
  for (const auto& [end, outcome] : cases) EXPECT_EQ(VerdictOn(end).outcome, outcome) << row++;
  // The process's own word comes before the solver's.
  EndOfRun both = Ended(1, "", true, true);
  both.figures = told(0);
  EXPECT_EQ(VerdictOn(both).outcome, limitReached);
}

}  // namespace
}  // namespace polefit::testing
