#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "solver/example_problem.h"

namespace polefit {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// One answer of an example changed, and what the user reads.
struct Case {
  int slot;
  std::string answer;
  std::string message;
};

Findings FindingsOf(const ResponseRecord& record) {
  Findings findings;
  ReadProblem(record, findings);
  return findings;
}

TEST(Faults, OfAnswersAreToldWithQuestionAndValue) {
  const Case cases[] = {
      {slot::kPoleReal, ".5 .4 .3",
       "Question 8 (pole pairs, real): 3 values given, question 6 asks for 4."},
      {slot::kPoleReal, ".5 .4 .3 .2 .1",
       "Question 8 (pole pairs, real): 5 values given, question 6 asks for 4."},
      {slot::kPoleImag, "",
       "Question 9 (pole pairs, imaginary): the answer is empty; 4 numbers are needed."},
      {slot::kLowestXY, "abc",
       "Question 13 (smallest sigma): \"abc\" is not a number (decimal point, no comma)."},
      {slot::kLowestXY, "0,005",
       "Question 13 (smallest sigma): \"0,005\" is not a number (decimal point, no comma)."},
      {slot::kLowestXY, "nan",
       "Question 13 (smallest sigma): \"nan\" is not a number (decimal point, no comma)."},
      {slot::kMaxXY, "1e999",
       "Question 14 (largest location): \"1e999\" is not a number (decimal point, no comma)."},
      {slot::kGain, "-inf",
       "Question 12 (gain): \"-inf\" is not a number (decimal point, no comma)."},
      {slot::kFreqNorm, "", "Question 5 (Freq Norm): the answer is empty; one number is needed."},
      {slot::kNPoles, "4",
       "Question 6 (number of poles): \"4\" is not 2 whole numbers from 0 to 40."},
      {slot::kNPoles, "0 41",
       "Question 6 (number of poles): \"0 41\" is not 2 whole numbers from 0 to 40."},
      {slot::kZeroCounts, "1.5 0 0",
       "Question 11 (number of zeros): \"1.5 0 0\" is not 3 whole numbers from 0 to 40."},
      {slot::kZeroCounts, "",
       "Question 11 (number of zeros): the answer is empty; 3 whole numbers are needed."},
      {slot::kNPoles, "0 0", "Question 6 (number of poles): H(s) needs at least one pole."},
      {slot::kYzero, ".9 1.3 1.8", "Question 11a (omega-axis zeros): .9 is below 1.0."},
      {slot::kYzero, "1 30 1.8",
       "Question 11a (omega-axis zeros): 30 is above the largest location 4 (question 14)."},
      {slot::kMaxXY, ".001",
       "Question 14 (largest location): .001 must be greater than the answer to question 13."},
      {slot::kFreqNorm, "0", "Question 5 (Freq Norm): 0 must be greater than 0."},
      {slot::kLowestXY, "-1", "Question 13 (smallest sigma): -1 must be greater than 0."},
      {slot::kGain, "0", "Question 12 (gain): 0 must be other than 0."},
      {slot::kIPower, "1",
       "Passband point 21: Yout is 0 and Ipower is 1; the error cannot be divided by 0 (use Ipower "
       "0 or less, or leave the point out)."},
      {slot::kEqualDelay, "Y", "Question 1 is Y but there are 0 delay points; at least 1 needed."},
  };
  for (const Case& one : cases) {
    ResponseRecord record = ExampleRecord("Ex-Yzero.101");
    record.Slot(one.slot) = one.answer;
    const std::vector<std::string> faults = FindingsOf(record).faults;
    ASSERT_FALSE(faults.empty()) << one.message;
    EXPECT_EQ(faults.front(), one.message);
  }
}

TEST(Faults, OfADelayProblemAreToldToo) {
  const Case cases[] = {
      {slot::kTmin, "-1", "Question 1a (Tmin): -1 must be 0 or greater."},
      {slot::kMagnVSripple, "0", "Question 4 (magnitude against delay): 0 must be greater than 0."},
      {slot::kSigmaZero, "0", "Question 10a (sigma zero): 0 must be other than 0."},
      {slot::kDelRipplePower, "x",
       "Question 1b (DelRipplePower): \"x\" is not a number (decimal point, no comma)."},
      {slot::kZeroCounts, "4 0 0",
       "Question 11a (omega-axis zeros): 1 value given, question 11 asks for 4."},
  };
  for (const Case& one : cases) {
    ResponseRecord record = ExampleRecord("Ex-Delay.101");
    record.Slot(one.slot) = one.answer;
    const std::vector<std::string> faults = FindingsOf(record).faults;
    ASSERT_FALSE(faults.empty()) << one.message;
    EXPECT_EQ(faults.front(), one.message);
  }
  ResponseRecord record = ExampleRecord("Ex-Zpair.1");
  record.Slot(slot::kZreal) = "0";
  record.Slot(slot::kNPoles) = "1 0";
  record.Slot(slot::kSigmaPoles) = ".3";
  EXPECT_THAT(FindingsOf(record).faults,
              ElementsAre("Question 11b (zero pairs and quads, real): 0 is not allowed; use "
                          "omega-axis zeros instead.",
                          "Questions 6 and 11: H(s) has 2 zeros but only 1 pole; it needs at least "
                          "as many poles as zeros."));
}

struct CellCase {
  int row;
  int column;
  std::string cell;
  std::string message;
};

TEST(Faults, OfPointsAreToldWithTheirRow) {
  const CellCase cases[] = {
      {4, 3, "", "Passband point 4: 2 value(s) found, 3 needed."},
      {4, 2, "x", "Passband point 4: Yin \"x\" is not a number."},
      {4, 3, "-.2", "Passband point 4: Yout -.2 is negative."},
      {5, 1, "-1", "Passband point 5: frequency -1 is negative."},
  };
  for (const CellCase& one : cases) {
    ResponseRecord record = ExampleRecord("Ex-Yzero.101");
    record.passband.At(one.row, one.column) = one.cell;
    EXPECT_THAT(FindingsOf(record).faults, ElementsAre(one.message));
  }
  ResponseRecord weighted = ExampleRecord("Ex-Yzero.101");
  weighted.Slot(slot::kUseWeights) = "y";
  weighted.passband.At(4, 4) = "";
  EXPECT_THAT(FindingsOf(weighted).faults,
              ElementsAre("Passband point 4: 3 value(s) found, 4 needed."));
  ResponseRecord delay = ExampleRecord("Ex-Delay.101");
  delay.delay.At(9, 2) = "x";
  EXPECT_THAT(FindingsOf(delay).faults, ElementsAre("Delay point 9: TX \"x\" is not a number."));
}

/// The example with one column of the passband set to one value.
std::vector<std::string> FaultsWithColumn(int column, const std::string& value) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  record.Slot(slot::kUseWeights) = "Y";
  for (int row = 1; row <= record.nFreqPoints; ++row) record.passband.At(row, column) = value;
  return FindingsOf(record).faults;
}

