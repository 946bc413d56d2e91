#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

std::vector<Finding> FindingsOf(const ResponseRecord& record) {
  std::vector<Finding> findings;
  ReadProblem(record, findings);
  return findings;
}

std::vector<std::string> FaultsOf(const ResponseRecord& record) {
  return FaultTexts(FindingsOf(record));
}

std::string NotANumber(const std::string& name, const std::string& text) {
  return name + ": \"" + text + "\" is not a number (decimal point, no comma).";
}

/// Answers of an example changed, and all that the user reads.
struct FaultsCase {
  const char* answers;
  std::vector<std::string> faults;
  const char* example = "Ex-Yzero.101";
};

TEST(Faults, AreToldWithQuestionOrSettingAndValue) {
  const FaultsCase cases[] = {
      {"5=; 8=.5 .4 .3; 9=; 12=-inf; 13=abc; 14=1e-400",
       {"Question 5 (Freq Norm): the answer is empty; one number is needed.",
        "Question 8 (pole pairs, real): 3 values given, question 6 asks for 4.",
        "Question 9 (pole pairs, imaginary): the answer is empty; 4 numbers are needed.",
        NotANumber("Question 12 (gain)", "-inf"), NotANumber("Question 13 (smallest sigma)", "abc"),
        "Question 14 (largest location): \"1e-400\" is out of range (1e-308 to 1e308)."}},
      {"5=0; 8=.5 .4 .3 .2 .1; 12=0; 13=0,005",
       {"Question 5 (Freq Norm): 0 must be greater than 0.",
        "Question 8 (pole pairs, real): 5 values given, question 6 asks for 4.",
        "Question 12 (gain): 0 must be other than 0.",
        NotANumber("Question 13 (smallest sigma)", "0,005")}},
      {"2=1 MHz; 5=10 20; 6=0 41; 11=1.5 0 0; 13=-1",
       {NotANumber("Question 2 (Ipower)", "1 MHz"),
        "Question 5 (Freq Norm): 2 values given, one needed.",
        "Question 6 (number of poles): \"0 41\" is not 2 whole numbers from 0 to 40.",
        "Question 11 (number of zeros): \"1.5 0 0\" is not 3 whole numbers from 0 to 40.",
        "Question 13 (smallest sigma): -1 must be greater than 0."}},
      {"8=x .5 .4 .3; 11=; 11a=.9",
       {NotANumber("Question 8 (pole pairs, real)", "x"),
        "Question 11 (number of zeros): the answer is empty; 3 whole numbers are needed."}},
      {"6=4; 8=x; 11a=30 .9 1.8; 13=nan",
       {"Question 6 (number of poles): \"4\" is not 2 whole numbers from 0 to 40.",
        "Question 11a (omega-axis zeros): .9 is below 1.0.",
        "Question 11a (omega-axis zeros): 30 is above the largest location 4 (question 14).",
        NotANumber("Question 13 (smallest sigma)", "nan")}},
      {"1=Y; 2=1; 14=.001",
       {"Question 1 is Y but there are 0 delay points; at least 1 needed.",
        "Question 14 (largest location): .001 must be greater than the answer to question 13.",
        "Passband point 21: Yout is 0 and Ipower is 1; the error cannot be divided by 0 (use "
        "Ipower 0 or less, or leave the point out)."}},
      {"1a=-1; 1b=x; 4=0; 6=0 0; 10a=0; 11=3 0 0",
       {"Question 1a (Tmin): -1 must be 0 or greater.",
        NotANumber("Question 1b (DelRipplePower)", "x"),
        "Question 4 (magnitude against delay): 0 must be greater than 0.",
        "Question 6 (number of poles): H(s) needs at least one pole.",
        "Question 10a (sigma zero): 0 must be other than 0.",
        "Question 11a (omega-axis zeros): 1 value given, question 11 asks for 3."},
       "Ex-Delay.101"},
      {"6=0 3; 8=.5 .4 .3; 9=.2 .4 .6; 10=Y; 10a=x; 11a=1 1 1; 14=1",
       {"Questions 6 and 11: H(s) has 7 zeros but only 6 poles; it needs at least as many poles as "
        "zeros.",
        NotANumber("Question 10a (sigma zero)", "x"),
        "Question 14 (largest location): 1 leaves no room for 3 omega-axis zeros with equal "
        "sidelobes; it must be greater than 1."}},
      {"11=1 0 0; 11a=; 14=.9",
       {"Question 14 (largest location): .9 leaves no room for omega-axis zeros; it must be 1 or "
        "greater."}},
      {"6=1 0; 7=.3; 11b=0",
       {"Questions 6 and 11: H(s) has 2 zeros but only 1 pole; it needs at least as many poles as "
        "zeros.",
        "Question 11b (zero pairs and quads, real): 0 is not allowed; use omega-axis zeros "
        "instead."},
       "Ex-Zpair.1"},
      {"S1=5 10; S3=1e-5 0 1; S4=x; S5=1e10; S6=1.5; S7=3; S8=2; S9=0",
       {"Solver setting 1 (REMAX): \"5 10\" is 2 values, 3 needed.",
        "Solver setting 3 (ZERO): 0 must be greater than 0.",
        NotANumber("Solver setting 4 (STEPSLIM)", "x"),
        "Solver setting 5 (STEPOUT): 1e10 must be 1000000000 or less.",
        "Solver setting 6 (EVALMAX): \"1.5\" is not a whole number of 1 or more.",
        "Solver setting 7 (SETRHO): \"3\" is not a whole number from 1 to 2.",
        "Solver setting 8 (RATIO): 2 must be greater than 2.",
        "Solver setting 9 (ACCURACY): 0 must be greater than 0."}},
      {"S1=0 1 1", {"Solver setting 1 (REMAX): \"0\" is not a whole number of 1 or more."}},
  };
  for (const FaultsCase& one : cases) {
    EXPECT_EQ(FaultsOf(ExampleRecord(one.example, one.answers)), one.faults);
  }
}

