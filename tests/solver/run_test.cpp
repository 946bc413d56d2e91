#include "solver/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>

#include "base/error_of.h"
#include "platform/scripted_host.h"
#include "responsefile/writer.h"
#include "solver/example_problem.h"

namespace polefit::testing {
namespace {

using ::testing::ContainsRegex;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

/// The front end's folders with one data file in them.
class Run : public ::testing::Test {
 protected:
  Run() {
    std::filesystem::create_directories(host_.Path("base/Tessel.hz"));
    std::filesystem::create_directory(host_.Path("data"));
    files_ = FilesOfCall("x.dat", host_.Path("base").substr(0, 2));
    Use(ExampleRecord("Ex-Delay.101"));
  }

  /// The files of the front end's call.
  RunFiles FilesOfCall(const std::string& dataFile, const std::string& drive) {
    return ParseCommandLine({dataFile, host_.Path("data"), host_.Path("base"), drive}, host_)
        .files.at(0);
  }

  void Use(ResponseRecord record) {
    ConsoleHost writer;
    WriteResponseFile(writer, record, {host_.Path("data"), "x.dat"});
  }

  /// Runs the solver; from the `calm`-th question on, the user has asked `requests` times to stop.
  Exit Solve(int calm = 0, int requests = 0) {
    out_.str("");
    err_.str("");
    int asked = 0;
    const RunOutcome outcome =
        SolveFile(host_, files_, {out_, err_, [&] { return ++asked > calm ? requests : 0; }});
    out_ << ClosingLines(outcome);
    return outcome.exit;
  }

