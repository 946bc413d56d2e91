#include "program/import_command.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "exchange/filter_sweep.h"
#include "platform/scripted_host.h"
#include "responsefile/reader.h"
#include "solver/problem/answers.h"

namespace polefit::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ImportCommandTest : public ::testing::Test {
 protected:
  /// The exit code; what is said stands in `out_` and `error_`.
  int Run(const std::vector<std::string>& words) {
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const int exitCode = ImportCommand(host_, words);
    error_ = ::testing::internal::GetCapturedStderr();
    out_ = ::testing::internal::GetCapturedStdout();
    return exitCode;
  }
  /// Imports with these options behind the file and reads what comes out.
  ResponseRecord Imported(std::vector<std::string> words) {
    words.emplace_back("a.1");
    EXPECT_EQ(Run(words), 0) << error_;
    ResponseRecord record;
    std::string name;
    std::string folder;
    host_.OpenForReading("a.1");
    ReadResponse(host_, record, name, folder);
    host_.CloseFile();
    return record;
  }
  /// "f yin yout weight" of a passband row.
  static std::string Row(const ResponseRecord& record, int row) {
    std::string text;
    for (int column = 1; column <= 4; ++column) {
      text += (column > 1 ? " " : "") + record.passband.At(row, column);
    }
    return text;
  }

  ScriptedHost host_;
  std::string out_;
  std::string error_;
};

TEST_F(ImportCommandTest, ANewProblemComesOutOfAMeasuredFile) {
  std::string sweep = "# MHz S MA R 50\n";
  for (const double f : FilterSweep::Frequencies()) {
    sweep += Format("%.10g 0 0 ", f) + FilterSweep::Pair(FilterSweep::At(f), "MA") + " 0 0 0 0\n";
  }
  WriteBytes("dut.s2p", sweep);
  const ResponseRecord record = Imported({"dut.s2p", "--poles", "1 2"});
  EXPECT_EQ(record.nFreqPoints, 40);
  EXPECT_THAT(Row(record, 1), StartsWith("1.5 1 0.99"));
  EXPECT_EQ(record.Slot(slot::kIPower), "1");
  EXPECT_EQ(record.Slot(slot::kFreqNorm), "21");
  EXPECT_EQ(record.Slot(slot::kNPoles), "1 2");
  EXPECT_EQ(record.Slot(slot::kZeroCounts), "1 0 0");
  EXPECT_EQ(record.Note1, "Points of dut.s2p, S21, 2004-03-03");
  EXPECT_EQ(record.LastFileName, "a.1");
  EXPECT_EQ(record.solverCount, 0);
  EXPECT_EQ(error_, "");
  EXPECT_EQ(Run({"dut.s2p", "-"}), 0);
  EXPECT_THAT(out_, AllOf(StartsWith("dut.1\t\t! 22, 40, and 0"), HasSubstr("N\t\t! 22. \xBB")));
}

TEST_F(ImportCommandTest, OptionsChooseColumnsUnitsAndRows) {
  WriteBytes("x.csv",
             "f;a;b;w;ph;tau\n1000;10;.5;2;-10;1\n2000;11;.25;3;-20;2\n3000;12;.125;4;-30;1\n");
  ResponseRecord record = Imported({"x.csv", "--unit", "kHz", "--yout", "b", "--weight", "4",
                                    "--delay", "tau", "--delay-unit", "us"});
  EXPECT_EQ(Row(record, 2), "2 1 .25 3");
  EXPECT_EQ(record.Slot(slot::kUseWeights), "Y");
  EXPECT_EQ(record.Slot(slot::kEqualDelay), "Y");
  EXPECT_EQ(record.delay.At(1, 2), "1000");
  record = Imported({"x.csv", "--as", "equalise", "--yin", "a", "--yout", "3", "--values", "db",
                     "--unit", "MHz", "--from", "1500"});
  EXPECT_EQ(record.nFreqPoints, 2);
  EXPECT_EQ(Row(record, 1), "2000 3.54813389 1.02920053 1");
  record = Imported({"x.csv", "--yout", "b", "--delay-from-phase", "--angle", "ph", "--normalise"});
  EXPECT_EQ(Row(record, 3), "0.003 1 .25 1");
  EXPECT_EQ(record.nDelayPoints, 3);
  WriteBytes("y.csv", "MHz,gd (ns)\n1,5\n2,9\n");
  record = Imported({"x.csv", "--as", "equalise", "--yin", "b", "--delay-from", "y.csv"});
  EXPECT_EQ(record.delay.At(2, 2), "9");
  WriteBytes("z.s2p", "# MHz RI\n1 0 0 3 4 0 0 0 0\n2 0 0 0 2 1 1 0 0\n");
  record = Imported({"z.s2p", "--parameter", "s12", "--delay-from-phase"});
  EXPECT_EQ(Row(record, 2), "2 1 1.41421356 1");
}

