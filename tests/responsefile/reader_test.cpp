#include "responsefile/reader.h"

#include <gmock/gmock.h>

#include "base/error_of.h"
#include "platform/scripted_host.h"
#include "responsefile/value_line.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;

using Texts = std::vector<std::string>;

TEST(ValueLine, IsTheTextBeforeTheFirstMark) {
  const std::pair<const char*, const char*> cases[] = {
      {" 12\t\t! 23. x", "12"}, {"  plain  ", "plain"}, {"a!b!c", "a"},      {"!comment", ""},
      {"-999\t\t! x", ""},      {"-999.25\t\t!", ""},   {"-9990", ""},       {"\t-999", "-999"},
      {"5 \t\t! x", "5 "},      {"a\tb", "ab"},         {" \t 5 \t", " 5 "}, {"", ""}};
  for (const auto& [line, value] : cases) EXPECT_EQ(ValueOfLine(line), value) << line;
}

TEST(ValueLine, AListHasSingleBlanksOnly) {
  const std::pair<const char*, const char*> cases[] = {
      {"  1  2   3 ", "1 2 3"}, {",,1, ,2,", "1 2"}, {"1,.5,.5,1", "1 .5 .5 1"},
      {"1,5", "1 5"},           {" , ", ""},         {"", ""}};
  for (const auto& [text, list] : cases) EXPECT_EQ(NormalizeList(text), list) << text;
}

/// A file of the reader's shape with these counts and rows; slot k reads "answer k".
std::string FileText(const std::string& pointCount, const std::string& points,
                     const std::string& delayCount = "0", const std::string& delays = "",
                     const std::string& tail = "note 1\nnote 2\nN\n") {
  std::string text = "C:\\data\\run1.txt\t\t! header\r\n";
  for (int k = 1; k <= 22; ++k) text += "answer " + std::to_string(k) + "\t\t! question\r\n";
  text += pointCount + "\t\t! points\r\nany\r\nheader\r\n" + points;
  return text + delayCount + "\t\t! \r\n\r\n\r\n" + delays + tail;
}

struct ReaderTest : ::testing::Test {
  int Read(const std::string& text, ShortRow shortRow = ShortRow::fails) {
    WriteBytes("x", text);
    host.OpenForReading("x");
    const int error =
        ErrorOf([&] { ReadResponse(host, record, name, lastUsedFolder, {shortRow}); });
    host.CloseFile();
    return error;
  }

  ScriptedHost host;
  ResponseRecord record;
  std::string name = "x";
  std::string lastUsedFolder;
  Files files;
};

TEST_F(ReaderTest, FillsTheRecord) {
  EXPECT_EQ(Read(FileText("2.4", "1,0.5,0.5,1 ! Point\n  2  .3   .4  1  more \n", " 1",
                          "3\t 44.5\t\t ! Point #  1 \n",
                          "note\t1!\r\n-999\r\nY\t\t!\r\n1\n2\n3\n4\n5\n6\n7\n8\n9")),
            0);
  EXPECT_THAT((Texts{name, record.LastFileName, lastUsedFolder, record.Note1, record.Note2}),
              ElementsAre("C:\\data\\run1.txt", "run1.txt", "C:\\data", "note1", ""));
  EXPECT_THAT((Texts{record.Slot(1), record.Slot(22), record.Slot(23), record.passband.At(1, 4),
                     record.passband.At(2, 2), record.delay.At(1, 2)}),
              ElementsAre("answer 1", "answer 22", "2.4", "1", ".3", "44.5"));
  EXPECT_EQ(record.nFreqPoints, 2);
  EXPECT_THAT(record.solver, ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
  EXPECT_EQ(record.solverCount, 9);
}

TEST_F(ReaderTest, OnlyACapitalYBringsSolverValues) {
  record.solver.fill("old");
  EXPECT_EQ(Read(FileText("0", "", "0", "", "\r\n\r\ny\r\n1\r\n2")), 0);
  EXPECT_EQ(record.solverCount, 0);
  EXPECT_THAT(record.solver, ::testing::Each(""));
}

TEST_F(ReaderTest, CountsAreTakenWithTheSpareRow) {
  // Error 9 comes from the count itself, or from the next line when it is taken as a row.
  const std::tuple<const char*, int, int> cases[] = {
      {"x", 0, 0},      {"-999", 0, 0},  {"0.4", 0, 0},     {"-1", 9, 0},
      {"-0.5", 9, 0},   {"32767", 6, 0}, {"32766.5", 6, 0}, {"1e400", 6, 0},
      {"-40000", 6, 0}, {"0.5", 9, 1},   {"1.5", 9, 1},     {"32766", 9, 32766}};
  for (const auto& [count, error, points] : cases) {
    record = {};
    EXPECT_EQ(Read(FileText(count, "")), error) << count;
    EXPECT_EQ(record.nFreqPoints, points) << count;
  }
  EXPECT_EQ(record.passband.RowsOf(4), 32767);
}

TEST_F(ReaderTest, ATooSmallCountReadsTheRestOneLineLate) {
  EXPECT_EQ(Read(FileText("1", "1 2 3 4\n5 6 7 8\n", "1", "1 2\n")), 9);
  EXPECT_EQ(record.Slot(24), "5 6 7 8");
  EXPECT_EQ(record.nDelayPoints, 5678);
}

TEST_F(ReaderTest, AShortRowStopsButKeepsWhatWasReadBefore) {
  record.Note1 = "former";
  const std::string text = FileText("2", "1 2 3 4\n5 6 7\n", "1", "8\n");
  for (const auto& [shortRow, error, note] :
       {std::tuple(ShortRow::fails, 9, "former"), {ShortRow::isKept, 0, "note 1"}}) {
    EXPECT_EQ(Read(text, shortRow), error);
    EXPECT_THAT((Texts{record.passband.At(1, 4), record.passband.At(2, 3), record.passband.At(2, 4),
                       record.Note1}),
                ElementsAre("4", "7", "", note));
  }
  EXPECT_EQ(record.delay.At(1, 1), "8");
}

TEST_F(ReaderTest, FileReadMeReportsAndGoesOn) {
  WriteBytes("x", "run.txt\r\nY\r\n");
  host.OpenForReading("x");
  host.ReplyToBox(Reply::ok);
  FileReadMe(host, files, record, name, host.Root());
  EXPECT_EQ(name, "run.txt");
  EXPECT_EQ(record.Slot(1), "Y");
  EXPECT_EQ(host.transcript.back(),
            "MessageBox 16 [In 'FileReadMe' routine ...] Unexpected error # 62 occured: "
            "Input past end of file -> ok");
}

TEST_F(ReaderTest, FileReadMeNamesAMissingFileUnlessItHasNoName) {
  host.ReplyToBox(Reply::ok);
  for (const char* const missing : {"gone", ""}) {
    name = missing;
    FileReadMe(host, files, record, name, host.Root());
  }
  EXPECT_THAT(host.transcript,
              ElementsAre("MessageBox 48 [ File not found.] Missing 'gone' file? -> ok"));
  EXPECT_EQ(record, ResponseRecord());
}

}  // namespace
}  // namespace polefit::testing