  /// The report without the time of day and the seconds taken.
  std::string Report() const {
    return std::regex_replace(FileBytes(files_.report), std::regex("Made.*"), "");
  }
  std::vector<std::string> Outputs() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(host_.Path("base/Tessel.hz"))) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  ScriptedHost host_;
  RunFiles files_;
  std::ostringstream out_;
  std::ostringstream err_;
};

TEST_F(Run, LeavesAReportAndTheAnswersAndNothingElse) {
  EXPECT_EQ(Solve(), Exit::converged);
  EXPECT_THAT(Outputs(), UnorderedElementsAre("~pft-out.txt", "last-run.ini"));
  EXPECT_THAT(out_.str(),
              EndsWith("pfit: converged (7 of 7 independent starts agree); rms error 3.088e-03, "
                       "141 evaluations\n"
                       "pfit-end: exit=0 F=1.595938e-04 rms=3.088e-03 max=6.243e-03 "
                       "maxat=1.5 maxrow=4 maxdb=4.408 dbat=9.5 dbrow=20 agree=7 "
                       "starts=9 evals=141 warnings=0 faults=0 bounds=1 "
                       "poles=7 zeros=3 ipower=0 worst=6.243e-03 worstat=1.5 worstdb=0.1326 "
                       "worstdbat=7.5 worstdbrow=16 ripple=7.537\n"));
  EXPECT_EQ(err_.str(), "");
  EXPECT_THAT(Report(), EndsWith("\r\nEnd of report.\r\n"));
  const std::string first = Report();
  EXPECT_EQ(Solve(), Exit::converged);
  EXPECT_EQ(Report(), first);
}

TEST_F(Run, NeedsNoStartingValues) {
  Use(ExampleRecord("Ex-Zpair.1", "8=; 9=; 11b=; 11c=; 12="));
  EXPECT_EQ(Solve(), Exit::converged);
  EXPECT_THAT(out_.str(), HasSubstr("pfit-end: exit=0 F=2.507429e-06"));
  EXPECT_THAT(Report(), HasSubstr("Start 1 (from the points)"));
  EXPECT_THAT(
      Report(),
      HasSubstr("8. Pole pairs ... REAL values?                       : (from the points)"));
  EXPECT_EQ(Words(ExampleRecord(files_.lastRun).Slot(slot::kPoleReal)).size(), 4U);
  Use(ExampleRecord("Ex-Zpair.1", "8=; 9=.1 .2 .3 .4"));
  EXPECT_EQ(Solve(), Exit::faultyAnswers);
}

TEST_F(Run, ChangesNothingInTheLastRunButTheLocationsAndTheGain) {
  const ResponseRecord before = ExampleRecord("Ex-Delay.101");
  Solve();
  ResponseRecord after = ExampleRecord(files_.lastRun);
  EXPECT_EQ(after.LastFileName, "x.dat");
  EXPECT_THAT(after.Slot(slot::kPoleReal),
              ContainsRegex("^\\.34369[0-9]* \\.2993[0-9]* \\.230[0-9]*$"));
  EXPECT_EQ(after.Slot(slot::kYzero), "1");
  for (const int found : {slot::kPoleReal, slot::kPoleImag, slot::kSigmaZero, slot::kGain}) {
    EXPECT_NE(after.Slot(found), before.Slot(found));
    after.Slot(found) = before.Slot(found);
  }
  after.LastFileName = before.LastFileName;
  EXPECT_EQ(after, before);
}

TEST_F(Run, TellsWhatIsWrongWithTheFile) {
  using enum Exit;
  const std::string whole = FileBytes(files_.InputPath());
  WriteBytes(files_.lastRun, "former");
  const std::tuple<int, std::string, Exit, const char*> cases[] = {
      {24, "x", faultyAnswers,
       "Question 23 (number of passband points): \"x\" is not a whole number from 0 to 32766."},
      {24, "-1", faultyAnswers, "\"-1\" is not a whole number from 0 to 32766."},
      {24, "32767", faultyAnswers,
       "\"32767\" is too many; the grids hold 32766 points and a spare row."},
      {24, "99999", faultyAnswers, "\"99999\" is too many; the grids hold"},
      {24, "25", faultyAnswers,
       "is not a whole number from 0 to 32766 (is the passband point count, 25, right?)."},
      {48, "2.5", faultyAnswers, "(is the passband point count, 21, right?)."},
      {19, "", unreadable, "The data file ends at line 18, before answer line 19."},
      {2, "N", converged, ""},
  };
  for (const auto& [changedLine, text, exit, message] : cases) {
    std::istringstream lines(whole);
    std::string changed;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
      if (number == changedLine && text.empty()) break;
      changed += (number == changedLine ? text + "\r" : line) + "\n";
    }
    WriteBytes(files_.InputPath(), changed);
    EXPECT_EQ(Solve(), exit) << message;
    EXPECT_THAT(err_.str(), HasSubstr(message));
    EXPECT_EQ(FileBytes(files_.lastRun) == "former", exit != converged);
    EXPECT_THAT(Report(), HasSubstr(exit == converged ? "Result: converged" : "Result: NOT RUN"));
  }
  std::filesystem::remove(files_.InputPath());
  EXPECT_EQ(Solve(), unreadable);
  EXPECT_EQ(err_.str(),
            "Cannot read the data file '" + files_.InputPath() + "': No such file or directory.\n");
}

TEST_F(Run, CollectsAllFaultsInTheReport) {
  Use(ExampleRecord("Ex-Yzero.101", "6=0 21; 8=a b c d e f g h i j k l m n o p q r s t u; 12=0"));
  EXPECT_EQ(Solve(), Exit::faultyAnswers);
  EXPECT_THAT(Report(), HasSubstr("Result: NOT RUN: 23 faults in the answers\r\n"));
  EXPECT_THAT(
      Report(),
      HasSubstr(
          "Question 8 (pole pairs, real): \"t\" is not a number (decimal point, no comma).\r\n"
          "... and 3 more."));
  EXPECT_EQ(err_.str(),
            "Question 8 (pole pairs, real): \"a\" is not a number (decimal point, no comma).\n");
  EXPECT_EQ(out_.str(),
            "pfit: NOT RUN: 23 faults in the answers\n"
            "pfit-end: exit=2 warnings=0 faults=23\n");
}

