#include "runs/verdict.h"

#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>
#include <sstream>

#include "check/check.h"
#include "platform/linux/console_host.h"
#include "platform/temporary_folder.h"
#include "responsefile/reader.h"
#include "responsefile/writer.h"
#include "solver/run.h"

namespace polefit::testing {
namespace {

using ::testing::StartsWith;

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
      {Ended(0, "converged (6 of 8 starts agree)", true, true), good,
       "Good: as far as the solver says, with no figures."},
      {Ended(0, "", false, false), good,
       "Good: as far as the solver says, with no figures.  No report was written."},
      {Ended(0, "stopped", true, true, 1), good,
       "Good: as far as the solver says, with no figures."},
      {Ended(1, "converged, it says", true, true), stopped,
       "Stopped: at a limit; the best point found is given."},
      {Ended(1, "", true, true, 1), stopped, "Stopped: by you; the best values so far are kept."},
      {Ended(1, "", false, false, 1), stopped, "Stopped: by you; no values were written."},
      {Ended(1, "", false, false, 2), stopped, "Stopped: by you at once; nothing is written."},
      {Ended(4, "cannot write", false, false), failed,
       "Failed: cannot write.  No report was written."},
      {Ended(9, "", true, false), failed, "Failed: the solver ended with exit code 9."},
      {Ended(-11, "", false, false), failed, "Failed: the solver broke off without a report."},
      {Ended(-9, "converged", true, true), failed,
       "Failed: the solver broke off, and its report may not be complete."},
      {Ended(-15, "", true, false, 1), stopped,
       "Stopped: by you, before the solver could write its results."},
      {Ended(143, "", false, false, 1), stopped,
       "Stopped: by you, before the solver could write its results."}};
  for (const auto& [end, outcome, text] : cases) {
    EXPECT_EQ(VerdictOn(end).outcome, outcome) << text;
    EXPECT_EQ(VerdictOn(end).text, text);
  }
  EXPECT_EQ(VerdictOn(std::get<0>(cases[0])).ending, "converged (6 of 8 starts agree)");
}

TEST(VerdictTest, ASignalFromOutsideIsNoLimitAndNotTheUsers) {
  EndOfRun end = Ended(1, "stopped on request; best point found is given", true, true);
  end.figures = ReadMachineLine("pfit-end: exit=1 F=2 asked=1");
  EXPECT_THAT(VerdictOn(end).text, StartsWith("Stopped: by a signal from outside; the best"));
  end.stops = 1;
  EXPECT_THAT(VerdictOn(end).text, StartsWith("Stopped: by you; the best"));
}

TEST(VerdictTest, AFaultInTheAnswersIsNamedBelow) {
  EndOfRun end = Ended(2, "NOT RUN: 2 faults in the answers", true, false);
  end.lineBefore = "Question 5 (Freq Norm): it is empty.";
  EXPECT_EQ(VerdictOn(end).text, "Failed: NOT RUN: 2 faults in the answers.");
  end.figures = ReadMachineLine("pfit-end: exit=2 warnings=1 faults=2");
  EXPECT_EQ(VerdictOn(end).text, "Failed: 2 faults in the answers; nothing was run.");
  EXPECT_EQ(VerdictOn(end).ending, "Question 5 (Freq Norm): it is empty.");
}

TEST(VerdictTest, AFitIsJudgedByTheRowsThatCount) {
  const std::string few = "pfit-end: exit=0 rms=6e-4 warnings=0 bounds=0 ";
  const std::pair<std::string, const char*> cases[] = {
      {few + "ipower=0 worst=.003 worstat=60 worstdb=.0281 worstdbat=60 maxdb=.0281 dbat=60",
       "Good: rms 0.06 %, worst 0.028 dB at 60 MHz; nothing on a bound."},
      {few + "ipower=0 worst=.003 worstat=60 worstdb=.0281 worstdbat=60 maxdb=4.4 dbat=9.5",
       "Good: rms 0.06 %, worst 0.028 dB at 60 MHz; nothing on a bound; skirt: 4.4 dB at 9.5 MHz, "
       "Ipower 0 does not count it."},
      // The same error stands in a row with weight, which Ipower 1 counts wherever it is.
      {few + "ipower=1 worst=.003 worstat=60 worstdb=4.4 worstdbat=9.5 maxdb=4.4 dbat=9.5",
       "Poor: rms 0.06 %, worst 4.4 dB at 9.5 MHz; nothing on a bound."},
      {few + "ipower=1 worst=.5 worstat=60 worstdb=3 worstdbat=9.5 maxdb=4.4 dbat=9",
       "Good: rms 0.06 %, worst 3 dB at 9.5 MHz; nothing on a bound; row without weight: 4.4 dB at "
       "9 MHz."},
      {few + "ipower=.5 worst=.101 worstat=60 worstdb=1 worstdbat=9.5 maxdb=1 dbat=9.5",
       "Poor: rms 0.06 %, worst 1 dB at 9.5 MHz, error 10 % of the largest Yout at 60 MHz; nothing "
       "on a bound."},
      {"pfit-end: exit=0 rms=1e-12 warnings=1 bounds=2 ipower=0 ripple=13.18",
       "Good, 1 warning: rms below 0.000001 %, delay ripple 13 ns; 2 on a bound or held."}};
  for (const auto& [line, text] : cases) {
    EXPECT_EQ(VerdictOn({.figures = ReadMachineLine(line), .hasReport = true}).text, text);
  }
}