TEST(Faults, OfPointsAreToldWithTheirRow) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  record.passband.At(4, 3) = "";
  record.passband.At(5, 1) = "-1";
  record.passband.At(6, 2) = "x";
  record.passband.At(7, 3) = "-.2";
  record.passband.At(8, 2) = "1e999";
  EXPECT_THAT(FaultsOf(record),
              ElementsAre("Passband point 4: 2 value(s) found, 3 needed.",
                          "Passband point 5: frequency -1 is negative.",
                          "Passband point 6: Yin \"x\" is not a number.",
                          "Passband point 7: Yout -.2 is negative.",
                          "Passband point 8: Yin \"1e999\" is out of range (1e-308 to 1e308)."));
  record = ExampleRecord("Ex-Delay.101", "3=y");
  record.passband.At(4, 4) = "";
  record.delay.At(9, 2) = "x";
  EXPECT_THAT(FaultsOf(record), ElementsAre("Passband point 4: 3 value(s) found, 4 needed.",
                                            "Delay point 9: TX \"x\" is not a number."));
}

TEST(Faults, OfManyPointsAreToldOnce) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  for (int row = 3; row <= 9; ++row) record.passband.At(row, 3) = "-" + std::to_string(row);
  for (int row = 4; row <= 6; ++row) record.passband.At(row, 2) = "x";
  record.passband.At(20, 2) = "y";
  EXPECT_THAT(FaultsOf(record),
              ElementsAre("Passband point 3: Yout -3 is negative. The same in 6 more rows, up to "
                          "row 9.",
                          "Passband point 4: Yin \"x\" is not a number. The same in 3 more rows, "
                          "up to row 20."));
}

TEST(Faults, OfAllPointsTogether) {
  const char* const noBoth = "Passband points: no point has both Yin and Yout greater than 0.";
  const char* const noYout = "Passband points: every Yout is 0.";
  const char* const noWeight = "Passband points: all weights are 0.";
  const char* const noneCounts =
      "Passband points: no point with a weight greater than 0 has both Yin and Yout greater than "
      "0.";
  // The columns that are 0 all the way, one cell changed after that, and what is told.
  const std::tuple<std::vector<int>, int, int, const char*, std::vector<std::string>> cases[] = {
      {{2}, 1, 3, "1", {noBoth}},
      {{3}, 1, 2, "1", {noYout}},
      {{2, 4}, 1, 3, "1", {noBoth, noWeight}},
      {{4}, 21, 4, "1", {noneCounts}},
      {{3}, 4, 2, "x", {"Passband point 4: Yin \"x\" is not a number.", noYout}},
      {{3}, 4, 3, "x", {"Passband point 4: Yout \"x\" is not a number."}},
      {{4}, 4, 1, "-1", {"Passband point 4: frequency -1 is negative.", noWeight}},
  };
  for (const auto& [columns, row, column, text, faults] : cases) {
    ResponseRecord record = ExampleRecord("Ex-Yzero.101", "2=-1; 3=Y");
    for (const int zero : columns) {
      for (int i = 1; i <= record.nFreqPoints; ++i) record.passband.At(i, zero) = "0";
    }
    record.passband.At(row, column) = text;
    EXPECT_EQ(FaultsOf(record), faults);
  }
}

