#include "form/transfer.h"

#include <gtest/gtest.h>

#include "base/error_of.h"
#include "form/scripted_program.h"
#include "record/points.h"
#include "responsefile/file_look.h"
#include "responsefile/writer.h"

namespace polefit::testing {
namespace {

struct Transfer : ::testing::Test, ScriptedProgram {
  Transfer() { PutAnswers(program); }

  std::string& Slot(int number) { return program.document.record.Slot(number); }
  void Show(int points) {
    SetPoints(program.document.record, points);
    GetAnswers(program);
  }
};

TEST_F(Transfer, OnlyAYTicksABox) {
  std::string taken;
  for (const char* answer : {"Y", "y", "yes", "1", " Y", ""}) {
    Slot(slot::kSigmaZeroWanted) = answer;
    GetAnswers(program);
    for (const char* dependent : {"sigmaZero", "chkDoublet", "chkLossless"}) {
      EXPECT_EQ(form.IsEnabled(dependent), form.IsChecked("chkSigmaZero")) << answer;
    }
    PutAnswers(program);
    taken += Slot(slot::kSigmaZeroWanted);
  }
  EXPECT_EQ(taken, "YYNNNN");
}

TEST_F(Transfer, ZeroCountsAreCutAtEverySingleBlank) {
  for (const auto& [answer, boxes, error] : {std::tuple("2 1 0", "2,1,0", 0),
                                             {"2  1", "2,,1", 0},
                                             {"1 2 3 4", "1,2,3", 0},
                                             {"", "0,0,0", 0},
                                             {"7 8", "7,8,kept", 9},
                                             {"7", "7,kept,kept", 9}}) {
    for (const char* box : {"nYzeros", "nZpairs", "nZquads"}) form.SetText(box, "kept");
    Slot(slot::kZeroCounts) = answer;
    EXPECT_EQ(ErrorOf([&] { GetAnswers(program); }), error) << answer;
    EXPECT_EQ(form.Text("nYzeros") + "," + form.Text("nZpairs") + "," + form.Text("nZquads"),
              boxes);
  }
}

TEST_F(Transfer, CountAnswersAreThoseFromBeforeTheReadOutSoTakingTwiceAgrees) {
  Show(12);
  form.passData.SetText(9, 3, "");
  form.delayData.Row(13) = {"", "3", "3"};
  for (const auto& [freqPoints, delayPoints] : {std::pair(" 12", " 12"), {" 8", " 13"}}) {
    PutAnswers(program);
    EXPECT_EQ(Slot(slot::kFreqPointCount), freqPoints);
    EXPECT_EQ(Slot(slot::kDelayPointCount), delayPoints);
    EXPECT_EQ(program.document.record.nFreqPoints, 8);
    EXPECT_EQ(program.document.record.nDelayPoints, 13);
  }
}

TEST_F(Transfer, CountsAreNumbersAtTheHeadOfTheirText) {
  SetPoints(program.document.record, 3);
  for (const auto& [answer, points] :
       {std::pair(" 2 points", 2), {"2.5", 2}, {"1.5", 2}, {"none", 0}, {"-1", -1}}) {
    Slot(slot::kFreqPointCount) = answer;
    GetAnswers(program);
    EXPECT_EQ(program.document.record.nFreqPoints, points) << answer;
    EXPECT_EQ(program.document.record.nDelayPoints, 3);
    EXPECT_EQ(form.passData.RowCount(), points < 1 ? 3 : points + 4) << answer;
  }
  Slot(slot::kFreqPointCount) = "40000";
  EXPECT_EQ(ErrorOf([&] { GetAnswers(program); }), error_number::kOverflow);
}

TEST_F(Transfer, TheNoteOnAnEmptyCountSaysWhatOpenWillMakeOfTheFile) {
  for (const char* const flag : {"chkEqualDelay", "chkUseWeights"}) form.SetChecked(flag, true);
  for (int empty = 0; empty < 8; ++empty) {
    std::array<std::string, 3> counts;
    for (std::size_t box = 0; box < 3; ++box) {
      counts[box] = (empty & (1 << box)) != 0 ? "" : "1";
      form.SetText(BoxName(slot::kZeroCounts, box), counts[box]);
    }
    PutAnswers(program);
    WriteResponseFile(host, program.document.record, {user, "a.1"});
    const std::string note = EmptyCountNote(counts);
    EXPECT_EQ(note.empty(), empty == 0) << empty;
    EXPECT_EQ(note.find("cannot be opened") == std::string::npos,
              LookAt(host.ReadFile(user + "/a.1")).isResponseFile)
        << empty;
  }
}

}  // namespace
}  // namespace polefit::testing
