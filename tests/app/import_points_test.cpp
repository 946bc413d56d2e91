#include "app/import_points.h"

#include <gmock/gmock.h>

#include "app/file_commands.h"
#include "app/open_look.h"
#include "form/changes.h"
#include "form/scripted_program.h"
#include "form/transfer.h"

namespace polefit::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ImportPointsTest : public ::testing::Test {
 protected:
  ImportPointsTest() {
    WriteBytes(host_.Path("data/x.csv"), "MHz,mag,gd (ns)\n1,.5,3\n2,.4,5\n3,.1,4\n");
    form_.passData.SetRowCount(3);
    form_.delayData.SetRowCount(3);
    GetAnswers(program_);
    NoteShown(program_);
  }

  /// Takes the plan as it is offered, after `change`.
  AskForPlan Take(std::function<void(ImportPlan&)> change = {}) {
    return [this, change](ImportPlan& plan, const FormCells& form, const auto& /*files*/) {
      if (change) change(plan);
      preview_ = PreviewOf(plan, form);
      return true;
    };
  }
  /// "f yin yout weight" of a row of the passband table.
  std::string Row(int row) const {
    std::string text;
    for (int column = 1; column <= 4; ++column) {
      text += (column > 1 ? " " : "") + form_.passData.Text(row, column);
    }
    return text;
  }
  void Type(int row, const std::vector<std::string>& cells) {
    form_.passData.SetRowCount(std::max(form_.passData.RowCount(), row + 2));
    for (std::size_t i = 0; i < cells.size(); ++i) {
      form_.passData.SetText(row, static_cast<int>(i) + 1, cells[i]);
    }
  }

  ScriptedProgram scripted_;
  ScriptedHost& host_ = scripted_.host;
  FakeForm& form_ = scripted_.form;
  Program& program_ = scripted_.program;
  ImportPreview preview_;
};

TEST_F(ImportPointsTest, ANewProblemFillsTheFormAndHasANameOfItsOwn) {
  WriteBytes(host_.Path("data/x.1"), "here already");
  for (const char* tick : {"chkEqualDelay", "chkSigmaZero"}) form_.SetChecked(tick, true);
  NoteShown(program_);
  ImportPoints(program_, {host_.Path("data/x.csv")}, Take());
  EXPECT_FALSE(form_.IsChecked("chkEqualDelay") || form_.IsChecked("chkSigmaZero"));
  ASSERT_GE(preview_.answers.size(), 3U);
  EXPECT_EQ((preview_.answers.end() - 2)->question + (preview_.answers.end() - 2)->value, "10N");
  EXPECT_EQ(Row(1), "1 1 .5 1");
  EXPECT_EQ(program_.document.record.nFreqPoints, 3);
  EXPECT_EQ(form_.Text("freqNorm"), "2");
  EXPECT_EQ(form_.Text("poleReal"), "");
  EXPECT_EQ(form_.Text("nYzeros"), "0");
  EXPECT_THAT(form_.Text("Note1"), HasSubstr("Points of x.csv, mag, 2004-03-03"));
  EXPECT_EQ(program_.files.currentFileName, "x.2");
  EXPECT_EQ(host_.CurrentFolder(), host_.Path("data"));
  EXPECT_EQ(program_.document.DataChanged, 1);
  EXPECT_EQ(preview_.summary, "3 rows, 1 to 3 MHz, -6.02 to -20 dB");
}

TEST_F(ImportPointsTest, AnOlderProblemKeepsWhatWasTyped) {
  ImportPoints(program_, {host_.Path("data/x.csv")}, Take());
  program_.files.currentFileName = "old.1";
  EXPECT_EQ(program_.document.nameForSaveAs, host_.Path("data/x.1"));
  // A row without a weight ends the list; what is below it is no point, but was typed.
  Type(4, {"9", "1", "1"});
  Type(5, {"10", "1", ".2", "1"});
  const std::string note = form_.Text("Note1");
  WriteBytes(host_.Path("data/y.csv"), "MHz,mag\n1,.9\n2,.8\n");
  ImportPoints(program_, {host_.Path("data/y.csv"), host_.Path("data/x.csv")}, Take());
  EXPECT_EQ(preview_.summary,
            "2 rows, 1 to 2 MHz, -0.915 to -1.94 dB; replaces 3 rows; "
            "3 delay rows, 1 to 3 MHz, TX 0 to 2 ns");
  EXPECT_THAT((std::vector{Row(1), Row(2), Row(3), Row(4)}),
              ElementsAre("1 1 .9 1", "2 1 .8 1", "9 1 1 ", "10 1 .2 1"));
  EXPECT_EQ(program_.document.record.nFreqPoints, 2);
  EXPECT_EQ(program_.document.record.nDelayPoints, 3);
  EXPECT_EQ(form_.delayData.Text(1, 2), "2");
  EXPECT_TRUE(form_.IsChecked("chkEqualDelay"));
  EXPECT_EQ(form_.Text("tmin"), "0");
  EXPECT_EQ(form_.Text("Note1"), note);
  EXPECT_EQ(program_.files.currentFileName, "old.1");
}

