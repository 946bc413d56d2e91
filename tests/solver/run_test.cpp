#include "solver/run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "platform/error_of.h"
#include "platform/scripted_host.h"
#include "platform/text.h"
#include "responsefile/writer.h"
#include "solver/example_problem.h"
#include "solver/program_folder.h"

namespace polefit {
namespace {

using ::testing::ContainsRegex;
using ::testing::EndsWith;
using testing::FileBytes;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;
using testing::WriteBytes;

/// The front end's folders with one data file in them.
class Run : public ::testing::Test {
 protected:
  Run() {
    std::filesystem::create_directories(host_.Path("base/Tessel.hz"));
    std::filesystem::create_directory(host_.Path("data"));
    files_ = ParseCommandLine({"x.dat", host_.Path("data"), host_.Path("base"), "/h"}).files;
    Use(ExampleRecord("Ex-Delay.101"));
  }

  void Use(ResponseRecord record) {
    ConsoleHost writer;
    WriteResponseFile(writer, record, {host_.Path("data"), "x.dat"});
  }
  void UseSettings(const std::array<std::string, kSolverValueCount>& settings) {
    ResponseRecord record = ExampleRecord("Ex-Yzero.101");
    record.solver = settings;
    Use(record);
  }

  Exit Solve() {
    out_.str("");
    err_.str("");
    return RunSolver(host_, files_, {out_, err_, [this] { return requests_; }});
  }