TEST_F(Run, StopsWhereItIsTold) {
  Use(ExampleRecord("Ex-Yzero.101", "S1=5 10 7; S6=20"));
  EXPECT_EQ(Solve(), Exit::stopped);
  EXPECT_THAT(Report(), HasSubstr("Result: stopped at EVALMAX; best point found is given"));
  EXPECT_THAT(Report(), HasSubstr("evaluations          20 of 20 at most"));
  Use(ExampleRecord("Ex-Zpair.1", "S1=2 10 7; S4=1; S6=60"));
  EXPECT_EQ(Solve(), Exit::stopped);
  EXPECT_THAT(Report(), HasSubstr("Result: stopped at STEPSLIM; best point found is given"));
  EXPECT_EQ(Solve(0, 1), Exit::stopped);
  EXPECT_THAT(out_.str(), HasSubstr(", 1 evaluations\npfit-end: exit=1 F="));
  EXPECT_EQ(Solve(20, 1), Exit::stopped);
  EXPECT_THAT(out_.str(), HasSubstr("pfit: stopped on request; best point found is given; rms"));
  EXPECT_THAT(Report(), EndsWith("End of report.\r\n"));
}

TEST_F(Run, WritesNothingAfterASecondRequest) {
  WriteBytes(files_.lastRun, "former");
  EXPECT_EQ(Solve(30, 2), Exit::stopped);
  EXPECT_THAT(Outputs(), UnorderedElementsAre("last-run.ini"));
  EXPECT_EQ(FileBytes(files_.lastRun), "former");
}

TEST_F(Run, SaysThatNoStartGivesAFiniteError) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101", "1=N; 2=1000; 8=.01 .4 .3; 23=20");
  record.nFreqPoints = 20;
  Use(record);
  EXPECT_EQ(Solve(), Exit::noFiniteError);
  EXPECT_THAT(Report(), HasSubstr("No start gave a finite error; check the initial pole and zero "
                                  "values.\r\nWarning: Question 8"));
  EXPECT_THAT(Report(), HasSubstr("Result: no start gave a finite error\r\n"));
}

TEST_F(Run, LosesNothingOnAFullDisk) {
  Solve();
  const std::string former = FileBytes(files_.lastRun);
  Exit exit = Exit::unwritable;
  int fullAt = 1;
  for (; fullAt < 2000; fullAt += 29) {
    ScriptedHost full;
    full.Fail("WriteLine", error_number::kDiskFull, fullAt, 1000);
    exit = SolveFile(full, files_, {out_, err_, [] { return 0; }}).exit;
    if (exit != Exit::unwritable) break;
    EXPECT_EQ(FileBytes(files_.lastRun), former);
    EXPECT_THAT(Outputs(), UnorderedElementsAre("last-run.ini"));
    EXPECT_THAT(err_.str(), EndsWith("': Disk full.\n"));
  }
  EXPECT_EQ(exit, Exit::converged);
  EXPECT_GT(fullAt, 150);  // the disk was full within the report and within the last-run file
}

TEST_F(Run, KeepsOtherRunsOut) {
  auto lock = host_.TakeLock(files_.lock, std::chrono::milliseconds(0));
  ASSERT_TRUE(lock);
  EXPECT_EQ(Solve(), Exit::locked);
  EXPECT_EQ(out_.str(),
            "pfit: another run is using the output folder\n"
            "pfit-end: exit=7 warnings=0 faults=0\n");
  EXPECT_THAT(err_.str(), StartsWith("Another run is using '"));
  lock.reset();
  EXPECT_EQ(Solve(), Exit::converged);
  std::filesystem::remove_all(host_.Path("base"));
  EXPECT_EQ(Solve(), Exit::unwritable);
  EXPECT_EQ(err_.str(), "Cannot write into '" + host_.Path("base/Tessel.hz") +
                            "': No such file or directory.\n");
}

TEST_F(Run, PutsASecondRunWithinATenthOfAPercent) {
  const auto cost = [this] {
    Solve();
    return std::stod(Report().substr(Report().find("cost F") + 6, 40));
  };
  for (const char* const example : {"Ex-Yzero.101", "Ex-Zpair.1", "Ex-Delay.111"}) {
    Use(ExampleRecord(example));
    const double first = cost();
    WriteBytes(files_.InputPath(), FileBytes(files_.lastRun));
    EXPECT_NEAR(cost() / first, 1, .001);
  }
}