TEST_F(ImportPointsTest, ADelayOrATextComesInAlone) {
  ImportPoints(program_, {host_.Path("data/x.csv")}, Take());
  EXPECT_TRUE(ImportDelay(program_, host_.Path("data/x.csv"),
                          Take([](ImportPlan& plan) { ChangeRole(plan, Role::equalise); })));
  EXPECT_EQ(form_.delayData.Text(2, 2), "5");
  EXPECT_EQ(Row(1), "1 1 .5 1");
  WriteBytes(host_.Path("data/y.csv"), "MHz,mag\n1,.9\n2,.8\n");
  EXPECT_FALSE(ImportDelay(program_, host_.Path("data/y.csv"), Take()));
  EXPECT_FALSE(ImportText(program_, "only words\n", false, Take()));
  program_.files.currentFileName = "old.1";
  EXPECT_TRUE(ImportText(program_, "MHz\tmag\r\n1,5\t0,9\r\n2,5\t0,8\r\n", false, Take()));
  EXPECT_EQ(Row(1), "1.5 1 0.9 1");
  EXPECT_TRUE(ImportText(program_, "MHz\tgd (ns)\n1\t7\n2\t9\n", true, Take()));
  EXPECT_EQ(form_.delayData.Text(1, 2), "2");
  EXPECT_EQ(Row(1), "1.5 1 0.9 1");
}

TEST_F(ImportPointsTest, ChoicesAreKeptForTheKindOfFile) {
  ImportPoints(program_, {host_.Path("data/x.csv")}, Take([](ImportPlan& plan) {
                 ChangeRole(plan, Role::equalise);
                 plan.choices.rows.smooth = 5;
                 plan.choices.rows.from = 2;
               }));
  WriteBytes(host_.Path("data/same.csv"), "MHz,mag,gd (ns)\n5,.5,3\n6,.4,5\n7,.1,4\n");
  WriteBytes(host_.Path("data/other.csv"), "MHz,mag\n5,.5\n6,.4\n");
  for (const auto& [name, isKept] : {std::pair("same.csv", true), {"other.csv", false}}) {
    ImportPlan offered;
    ImportPoints(program_, {host_.Path(std::string("data/") + name)},
                 [&](ImportPlan& plan, const auto&, const auto&) {
                   offered = plan;
                   return false;
                 });
    EXPECT_EQ(offered.isRecalled, isKept) << name;
    EXPECT_EQ(offered.choices.role == Role::equalise, isKept) << name;
    EXPECT_EQ(offered.choices.rows.smooth, isKept ? 5 : 0) << name;
    EXPECT_LT(offered.choices.rows.from, 0) << name;
  }
}

TEST_F(ImportPointsTest, WhatIsGivenUpOrCannotBeReadChangesNothing) {
  WriteBytes(host_.Path("data/words.txt"), "words\n");
  const FormCells before = CellsOf(program_);
  const AskForPlan no = [](auto&, const auto&, const auto&) { return false; };
  ImportPoints(program_, {host_.Path("data/x.csv")}, no);
  host_.ReplyToBox(Reply::ok, Reply::ok, Reply::ok);
  ImportPoints(program_, {host_.Path("data/words.txt")}, no);
  ImportPoints(program_, {host_.Path("data/gone")}, no);
  ImportPoints(program_, {host_.Path("data/x.csv"), host_.Path("data")}, no);
  EXPECT_THAT(host_.TakeTranscript().front(),
              HasSubstr("No points of '@/data/words.txt' can be taken: fewer than two rows of"));
  form_.SetText("Gain", "2");
  host_.ReplyToBox(Reply::cancel);
  ImportPoints(program_, {host_.Path("data/x.csv")}, Take());
  EXPECT_TRUE(CellsOf(program_).typed.passband == before.typed.passband);
  host_.AnswerDialog("");
  ImportChosenFile(program_, Take());
  EXPECT_EQ(host_.CurrentFolder(), scripted_.user);
}

TEST_F(ImportPointsTest, OnlyRowsOfNumbersThatAreNoFileOfOursArePoints) {
  WriteBytes(host_.Path("data/words.txt"), "words\n");
  const std::pair<std::string, bool> files[] = {{host_.Path("data/x.csv"), true},
                                                {host_.Path("data/words.txt"), false},
                                                {host_.Path("data/gone"), false},
                                                {host_.Path("data"), false},
                                                {POLEFIT_EXAMPLES "/Ex-Delay.101", false}};
  for (const auto& [path, isPoints] : files) {
    EXPECT_EQ(HoldsOnlyPoints(host_, path), isPoints) << path;
  }
}

}  // namespace
}  // namespace polefit::testing