/// What the window would say of a run of this file.
Verdict VerdictOnFile(const std::filesystem::path& file) {
  ConsoleHost host;
  const TemporaryFolder outputs;
  std::ostringstream out;
  RunFiles files;
  files.dataFile = file.filename();
  files.dataFolder = file.parent_path();
  files.outputFolder = outputs.Path();
  files.report = outputs.File("report");
  files.lastRun = outputs.File("values");
  files.lock = outputs.File("lock");
  const std::string lines = ClosingLines(SolveFile(host, files, {out, out, [] { return 0; }}));
  const auto figures = ReadMachineLine(lines.substr(lines.find("pfit-end")));
  return VerdictOn({.figures = figures, .hasReport = true});
}

TEST(VerdictTest, NoneOfTheExamplesIsPoor) {
  int count = 0;
  for (const auto& example : std::filesystem::directory_iterator(EXAMPLES)) {
    const Verdict verdict = VerdictOnFile(example.path());
    EXPECT_EQ(verdict.outcome, Outcome::good) << example.path() << verdict.text;
    ++count;
  }
  EXPECT_EQ(count, 7);
}

TEST(VerdictTest, WrongAnswersAreSaidByTheVerdictOrTheFindings) {
  ConsoleHost host;
  const TemporaryFolder folder;
  const auto example = [&] { return ReadResponseFile(host, EXAMPLES "/Ex-Yzero.101"); };
  ResponseRecord comma = example();
  comma.Slot(slot::kLowestXY) = "0,005";
  ResponseRecord one = example();
  one.Slot(slot::kLowestXY) = "1";
  ResponseRecord hertz = example();
  ResponseRecord falling = example();
  for (int row = 1; row <= hertz.nFreqPoints; ++row) {
    hertz.passband.At(row, 1) += "e6";
    for (int column = 1; column <= 4; ++column) {
      falling.passband.At(row, column) =
          example().passband.At(falling.nFreqPoints + 1 - row, column);
    }
  }
  const std::pair<ResponseRecord, const char*> cases[] = {{comma, "Failed: 1 fault in the answers"},
                                                          {one, "Poor, 4 warnings: "},
                                                          {hertz, "Poor, 1 warning: "},
                                                          {falling, "Good, 1 warning: "}};
  for (auto [record, verdict] : cases) {
    EXPECT_FALSE(FindingsIn(record).empty()) << verdict;
    WriteResponseFile(host, record, {folder.Path(), "x.dat"});
    EXPECT_THAT(VerdictOnFile(folder.File("x.dat")).text, StartsWith(verdict));
  }
}

TEST(VerdictTest, WithoutAnExitStatusTheMachineLineAndThenTheResultsDecide) {
  using enum Outcome;
  const auto told = [](double exit) { return MachineLine{{"exit", exit}}; };
  const std::pair<EndOfRun, Outcome> cases[] = {
      {{.figures = told(0), .hasReport = true, .hasValues = true}, good},
      {{.figures = told(1), .hasReport = true, .hasValues = true}, stopped},
      {{.figures = told(2), .hasReport = true}, failed},
      {{.figures = told(1e300), .hasReport = true}, failed},
      {{.figures = told(NAN), .hasReport = true}, failed},
      {{.hasReport = true, .hasValues = true}, stopped},
      {{.hasReport = true}, failed},
      {{.hasReport = true, .hasValues = true, .stops = 1}, stopped},
      {{}, failed}};
  int row = 0;
  for (const auto& [end, outcome] : cases) EXPECT_EQ(VerdictOn(end).outcome, outcome) << row++;
  // The process's own word comes before the solver's.
  EndOfRun both = Ended(1, "", true, true);
  both.figures = told(0);
  EXPECT_EQ(VerdictOn(both).outcome, stopped);
}

}  // namespace
}  // namespace polefit::testing