TEST(Faults, OfAllPointsTogether) {
  EXPECT_THAT(FaultsWithColumn(3, "0"), ElementsAre("Passband points: every Yout is 0."));
  EXPECT_THAT(FaultsWithColumn(2, "0"),
              ElementsAre("Passband points: no point has both Yin and Yout greater than 0."));
  EXPECT_THAT(FaultsWithColumn(4, "0"), ElementsAre("Passband points: all weights are 0."));

  ResponseRecord none = ExampleRecord("Ex-Yzero.101");
  none.nFreqPoints = 0;
  EXPECT_THAT(FindingsOf(none).faults, ElementsAre("Question 23: there are no passband points."));

  ResponseRecord delay = ExampleRecord("Ex-Delay.101");
  delay.nDelayPoints = 1;
  EXPECT_THAT(FindingsOf(delay).faults,
              ElementsAre("Question 1 is Y but there is 1 delay point; at least 2 needed."));
  delay.nDelayPoints = 9;
  delay.Slot(slot::kDelRipplePower) = "1";
  delay.delay.At(9, 1) = "10";
  EXPECT_THAT(
      FindingsOf(delay).faults,
      ElementsAre("Delay point 9: Yout is 0 there and DelRipplePower is 1; use 0 or less."));
}

TEST(Faults, OfSolverSettings) {
  const Case cases[] = {
      {8, "2", "Solver setting 8 (RATIO): 2 must be greater than 2."},
      {1, "5 10", "Solver setting 1 (REMAX): \"5 10\" is 2 values, 3 needed."},
      {1, "0 1 1", "Solver setting 1 (REMAX): \"0\" is not a whole number of 1 or more."},
      {3, "1e-5 0 1", "Solver setting 3 (ZERO): 0 must be greater than 0."},
      {4, "x", "Solver setting 4 (STEPSLIM): \"x\" is not a number (decimal point, no comma)."},
      {6, "1.5", "Solver setting 6 (EVALMAX): \"1.5\" is not a whole number of 1 or more."},
      {7, "3", "Solver setting 7 (SETRHO): \"3\" is not a whole number from 1 to 2."},
      {9, "0", "Solver setting 9 (ACCURACY): 0 must be greater than 0."},
  };
  for (const Case& one : cases) {
    ResponseRecord record = ExampleRecord("Ex-CNTL.1");
    record.solver.at(static_cast<std::size_t>(one.slot - 1)) = one.answer;
    EXPECT_THAT(FindingsOf(record).faults, ElementsAre(one.message));
  }
  ResponseRecord partly = ExampleRecord("Ex-CNTL.1");
  partly.solver = {"8 15 12", "", "", "", "", "", "", "", ""};
  Findings findings;
  const Problem problem = ReadProblem(partly, findings);
  EXPECT_THAT(findings.faults, IsEmpty());
  EXPECT_EQ(problem.options.maxIterations[2], 12);
  EXPECT_EQ(problem.options.maxEvaluations, Options().maxEvaluations);
}

TEST(Warnings, TellWhatIsTakenOtherThanTyped) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  record.Slot(slot::kPoleReal) = "0.001 -.5 .4 .3";
  record.Slot(slot::kPoleImag) = "0 5 .7 1";
  record.nFreqPoints = 7;
  EXPECT_THAT(
      FindingsOf(record).warnings,
      ElementsAre("Warning: Question 8: 0.001 lies outside .005 to 4 and starts at the nearest "
                  "bound.",
                  "Warning: Question 9: 0 lies on a bound and starts just inside it.",
                  "Warning: Question 8: -.5 is taken as its magnitude.",
                  "Warning: Question 9: 5 lies outside 0 to 4 and starts at the nearest bound.",
                  "Warning: 8 unknowns but only 7 points; the answer is not unique."));
}

TEST(Faults, AreNotFoundInAnswersThatAreNotInUse) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  for (const int unused : {slot::kTmin, slot::kDelRipplePower, slot::kMagnVSripple,
                           slot::kSigmaPoles, slot::kSigmaZero, slot::kZreal, slot::kZimag}) {
    record.Slot(unused) = "old text";
  }
  record.passband.At(3, 4) = "";
  record.solver[3] = "old text";
  EXPECT_THAT(FindingsOf(record).faults, IsEmpty());
}

}  // namespace
}  // namespace polefit
