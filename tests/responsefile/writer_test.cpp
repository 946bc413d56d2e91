#include "responsefile/writer.h"

#include <gtest/gtest.h>

#include "form/question_catalogue.h"
#include "platform/error_of.h"
#include "platform/scripted_host.h"
#include "platform/text.h"

namespace polefit {
namespace {

using testing::ErrorOf;
using testing::FileBytes;
using testing::ScriptedHost;

ResponseRecord SmallRecord() {
  ResponseRecord record;
  record.Slot(slot::kEqualDelay) = "N";
  record.Slot(slot::kTmin) = "76.7";
  record.Slot(slot::kNPoles) = "1  4";
  record.Slot(slot::kZeroCounts) = "0 0 0";
  record.Slot(slot::kFreqPoints) = "whatever: the rows count";
  record.passband.Resize(3);
  const char* const cells[] = {"1.0", "0.5", "0.5", "1", "2", "", "é", ""};
  for (int i = 0; i < 8; ++i) record.passband.At(1 + i / 4, 1 + i % 4) = cells[i];
  record.delay.Resize(2);
  record.delay.At(1, 1) = "3";
  record.delay.At(1, 2) = "44.5";
  record.nFreqPoints = 2;
  record.nDelayPoints = 1;
  record.Note1 = "a note";
  record.solver[0] = "5 10 7";
  record.solver[8] = ".0001";
  return record;
}

class WriterTest : public ::testing::Test {
 protected:
  std::string Written(ResponseRecord& record, const std::string& name) {
    WriteResponseFile(host_, record, {host_.Root(), name});
    return FileBytes(host_.Path(name));
  }