TEST_F(ImportCommandTest, PointsGoIntoAnotherFilesAnswers) {
  WriteBytes("x.csv", "MHz,mag\n1,.5\n3,.25\n");
  ResponseRecord record = Imported({"x.csv", "--poles", "0 3"});
  WriteBytes("y.csv", "MHz,mag\n1,.8\n2,.4\n4,.2\n");
  const std::string before = FileBytes("a.1");
  record = Imported({"y.csv", "--into", "a.1", "--as", "want"});
  EXPECT_EQ(Row(record, 1), "1 1 .8 1");
  EXPECT_EQ(Row(record, 2), "3 1 .282842712 1");
  EXPECT_EQ(record.Slot(slot::kNPoles), "0 3");
  record = Imported({"y.csv", "--into", "a.1", "--as", "equalise", "--grid", "file"});
  EXPECT_EQ(Row(record, 2), "2 .4 .475682846 1");
  EXPECT_THAT(error_, HasSubstr("1 points lie outside of the table"));
  record = Imported({"a.1", "--weight", "Weight"});
  EXPECT_EQ(Row(record, 2), "2 1 .475682846 1");
}

TEST_F(ImportCommandTest, WhatCannotBeTakenIsSaidAndLeavesTheOutputAsItWas) {
  WriteBytes("unsure.csv", "f,a\n1,20\n2,30\n");
  WriteBytes("words.txt", "no numbers\n");
  WriteBytes("good.csv", "MHz,dB\n1,-1\n2,-2\nx\n3,-3\n");
  WriteBytes("torn.1", std::string(23, '\n') + "5\n");
  WriteBytes("out", "former");
  ASSERT_EQ(::mkfifo("pipe", 0600), 0);
  const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
      {{"unsure.csv", "out"}, 1, "--values linear, db, db10, ri or ma"},
      {{"words.txt", "out"}, 1, "fewer than two rows of at least two numbers"},
      {{"good.csv", "out", "--yout", "S21"}, 1, "no column 'S21'; the columns are: 1 'MHz', 2"},
      {{"good.csv", "out", "--parameter", "S21"}, 1, "there is no S21"},
      {{"good.csv", "out", "--delay-from-phase"}, 1, "--angle"},
      {{"good.csv", "out", "--delay-from", "words.txt"}, 1, "delay: fewer than two rows"},
      {{"good.csv", "out", "--from", "2.5"}, 1, "only 1 row is left"},
      {{"pipe", "out"}, 2, "cannot read 'pipe': "},
      {{"gone", "out"}, 3, "cannot read 'gone'"},
      {{"good.csv", "out", "--into", "gone"}, 3, "cannot read 'gone'"},
      {{"good.csv", "out", "--into", "torn.1"}, 2, "cannot read 'torn.1'"},
      {{"good.csv", "no/out"}, 4, "cannot write 'no/out'"},
      {{"good.csv"}, 64, "--help"}};
  for (const auto& [words, exitCode, sentence] : cases) {
    EXPECT_EQ(Run(words), exitCode) << words[0] << " " << sentence;
    EXPECT_THAT(error_, HasSubstr(sentence));
    EXPECT_EQ(out_, "");
  }
  for (const char* const options : {"more", "--what", "--unit", "--unit THz", "--smooth 4",
                                    "--poles two", "--log", "--grid file", "--from 2 --to 1"}) {
    std::vector<std::string> words = Words(options);
    words.insert(words.begin(), {"good.csv", "out"});
    EXPECT_EQ(Run(words), 64) << options;
  }
  EXPECT_EQ(FileBytes("out"), "former");
  host_.Fail("ReplaceFile", 61);
  EXPECT_EQ(Run({"good.csv", "out"}), 4);
  EXPECT_EQ(FileBytes("out"), "former");
  host_.Fail("ReadFile", 71);
  EXPECT_EQ(Run({"good.csv", "out"}), 2);
  EXPECT_EQ(Run({"good.csv", "--", "out"}), 0);
  EXPECT_EQ(error_, "polefit: 1 line skipped: 4\n");
}

}  // namespace
}  // namespace polefit::testing
