#include "form/transfer.h"

#include <gtest/gtest.h>

#include "form/scripted_program.h"
#include "platform/error_of.h"

namespace polefit::testing {
namespace {

struct Transfer : ::testing::Test, ScriptedProgram {
  std::string& Slot(int number) { return program.record.Slot(number); }

  /// A record as a file with `count` points in both grids leaves it.
  void FillRecord(int count) {
    PutAnswers(program);
    Slot(slot::kFreqPoints) = Slot(slot::kDelayPointCount) = std::to_string(count);
    program.record.passband.Resize(count + 1);
    program.record.delay.Resize(count + 1);
    for (int row = 1; row <= count; ++row) {
      for (int column = 1; column <= 4; ++column) program.record.passband.At(row, column) = "1";
      for (int column = 1; column <= 2; ++column) program.record.delay.At(row, column) = "2";
    }
  }
};

TEST_F(Transfer, AFreshFormGivesTheBuiltInAnswers) {
  program.files.currentFileName = "Start Up Values";
  PutAnswers(program);
  const std::array<std::string, kSlotCount> expected = {
      "N",     "76.7",        "-2",          "-2", "N",    "10", "10", "1  4",
      ".02",   ".1 .1 .1 .1", ".2 .3 .4 .5", "N",  ".05",  "N",  "N",  "0 0 0",
      "1.111", ".01",         ".01",         "1",  ".005", "22", " 0", " 0"};
  EXPECT_EQ(program.record.slots, expected);
  EXPECT_EQ(program.record.Note1, "Keep notes for future runs");
  EXPECT_EQ(program.record.Note2, "Your notes go here");
  EXPECT_EQ(program.record.LastFileName, "Start Up Values");
  EXPECT_EQ(program.record.solver[1], "0 0 0");
  EXPECT_EQ(program.DataChanged, 0);
}

TEST_F(Transfer, AnswersTravelAsTheyStandAndADemoKeepsTheFileName) {
  program.record.LastFileName = "before";
  program.RunMode = "Demo";
  form.SetText("tmin", " 1e3 x ");
  form.SetText("nYzeros", "3");
  form.SetText("nZpairs", "");
  form.SetText("nZquads", "1");
  form.SetChecked("chkLossless", true);
  form.SetEnabled("tmin", false);
  form.SetText("Ratio", " 3");
  PutAnswers(program);
  EXPECT_EQ(Slot(slot::kTmin), " 1e3 x ");
  EXPECT_EQ(Slot(slot::kZeroCounts), "3  1");
  EXPECT_EQ(Slot(slot::kLossless), "Y");
  EXPECT_EQ(program.record.solver[7], " 3");
  EXPECT_EQ(program.record.LastFileName, "before");
}

TEST_F(Transfer, OnlyAYTicksABox) {
  FillRecord(0);
  for (const auto& [answer, ticked] : {std::pair("Y", true),
                                       {"y", true},
                                       {"yes", false},
                                       {"1", false},
                                       {" Y", false},
                                       {"", false}}) {
    Slot(slot::kSigmaZeroWanted) = answer;
    GetAnswers(program);
    EXPECT_EQ(form.IsChecked("chkSigmaZero"), ticked) << answer;
    for (const char* dependent : {"sigmaZero", "chkDoublet", "chkLossless"}) {
      EXPECT_EQ(form.IsEnabled(dependent), ticked) << answer << " " << dependent;
    }
    PutAnswers(program);
    EXPECT_EQ(Slot(slot::kSigmaZeroWanted), ticked ? "Y" : "N");
  }
}

TEST_F(Transfer, ZeroCountsAreCutAtEverySingleBlank) {
  struct Case {
    const char* answer;
    const char* boxes[3];
    int error;
  };
  FillRecord(0);
  for (const Case& c : {Case{"2 1 0", {"2", "1", "0"}, 0}, Case{"2  1", {"2", "", "1"}, 0},
                        Case{"1 2 3 4", {"1", "2", "3"}, 0}, Case{"", {"0", "0", "0"}, 0},
                        Case{"7 8", {"7", "8", "kept"}, 9}, Case{"7", {"7", "kept", "kept"}, 9}}) {
    for (const char* box : {"nYzeros", "nZpairs", "nZquads"}) form.SetText(box, "kept");
    Slot(slot::kZeroCounts) = c.answer;
    EXPECT_EQ(ErrorOf([&] { GetAnswers(program); }), c.error) << c.answer;
    EXPECT_EQ(form.Text("nYzeros"), c.boxes[0]) << c.answer;
    EXPECT_EQ(form.Text("nZpairs"), c.boxes[1]) << c.answer;
    EXPECT_EQ(form.Text("nZquads"), c.boxes[2]) << c.answer;
  }
}

TEST_F(Transfer, CountAnswersAreThoseFromBeforeTheReadOutSoTakingTwiceAgrees) {
  FillRecord(12);
  GetAnswers(program);
  form.passData.SetText(9, 3, "");
  form.delayData.SetText(13, 1, "3");
  form.delayData.SetText(13, 2, "3");
  PutAnswers(program);
  EXPECT_EQ(Slot(slot::kFreqPoints), " 12");
  EXPECT_EQ(program.record.nFreqPoints, 8);
  PutAnswers(program);
  EXPECT_EQ(Slot(slot::kFreqPoints), " 8");
  EXPECT_EQ(Slot(slot::kDelayPointCount), " 13");
  EXPECT_EQ(program.record.nFreqPoints, 8);
  EXPECT_EQ(program.record.nDelayPoints, 13);
}

TEST_F(Transfer, TextInTheCellEditorIsTakenToo) {
  FillRecord(3);
  GetAnswers(program);
  program.CurrentGrid = &form.passData;
  program.editedRow = 2;
  program.editedColumn = 1;
  form.editor.visible = true;
  form.editor.text = "7.5";
  PutAnswers(program);
  EXPECT_EQ(program.record.passband.At(2, 1), "7.5");
  EXPECT_EQ(program.DataChanged, 1);
}

TEST_F(Transfer, CountsAreNumbersAtTheHeadOfTheirText) {
  FillRecord(3);
  for (const auto& [answer, points] :
       {std::pair(" 2 points", 2), {"2.5", 2}, {"1.5", 2}, {"none", 0}, {"-1", -1}}) {
    Slot(slot::kFreqPoints) = answer;
    GetAnswers(program);
    EXPECT_EQ(program.record.nFreqPoints, points) << answer;
    EXPECT_EQ(form.passData.RowCount(), points < 1 ? 3 : points + 4) << answer;
  }
  Slot(slot::kFreqPoints) = "40000";
  EXPECT_EQ(ErrorOf([&] { GetAnswers(program); }), error_number::kOverflow);
}

}  // namespace
}  // namespace polefit::testing