  std::string Report() const { return FromWindows1252(FileBytes(files_.report)); }
  std::vector<std::string> Outputs() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(host_.Path("base/Tessel.hz"))) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  testing::ScriptedHost host_;
  RunFiles files_;
  int requests_ = 0;
  std::ostringstream out_;
  std::ostringstream err_;
};

std::string WithoutSeconds(const std::string& report) {
  const std::size_t begin = report.find("Made");
  return report.substr(0, begin) + report.substr(report.find("\r\n", begin));
}

TEST_F(Run, LeavesAReportAndTheAnswersAndNothingElse) {
  EXPECT_EQ(Solve(), Exit::converged);
  EXPECT_THAT(Outputs(), UnorderedElementsAre("~pft-out.txt", "last-run.ini"));
  EXPECT_THAT(out_.str(), EndsWith("pfit: converged (6 of 6 starts agree); rms error 3.088e-03, "
                                   "99 evaluations\n"));
  EXPECT_EQ(err_.str(), "");
  EXPECT_THAT(Report(), EndsWith("\r\nEnd of report.\r\n"));
  const std::string first = Report();
  EXPECT_EQ(Solve(), Exit::converged);
  EXPECT_EQ(WithoutSeconds(Report()), WithoutSeconds(first));
  std::istringstream lines(Report());
  for (std::string line; std::getline(lines, line);) EXPECT_LE(CharacterCount(line), 80U) << line;
}

TEST_F(Run, ChangesNothingInTheLastRunButTheLocationsAndTheGain) {
  const ResponseRecord before = ExampleRecord("Ex-Delay.101");
  Solve();
  ResponseRecord after;
  std::string name;
  std::string folder;
  host_.OpenForReading(files_.lastRun);
  ReadResponse(host_, after, name, folder);
  host_.CloseFile();
  EXPECT_EQ(name, "x.dat");
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

struct ReadCase {
  int line;  ///< counts from 1; 0 for the end of the file
  std::string text;
  Exit exit;
  std::string message;
};

TEST_F(Run, TellsWhatIsWrongWithTheFile) {
  const std::string whole = FileBytes(files_.InputPath());
  WriteBytes(files_.lastRun, "former");
  const ReadCase cases[] = {
      {24, "x", Exit::faultyAnswers,
       "Question 23 (number of passband points): \"x\" is not a whole number from 0 to 32767."},
      {24, "-1", Exit::faultyAnswers, "\"-1\" is not a whole number from 0 to 32767."},
      {24, "32767", Exit::faultyAnswers, "32767 points are one more than fit."},
      {24, "99999", Exit::faultyAnswers, "\"99999\" is not a whole number"},
      {24, "25", Exit::faultyAnswers,
       "is not a whole number from 0 to 32767 (is the passband point count, 25, right?)."},
      {48, "2.5", Exit::faultyAnswers, "(is the passband point count, 21, right?)."},
      {19, "", Exit::unreadable, "The data file ends at line 18, before answer line 19."},
      {2, "N", Exit::converged, ""},
  };
  for (const ReadCase& one : cases) {
    std::istringstream lines(whole);
    std::string changed;
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
      if (number == one.line && one.text.empty()) break;
      changed += number == one.line ? one.text + "\r" : line;
      changed += '\n';
    }
    WriteBytes(files_.InputPath(), changed);
    EXPECT_EQ(Solve(), one.exit) << one.message;
    EXPECT_THAT(err_.str(), HasSubstr(one.message));
    EXPECT_EQ(FileBytes(files_.lastRun) == "former", one.exit != Exit::converged);
    EXPECT_THAT(Report(), ContainsRegex(one.exit == Exit::converged ? "Result: converged"
                                                                    : "Result: NOT RUN"));
  }
  std::filesystem::remove(files_.InputPath());
  EXPECT_EQ(Solve(), Exit::unreadable);
  EXPECT_EQ(err_.str(),
            "Cannot read the data file '" + files_.InputPath() + "': No such file or directory.\n");
}

TEST_F(Run, CollectsAllFaultsInTheReport) {
  ResponseRecord record = ExampleRecord("Ex-Yzero.101");
  for (int row = 1; row <= record.nFreqPoints; ++row) record.passband.At(row, 2) = "x";
  record.Slot(slot::kGain) = "0";
  Use(record);
  EXPECT_EQ(Solve(), Exit::faultyAnswers);
  EXPECT_THAT(Report(), HasSubstr("Result: NOT RUN: 22 faults in the answers\r\n"));
  EXPECT_THAT(Report(),
              HasSubstr("Passband point 20: Yin \"x\" is not a number.\r\n... and 2 more."));
  EXPECT_EQ(err_.str(), "Passband point 1: Yin \"x\" is not a number.\n");
}

TEST_F(Run, StopsWhereItIsTold) {
  UseSettings({"5 10 7", "0 0 0", "", "100", "10", "20", "1", "16", ".0001"});
  EXPECT_EQ(Solve(), Exit::stopped);
  EXPECT_THAT(Report(), HasSubstr("Result: stopped at EVALMAX; best point found is given"));
  EXPECT_THAT(Report(), HasSubstr("evaluations          20 of 20 at most"));
  UseSettings({"2 10 7", "0 0 0", "", "3", "10", "2000", "1", "16", ".0001"});
  EXPECT_EQ(Solve(), Exit::stopped);
  EXPECT_THAT(Report(), HasSubstr("Result: stopped at STEPSLIM; best point found is given"));
  requests_ = 1;
  EXPECT_EQ(Solve(), Exit::stopped);
  EXPECT_THAT(out_.str(), EndsWith(", 1 evaluations\n"));
  requests_ = 0;
  int asked = 0;
  const Console console = {out_, err_, [&asked] { return ++asked > 30 ? 1 : 0; }};
  EXPECT_EQ(RunSolver(host_, files_, console), Exit::stopped);
  EXPECT_THAT(out_.str(), HasSubstr("pfit: stopped on request; best point found is given; rms"));
  EXPECT_THAT(Report(), EndsWith("End of report.\r\n"));
}

TEST_F(Run, WritesNothingAfterASecondRequest) {
  WriteBytes(files_.lastRun, "former");
  int asked = 0;
  const Console console = {out_, err_, [&asked] { return ++asked > 30 ? 2 : 0; }};
  EXPECT_EQ(RunSolver(host_, files_, console), Exit::stopped);
  EXPECT_THAT(Outputs(), UnorderedElementsAre("last-run.ini"));
  EXPECT_EQ(FileBytes(files_.lastRun), "former");
}

TEST_F(Run, SaysThatNoStartGivesAFiniteError) {
  ResponseRecord record = ExampleRecord("Ex-Delay.101");
  record.nFreqPoints = 20;
  record.Slot(slot::kFreqPoints) = "20";
  record.Slot(slot::kIPower) = "1000";
  record.Slot(slot::kEqualDelay) = "N";
  Use(record);
  EXPECT_EQ(Solve(), Exit::noFiniteError);
  EXPECT_THAT(Report(), HasSubstr("No start gave a finite error; check the initial pole and zero "
                                  "values."));
}

TEST_F(Run, LosesNothingOnAFullDisk) {
  Solve();
  const std::string former = FileBytes(files_.lastRun);
  const int lines = static_cast<int>(std::count(former.begin(), former.end(), '\n')) +
                    static_cast<int>(Report().size() / 40);
  Exit exit = Exit::unwritable;
  int fullAt = 1;
  for (; exit == Exit::unwritable && fullAt < 20 * lines; fullAt += 29) {
    testing::ScriptedHost full;
    full.Fail("WriteLine", error_number::kDiskFull, fullAt, 1000);
    exit = RunSolver(full, files_, {out_, err_, [] { return 0; }});
    if (exit != Exit::unwritable) break;
    EXPECT_EQ(FileBytes(files_.lastRun), former);
    EXPECT_THAT(Outputs(), UnorderedElementsAre("last-run.ini"));
    EXPECT_THAT(err_.str(), EndsWith("': Disk full.\n"));
  }
  EXPECT_EQ(exit, Exit::converged);
  EXPECT_GT(fullAt, 150);  // the disk was full within the report and within the last-run file
}

TEST_F(Run, KeepsOtherRunsOut) {
  {
    const auto lock = RunLock::Take(files_.lock);
    ASSERT_TRUE(lock);
    EXPECT_EQ(Solve(), Exit::locked);
    EXPECT_THAT(err_.str(), StartsWith("Another run is using '"));
  }
  EXPECT_EQ(Solve(), Exit::converged);
  std::filesystem::remove_all(host_.Path("base"));
  EXPECT_EQ(Solve(), Exit::unwritable);
  EXPECT_EQ(err_.str(), "Cannot write into '" + host_.Path("base/Tessel.hz") +
                            "': No such file or directory.\n");
}

TEST_F(Run, PutsASecondRunWithinATenthOfAPercent) {
  for (const char* const example : {"Ex-Yzero.101", "Ex-Zpair.1", "Ex-Delay.111"}) {
    Use(ExampleRecord(example));
    Solve();
    const std::string first = Report();
    std::filesystem::copy_file(files_.lastRun, files_.InputPath(),
                               std::filesystem::copy_options::overwrite_existing);
    Solve();
    const auto cost = [](const std::string& report) {
      return std::stod(report.substr(report.find("cost F") + 6, 40));
    };
    EXPECT_NEAR(cost(Report()) / cost(first), 1, .001);
  }
}

TEST(CommandLineOfTheSolver, TakesTheFrontEndsWordsOrAFile) {
  using Action = Request::Action;
  EXPECT_EQ(ParseCommandLine({"a.101", "/d", "/b", "c:"}).files.report,
            "/b/Tessel.hz/~pft-out.txt");
  EXPECT_EQ(ParseCommandLine({"--a", "--d", "--b", "--"}).files.InputPath(), "--d/--a");
  EXPECT_EQ(ParseCommandLine({"d/a.101"}).files.report, "d/a.101.out.txt");
  EXPECT_EQ(ParseCommandLine({"a.101"}).files.lastRun, "./a.101.last-run.ini");
  EXPECT_EQ(ParseCommandLine({"/a.101", "--out", "/o"}).files.report, "/o/a.101.out.txt");
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{},
                                             {"--wrong"},
                                             {"a", "b"},
                                             {"a", "--out"},
                                             {"a", "--in", "o"},
                                             {"a", "b", "c"},
                                             {"d/"}}) {
    EXPECT_EQ(ParseCommandLine(words).action, Action::usage);
  }
}

}  // namespace
}  // namespace polefit