TEST_F(Run, ShowsTheWorstRowsOfLongTables) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101", "S6=20");
  RepeatPoints(record, 4000);
  record.passband.At(1234, 3) = "9";
  Use(record);
  Solve();
  EXPECT_THAT(Report(), HasSubstr("Of 4000 rows the 200 worst and one in 4;"));
  EXPECT_THAT(Report(), HasSubstr("\r\n 1234 "));
  EXPECT_THAT(Report(), ::testing::Not(HasSubstr("\r\n 1236 ")));
  SolveFile(host_, files_, {out_, err_, [] { return 0; }}, true);
  EXPECT_THAT(Report(), HasSubstr("\r\n 1236 "));
}

TEST_F(Run, SendsNoControlCharactersToTheTerminal) {
  Use(ExampleRecord("Ex-Delay.101", "5=\x1B[2J\xC2\x9B 1"));
  Solve();
  EXPECT_THAT(err_.str(), HasSubstr("\"?[2J? 1\" is not a number"));
}

TEST_F(Run, SaysThatNoDataFileWasChosen) {
  files_ = FilesOfCall("", host_.Path("base").substr(0, 2));
  EXPECT_EQ(Solve(), Exit::unreadable);
  EXPECT_THAT(Report(), HasSubstr("Result: NOT RUN: no data file was chosen\r\n"));
}

TEST_F(Run, TakesTheFrontEndsFourWordsWhateverTheyBeginWith) {
  const std::string base = host_.Path("base");
  const std::string data = host_.Path("data");
  const std::string drive = base.substr(0, 2);
  const auto parse = [&](std::vector<std::string> words) { return ParseCommandLine(words, host_); };
  EXPECT_EQ(FilesOfCall("a.101", drive).report, base + "/Tessel.hz/~pft-out.txt");
  EXPECT_EQ(FilesOfCall("--json", drive).InputPath(), data + "/--json");
  EXPECT_EQ(parse({"x.dat", data + "/gone", base, drive}).action, Request::Action::run);
  const std::vector<std::string> others[] = {{"x.dat", data, base, "c:"},
                                             {"x.dat", data, base + "/gone", drive},
                                             {"x.dat", data + "/x.dat", base, drive},
                                             {"x.dat", data, data + "/x.dat", drive}};
  for (const auto& words : others) EXPECT_EQ(parse(words).action, Request::Action::usage);
}

TEST(CommandLineOfTheSolver, TakesOptionsAndFiles) {
  ConsoleHost host;
  const auto parse = [&](std::vector<std::string> words) { return ParseCommandLine(words, host); };
  EXPECT_EQ(parse({"d/a.101"}).files.at(0).report, "d/a.101.out.txt");
  EXPECT_EQ(parse({"a.101"}).files.at(0).lastRun, "./a.101.last-run.ini");
  EXPECT_EQ(parse({"/a.101", "--out", "/o"}).files.at(0).report, "/o/a.101.out.txt");
  EXPECT_EQ(parse({"--out", "/o", "--", "--a"}).files.at(0).report, "/o/--a.out.txt");
  EXPECT_TRUE(parse({"--json", "a", "--all-rows"}).json);
  const Request summary = parse({"a", "--jobs", "3", "--summary", "b", "c"});
  EXPECT_EQ(summary.action, Request::Action::summary);
  EXPECT_EQ(summary.names, (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(summary.jobs, 3);
  const Request orders = parse({"--orders", "3-12", "a", "--json"});
  EXPECT_EQ(orders.action, Request::Action::orders);
  EXPECT_EQ(std::pair(orders.fewestPoles, orders.mostPoles), std::pair(3, 12));
  for (const char* const words :
       {"", "d/", "--wrong", "-x a", "a b", "a b c", "a b c d", "a --out", "a --csv", "a --jobs 2",
        "--summary", "--summary --jobs 0 a", "--summary --json a", "--orders 5-3 a",
        "--orders 3- a", "--orders 3-5 a b", "--orders 3-5 --out o a", "--help a"}) {
    EXPECT_EQ(parse(Words(words)).action, Request::Action::usage) << words;
  }
  EXPECT_EQ(parse({""}).action, Request::Action::usage);
  EXPECT_EQ(parse({"a", "--out", ""}).action, Request::Action::usage);
}

}  // namespace
}  // namespace polefit::testing
