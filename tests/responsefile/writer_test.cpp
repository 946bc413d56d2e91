#include "responsefile/writer.h"

#include <gmock/gmock.h>

#include "base/error_of.h"
#include "base/text.h"
#include "platform/scripted_host.h"
#include "responsefile/reader.h"

namespace polefit::testing {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct WriterTest : ::testing::Test {
  WriterTest() {
    for (int k = 1; k <= 24; ++k) record.Slot(k) = "answer " + std::to_string(k);
    record.Slot(slot::kSigmaZero).clear();
    record.passband.Resize(3);
    const char* const cells[] = {"1.0", "0.5", "0.5", "1", "2", "", "é", ""};
    for (int i = 0; i < 8; ++i) record.passband.At(1 + i / 4, 1 + i % 4) = cells[i];
    record.delay.Resize(2);
    record.delay.At(1, 1) = "3";
    record.delay.At(1, 2) = "44.5";
    record.nFreqPoints = 2;
    record.nDelayPoints = 1;
    record.Note1 = "a note";
    for (std::size_t i = 0; i < 9; ++i) record.solver[i] = std::to_string(i);
  }

  /// Writes the record; the bytes of the file.
  std::string Written(const std::string& name = "x") {
    WriteResponseFile(host, record, {host.Root(), name});
    return FileBytes(name);
  }
  void Read(const std::string& path) {
    std::string name;
    std::string folder;
    host.OpenForReading(path);
    ReadResponse(host, record, name, folder, {ShortRow::isKept});
    host.CloseFile();
  }

  ScriptedHost host;
  ResponseRecord record;
};

TEST_F(WriterTest, AnExampleComesBackToTheByteUnderANewHeader) {
  const auto afterHeader = [](const std::string& bytes) { return bytes.substr(bytes.find('\n')); };
  for (const std::string name : {"Ex-CNTL.1", "Ex-Delay.112", "Ex-Zpair.1"}) {
    const std::string path = POLEFIT_EXAMPLES "/" + name;
    Read(path);
    EXPECT_EQ(afterHeader(Written(name)), afterHeader(FileBytes(path))) << name;
  }
}

TEST_F(WriterTest, RowsAndAnswersKeepTheirOrderAndAnEmptyCellItsBlanks) {
  EXPECT_THAT(FromWindows1252(Written()), HasSubstr("\r\n1.0  0.5  0.5  1\t\t ! Point #  1 \r\n"
                                                    "2    é  \t\t ! Point #  2 \r\n 1\t\t! \r\n"));
  const ResponseRecord written = record;
  record.slots.fill("");
  Read("x");
  for (int k = 1; k <= 22; ++k) EXPECT_EQ(record.Slot(k), written.Slot(k));
  EXPECT_EQ(record.solver, written.solver);
}

TEST_F(WriterTest, LeavesTheSolverValuesOutWhenTheFirstThreeAreEmpty) {
  for (const std::size_t i : {0, 1, 2}) record.solver[i].clear();
  EXPECT_THAT(Written(), EndsWith("\r\n-999\t\t!     \xBB Note2\r\n"
                                  "N\t\t! 22. \xBB Want to change solver variables?\r\n"));
  EXPECT_EQ(record.solverCount, 0);
}

TEST_F(WriterTest, TheHeaderLosesItsEndAfterFiftyCharacters) {
  struct AutumnHost : ScriptedHost {
    std::string FormatNow(const char*) override { return "September 03, 2004 @ 10:05 AM"; }
  } autumn;
  WriteResponseFile(autumn, record, {autumn.Root(), "x"});
  EXPECT_THAT(FileBytes("x"),
              StartsWith("x\t\t! 22, 2, and 9          September 03, 2004 @ 10:05 A\r\n"));
}

TEST_F(WriterTest, TheStartUpStateFileKeepsTheNameOfTheFileThatWasOpen) {
  const std::string path = host.Path("last-run.ini");
  for (const auto& [name, firstLine] :
       {std::pair("Ex-a.1", "Ex-a.1\t\t! 22, "), {"", "-999\t\t! 22, "}}) {
    record.LastFileName = name;
    WriteResponseFile(host, record, {"/nowhere", path, path});
    EXPECT_THAT(FileBytes(path), StartsWith(firstLine));
  }
}

TEST_F(WriterTest, AnErrorPartWayLeavesBothFilesAndReachesTheCaller) {
  const std::string former = Written();
  record.nFreqPoints = 4;
  EXPECT_EQ(ErrorOf([&] { Written(); }), 9);
  EXPECT_EQ(FileBytes("x~"), former);
  EXPECT_THAT(FileBytes("x"), EndsWith("Point #  3 \r\n"));
  record.nFreqPoints = 2;
  EXPECT_EQ(Written(), former);
  EXPECT_EQ(host.LookUpFile("x~"), "");
}

}  // namespace
}  // namespace polefit::testing