  ScriptedHost host_;
};

TEST_F(WriterTest, WritesEveryLineToTheByte) {
  ResponseRecord record = SmallRecord();
  const std::string expected =
      "Run1.txt\t\t! 22, 2, and 9          March 03, 2004 @ 9:05 AM\r\n"
      "N\t\t! 1. » Equalize Group Delay?\r\n"
      "76.7\t\t! 1a. » Desire a specific group delay value, Tmin?  \r\n"
      "-999\t\t! 1b. » Power for weighting Delay's flat fit; ie. 'D\r\n"
      "-999\t\t! 2. » 'Ipower' value for Passband Error=Error / (Yo\r\n"
      "-999\t\t! 3. » Want ERROR array weighted; i.e. Error_i = Err\r\n"
      "-999\t\t! 4. » Weight importance of Magnitude fit vs. Group \r\n"
      "-999\t\t! 5. » Freq Norm ... upper passband Frequency limit \r\n"
      "1  4\t\t! 6. » No. of Poles on Sigma axis and pairs; e.g. 0 \r\n"
      "-999\t\t! 7. » Sigma-axis Pole ... REAL value?\r\n"
      "-999\t\t! 8. » Pole pairs ... REAL values?\r\n"
      "-999\t\t! 9. »                  ... IMAGINARY values?\r\n"
      "-999\t\t! 10. » Want a -Zero- on the Sigma-axis?\r\n"
      "-999\t\t! 10a. » Sigma Zero -initial- value?\r\n"
      "-999\t\t! 10b. » Is Sigma Zero a 'Doublet'?\r\n"
      "-999\t\t! 10c. » Is Sigma Zero 'Lossless'?\r\n"
      "0 0 0\t\t! 11. »  No. of Zero types; ie. S. omega axis, P. pa\r\n"
      "-999\t\t! 11a »  Omega-axis Zero ... IMAGINARY values (>= 1.\r\n"
      "-999\t\t! 11b »  Zero pairs then quads ... REAL values?\r\n"
      "-999\t\t! 11c »                                     ... IMAG\r\n"
      "-999\t\t! 12. »  Initial GAIN value for H(s)?\r\n"
      "-999\t\t! 13. »  Smallest |Sigma-axis value| for Poles and  \r\n"
      "-999\t\t! 14. »  Max. |Omega-axis| and -|Sigma-axis| paramet\r\n"
      " 2\t\t! 23. »  # of Freq. points, nFreqPoints, not a user \r\n"
      "Freq       Yin          Yout           Weight\r\n"
      "===========================================\r\n"
      "1.0  0.5  0.5  1\t\t ! Point #  1 \r\n"
      "2    é  \t\t ! Point #  2 \r\n"
      " 1\t\t! \r\n"
      "       DelFreq          TX\r\n"
      "  ==============================\r\n"
      "3  44.5\t\t ! Point #  1 \r\n"
      "a note\t\t! 20. » Note1\r\n"
      "-999\t\t!     » Note2\r\n"
      "Y\t\t! 22. » Want to change solver variables?\r\n"
      "5 10 7\t\t! 1. » REMAX: Maximum iterations for 3 nested solver\r\n"
      "-999\t\t! 2. »  DETAIL: Detailed report every Nth iteration \r\n"
      "-999\t\t! 3. » ZERO: Iteration convergent tolerance (f\r\n"
      "-999\t\t! 4. » STEPSLIM: Limit # of steps per iteration (for\r\n"
      "-999\t\t! 5. » STEPOUT: Provides snapshot print\r\n"
      "-999\t\t! 6. » EVALMAX: Limit total # of mo\r\n"
      "-999\t\t! 7. » SETRHO: 1=> Newton-Raphson method; and,      \r\n"
      "-999\t\t! 8. » RATIO: Factor used to reduce RHO between succ\r\n"
      ".0001\t\t! 9. » ACCURACY: Final conver\r\n";
  EXPECT_EQ(FromWindows1252(Written(record, "Run1.txt")), expected);
  EXPECT_EQ(record.solverCount, 9);
}

TEST_F(WriterTest, LeavesTheSolverValuesOutWhenTheFirstThreeAreEmpty) {
  ResponseRecord record = SmallRecord();
  record.solver[0].clear();
  const std::string bytes = Written(record, "x");
  EXPECT_EQ(record.solverCount, 0);
  EXPECT_TRUE(bytes.ends_with("N\t\t! 22. \xBB Want to change solver variables?\r\n"));
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 32 + 2 + 1);
}

TEST_F(WriterTest, TheHeaderLosesItsEndAfterFiftyCharacters) {
  class AutumnHost : public ScriptedHost {
    std::string FormatNow(const char* /*pattern*/) override {
      return "September 03, 2004 @ 10:05 AM";
    }
  } host;
  ResponseRecord record = SmallRecord();
  WriteResponseFile(host, record, {host.Root(), "x"});
  const std::string bytes = FileBytes(host.Path("x"));
  EXPECT_EQ(bytes.substr(0, bytes.find('\r')),
            "x\t\t! 22, 2, and 9          September 03, 2004 @ 10:05 A");
}

TEST_F(WriterTest, TheStartUpStateFileKeepsTheNameOfTheFileThatWasOpen) {
  ResponseRecord record = SmallRecord();
  record.LastFileName = "Ex-a.1";
  const std::string path = host_.Path("last-run.ini");
  WriteResponseFile(host_, record, {"/nowhere", path, path});
  EXPECT_TRUE(FileBytes(path).starts_with("Ex-a.1\t\t! 22, "));
  record.LastFileName.clear();
  WriteResponseFile(host_, record, {"/nowhere", path, path});
  EXPECT_TRUE(FileBytes(path).starts_with("-999\t\t! 22, "));
}

TEST_F(WriterTest, AnErrorPartWayLeavesBothFilesAndReachesTheCaller) {
  ResponseRecord record = SmallRecord();
  const std::string former = Written(record, "x");
  record.nFreqPoints = 4;
  EXPECT_EQ(ErrorOf([&] { Written(record, "x"); }), 9);
  EXPECT_EQ(FileBytes(host_.Path("x~")), former);
  EXPECT_TRUE(FileBytes(host_.Path("x")).ends_with("Point #  3 \r\n"));
  record.nFreqPoints = 2;
  EXPECT_EQ(Written(record, "x"), former);
  EXPECT_EQ(host_.LookUpFile(host_.Path("x~")), "");
}

}  // namespace
}  // namespace polefit
