#include "responsefile/reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/error_of.h"
#include "platform/scripted_host.h"

namespace polefit {
namespace {

using ::testing::ElementsAre;
using testing::ErrorOf;
using testing::ScriptedHost;
using testing::WriteBytes;

/// A file of the reader's shape with these blocks; slot k reads "answer k".
std::string FileText(const std::string& name, const std::string& pointCount,
                     const std::vector<std::string>& points, const std::string& delayCount,
                     const std::vector<std::string>& delays, const std::string& tail) {
  std::string text = name + "\t\t! header\r\n";
  for (int k = 1; k <= 22; ++k) text += "answer " + std::to_string(k) + "\t\t! question\r\n";
  text += pointCount + "\t\t! points\r\nany\r\nheader\r\n";
  for (const std::string& row : points) text += row + "\r\n";
  text += delayCount + "\t\t! \r\n\r\n\r\n";
  for (const std::string& row : delays) text += row + "\r\n";
  return text + tail;
}

const std::string kTail = "note 1\r\nnote 2\r\nN\r\n";

class ReaderTest : public ::testing::Test {
 protected:
  int Read(const std::string& text, ShortRow shortRow = ShortRow::fails) {
    WriteBytes(host_.Path("x"), text);
    host_.OpenForReading(host_.Path("x"));
    const int error =
        ErrorOf([&] { ReadResponse(host_, record_, name_, lastUsedFolder_, shortRow); });
    host_.CloseFile();
    return error;
  }
  int ReadCount(const std::string& count) { return Read(FileText("x", count, {}, "0", {}, kTail)); }

  ScriptedHost host_;
  ResponseRecord record_;
  std::string name_;
  std::string lastUsedFolder_;
};

TEST_F(ReaderTest, FillsTheRecord) {
  const std::string text = FileText(
      "C:\\data\\run1.txt", "2.4", {"1,0.5,0.5,1 ! Point", "  2  .3   .4  1  more "}, " 1",
      {"3\t 44.5\t\t ! Point #  1 "}, "note\t1!\r\n-999\r\nY\t\t!\r\n1\n2\n3\n4\n5\n6\n7\n8\n9");
  EXPECT_EQ(Read(text), 0);
  EXPECT_EQ(name_, "C:\\data\\run1.txt");
  EXPECT_EQ(record_.LastFileName, "run1.txt");
  EXPECT_EQ(lastUsedFolder_, "C:\\data");
  EXPECT_EQ(record_.Slot(1), "answer 1");
  EXPECT_EQ(record_.Slot(22), "answer 22");
  EXPECT_EQ(record_.Slot(23), "2.4");
  EXPECT_EQ(record_.nFreqPoints, 2);
  EXPECT_EQ(record_.passband.RowsOf(1), 3);
  EXPECT_EQ(record_.passband.At(1, 4), "1");
  EXPECT_EQ(record_.passband.At(2, 2), ".3");
  EXPECT_EQ(record_.delay.At(1, 2), "44.5");
  EXPECT_EQ(record_.Note1, "note1");
  EXPECT_EQ(record_.Note2, "");
  EXPECT_THAT(record_.solver, ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
  EXPECT_EQ(record_.solverCount, 9);
}

TEST_F(ReaderTest, OnlyACapitalYBringsSolverValues) {
  record_.solver.fill("old");
  EXPECT_EQ(Read(FileText("x", "0", {}, "0", {}, "\r\n\r\ny\r\n1\r\n2")), 0);
  EXPECT_EQ(record_.solverCount, 0);
  EXPECT_THAT(record_.solver, ::testing::Each(""));
}

TEST_F(ReaderTest, CountsAreTakenWithTheSpareRow) {
  const std::tuple<const char*, int, int> cases[] = {
      {"x", 0, 0},     {"-999", 0, 0},    {"0.4", 0, 0},   {"-1", 9, 0},    {"-0.5", 9, 0},
      {"32767", 6, 0}, {"32766.5", 6, 0}, {"1e400", 6, 0}, {"-40000", 6, 0}};
  for (const auto& [count, error, points] : cases) {
    EXPECT_EQ(ReadCount(count), error) << count;
    EXPECT_EQ(record_.nFreqPoints, points) << count;
  }
  for (const char* const count : {"0.5", "1.5"}) {
    EXPECT_EQ(ReadCount(count), 9) << "the next line is taken as a row";
    EXPECT_EQ(record_.nFreqPoints, 1) << count;
  }
  EXPECT_EQ(ReadCount("32766"), 9) << "the next line is taken as a row";
  EXPECT_EQ(record_.passband.RowsOf(4), 32767);
}

TEST_F(ReaderTest, ATooSmallCountReadsTheRestOneLineLate) {
  EXPECT_EQ(Read(FileText("x", "1", {"1 2 3 4", "5 6 7 8"}, "1", {"1 2"}, kTail)), 9);
  EXPECT_EQ(record_.Slot(24), "5 6 7 8");
  EXPECT_EQ(record_.nDelayPoints, 5678);
}

TEST_F(ReaderTest, AShortRowStopsButKeepsWhatWasReadBefore) {
  record_.Note1 = "former";
  const std::string text = FileText("x", "2", {"1 2 3 4", "5 6 7"}, "1", {"8"}, kTail);
  EXPECT_EQ(Read(text), 9);
  EXPECT_EQ(record_.passband.At(1, 4), "4");
  EXPECT_EQ(record_.passband.At(2, 3), "7");
  EXPECT_EQ(record_.passband.At(2, 4), "");
  EXPECT_EQ(record_.Note1, "former");
  EXPECT_EQ(Read(text, ShortRow::isKept), 0);
  EXPECT_EQ(record_.passband.At(2, 4), "");
  EXPECT_EQ(record_.delay.At(1, 1), "8");
  EXPECT_EQ(record_.Note1, "note 1");
}

TEST_F(ReaderTest, FileReadMeReportsAndGoesOn) {
  FileState files;
  std::string name = "x";
  WriteBytes(host_.Path("x"), "run.txt\r\nY\r\n");
  host_.OpenForReading(host_.Path("x"));
  host_.AnswerBox(Answer::ok);
  FileReadMe(host_, files, record_, name, host_.Root());
  EXPECT_EQ(name, "run.txt");
  EXPECT_EQ(record_.Slot(1), "Y");
  EXPECT_EQ(host_.transcript.back(),
            "MessageBox 16 [In 'FileReadMe' routine ...] Unexpected error # 62 occured: "
            "Input past end of file -> ok");
}

TEST_F(ReaderTest, FileReadMeNamesAMissingFileUnlessItHasNoName) {
  FileState files;
  ResponseRecord former = record_;
  std::string name = "gone";
  host_.AnswerBox(Answer::ok);
  FileReadMe(host_, files, record_, name, host_.Root());
  name.clear();
  FileReadMe(host_, files, record_, name, host_.Root());
  EXPECT_THAT(host_.transcript,
              ElementsAre("MessageBox 48 [ File not found.] Missing 'gone' file? -> ok"));
  EXPECT_EQ(record_, former);
}

}  // namespace
}  // namespace polefit