TEST(Faults, OfDelayPointsWhereYoutIs0) {
  const std::string noDivision =
      "Delay point 9: Yout is 0 there and DelRipplePower is 1; use 0 or less.";
  ResponseRecord record = ExampleRecord("Ex-Delay.101", "1b=1");
  record.delay.At(9, 1) = "10";
  EXPECT_THAT(FaultsOf(record), ElementsAre(noDivision));
  record.passband.At(4, 3) = "x";
  EXPECT_THAT(FaultsOf(record),
              ElementsAre("Passband point 4: Yout \"x\" is not a number.", noDivision));
  record = ExampleRecord("Ex-Delay.101");
  for (int row = 2; row <= record.nDelayPoints; ++row) record.delay.At(row, 1) = "10";
  EXPECT_THAT(FaultsOf(record),
              ElementsAre("Delay points: 1 with a weight greater than 0, at least 2 needed (where "
                          "Yout is 0 and DelRipplePower is -1, the weight is 0)."));
  record.Slot(slot::kTmin) = "150";
  EXPECT_THAT(FaultsOf(record), ElementsAre());
  record.delay.At(1, 1) = "11";
  EXPECT_EQ(FaultsOf(record).size(), 1);
  record.nFreqPoints = 0;
  record.nDelayPoints = 1;
  record.Slot(slot::kTmin) = "0";
  EXPECT_THAT(FaultsOf(record),
              ElementsAre("Question 1 is Y but there is 1 delay point; at least 2 needed.",
                          "Question 23: there are no passband points."));
}

TEST(Faults, AreNoSettingsLeftEmpty) {
  const Options options = GoodProblem(ExampleRecord("Ex-Yzero.101", "S1=8 15 12")).options;
  EXPECT_EQ(options.maxIterations[2], 12);
  EXPECT_EQ(options.maxEvaluations, Options().maxEvaluations);
}

TEST(Warnings, TellWhatIsTakenOtherThanTyped) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101", "8=0.001 -.5 .4 .3; 9=0 5 .7 1; 11a=4 1 1");
  record.nFreqPoints = 7;
  EXPECT_THAT(
      WarningTexts(FindingsOf(record)),
      ElementsAre("Warning: Question 8: 0.001 lies outside .005 to 4 and starts at the nearest "
                  "bound.",
                  "Warning: Question 8: -.5 is taken as its magnitude.",
                  "Warning: Question 9: 0 lies on a bound and starts just inside it.",
                  "Warning: Question 9: 5 lies outside 0 to 4 and starts at the nearest bound.",
                  "Warning: Question 11a: 1 lies on a bound and starts just inside it.",
                  "Warning: Question 11a: 4 lies on a bound and starts just inside it.",
                  "Warning: 8 unknowns but only 7 points; the answer is not unique."));
}

TEST(Findings, NameTheirPlaceAsData) {
  ResponseRecord record =
      ExampleRecord("Ex-Delay.101", "5=; 8=.001 .4 x; 6=0 3; 11=4 0 0; 1b=1; S8=2; 12=-1");
  record.passband.At(4, 3) = "";
  record.passband.At(6, 2) = "x";
  record.delay.At(9, 2) = "x";
  record.delay.At(7, 1) = "10";
  using enum FindingTable;
  const std::pair<FindingPlace, Severity> places[] = {{{"5"}, Severity::open},
                                                      {{"6"}, Severity::fault},
                                                      {{"8"}, Severity::fault},
                                                      {{"11a"}, Severity::fault},
                                                      {{"12"}, Severity::warning},
                                                      {{"", passband, 4, 3}, Severity::fault},
                                                      {{"", passband, 6, 2}, Severity::fault},
                                                      {{"", delay, 7}, Severity::fault},
                                                      {{"", delay, 9, 2}, Severity::fault},
                                                      {{"", solverSettings, 8}, Severity::fault}};
  const std::vector<Finding> findings = FindingsOf(record);
  ASSERT_EQ(findings.size(), std::size(places));
  for (std::size_t i = 0; i < findings.size(); ++i) {
    EXPECT_EQ(findings[i].place, places[i].first) << findings[i].text;
    EXPECT_EQ(findings[i].severity, places[i].second) << findings[i].text;
  }
}

TEST(Faults, AreNotFoundInAnswersThatAreNotInUse) {
  ResponseRecord record = ExampleRecord(
      "Ex-Yzero.101", "1a=old; 1b=old; 4=old; 7=old; 10a=old; 11b=old; 11c=old; S4=old");
  record.solverCount = 0;
  record.passband.At(3, 4) = "";
  EXPECT_THAT(FaultsOf(record), ElementsAre());
}

}  // namespace
}  // namespace polefit::testing
