#include "check/check.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "check/finding_place.h"
#include "platform/scripted_host.h"
#include "record/question_catalogue.h"
#include "solver/problem/typing_slips.h"

namespace polefit::testing {
namespace {

using ::testing::HasSubstr;

/// Three passband points that are as they should be, Freq Norm 10 MHz.
ResponseRecord Good() {
  ResponseRecord record;
  for (const Question& question : kQuestions) {
    if (question.kind == AnswerKind::flag) record.Slot(question.slot) = "N";
  }
  record.Slot(slot::kFreqNorm) = "10";
  record.nFreqPoints = 3;
  record.passband.Resize(4);
  for (int row = 1; row <= 3; ++row) {
    for (int column = 1; column <= 4; ++column) record.passband.At(row, column) = "1";
    record.passband.At(row, 1) = std::to_string(row * 4);
  }
  return record;
}

/// What is found once a column, or a slot, has other contents.
std::string FoundIn(const ResponseRecord& record) {
  std::vector<Finding> findings;
  FindTypingSlips(record, {}, findings);
  std::string texts;
  for (const Finding& finding : findings) texts += SentenceOf(finding) + "\n";
  return texts;
}

std::string WithColumn(int column, const std::array<const char*, 3>& cells) {
  ResponseRecord record = Good();
  for (int row = 1; const char* cell : cells) record.passband.At(row++, column) = cell;
  return FoundIn(record);
}

TEST(TypingSlips, OtherUnitsAndDecibelsAreOneFindingEach) {
  EXPECT_EQ(FoundIn(Good()), "");
  EXPECT_THAT(WithColumn(1, {"1e6", "2e6", "3e6"}), HasSubstr("in Hz or kHz?"));
  EXPECT_THAT(WithColumn(1, {"0", "2e6", "3e6"}), HasSubstr("all frequencies but 0 lie above"));
  EXPECT_THAT(WithColumn(1, {".001", ".002", ".003"}), HasSubstr("in GHz?"));
  EXPECT_EQ(WithColumn(1, {"0", "50", "100"}), "") << "a stopband may reach far";
  EXPECT_EQ(WithColumn(1, {"1e6", "x", "3e6"}), "") << "a fault of its own";
  EXPECT_THAT(WithColumn(1, {"0", "2", "101"}),
              HasSubstr("Question 5: Freq Norm, the upper passband limit, is 10 MHz, and the "
                        "points end at 101 MHz."));
  EXPECT_THAT(WithColumn(1, {"0", "2", "4.9"}), HasSubstr("the points end at 4.9 MHz."));
}

TEST(TypingSlips, AZeroOnAPointThatWantsMoreThan0IsNamed) {
  ResponseRecord record = Good();
  record.Slot(slot::kZeroCounts) = "2 0 0";
  record.Slot(slot::kYzero) = "1.2 1.3";
  EXPECT_EQ(FoundIn(record),
            "Warning: Question 11a: the zero 1.2 lies on passband point 3, whose "
            "Yout is 1, not 0.\n");
  record.passband.At(3, 3) = "0";
  EXPECT_EQ(FoundIn(record), "");
  record.passband.At(3, 3) = "1";
  record.Slot(slot::kZeroCounts) = "0 0 0";
  EXPECT_EQ(FoundIn(record), "") << "a list that is not in use";
}

TEST(TypingSlips, AFileWithMoreCellsThanColumnsSaysWhatBecameOfThem) {
  std::vector<Finding> findings;
  FindTypingSlips(Good(), {{FindingTable::passband, 2, 5, "8  0,92  1  1"}}, findings);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(SentenceOf(findings[0]),
            "Warning: Passband point 2: 5 cells for 4 columns: \"0,92\" is read as 0 and 92; type "
            "0.92.");
  findings.clear();
  const LongRow long3 = {FindingTable::delay, 3, 3, "1 2 extra"};
  FindTypingSlips(Good(), {long3, long3}, findings);
  EXPECT_EQ(SentenceOf(findings.at(0)),
            "Warning: Delay point 3: 3 cells for 2 columns, and 1 more such.");
}

TEST(TypingSlips, AnswersThatAFileWillNotGiveBackAreNamed) {
  ResponseRecord noted = Good();
  noted.Note2 = "steep!";
  EXPECT_THAT(FoundIn(noted), HasSubstr("Note 2: the file will not give \"steep!\" back"));
  for (const auto& [answer, text] : {std::pair("-9990", "is read as empty"),
                                     {"1 ! two", "ends at a \"!\""},
                                     {"1\t2", "tabs fall out"},
                                     {"-99", ""}}) {
    ResponseRecord record = Good();
    record.Slot(slot::kPoleReal) = answer;
    EXPECT_THAT(FoundIn(record), HasSubstr(text)) << answer;
    EXPECT_EQ(FoundIn(record).empty(), *text == '\0') << answer;
  }
}

TEST(TypingSlips, TheExamplesHaveNoFinding) {
  int examples = 0;
  for (const auto& entry : std::filesystem::directory_iterator(POLEFIT_EXAMPLES)) {
    if (!entry.path().filename().string().starts_with("Ex-")) continue;
    ++examples;
    ScriptedHost host;
    const CheckedFile checked = CheckResponseFile(host, entry.path().string());
    EXPECT_EQ(CountText(checked.findings), "") << entry.path();
  }
  EXPECT_EQ(examples, 7);
}

TEST(FindingPlace, LeadsToTheBoxOrTheCell) {
  EXPECT_EQ(PlaceOnForm({.question = "8"}), (FormPlace{"poleReal"}));
  EXPECT_EQ(PlaceOnForm({.question = "11"}), (FormPlace{"nYzeros"}));
  EXPECT_EQ(PlaceOnForm({.table = FindingTable::delay, .row = 3, .column = 2}),
            (FormPlace{"DelayData", 3, 2}));
  EXPECT_EQ(PlaceOnForm({.table = FindingTable::passband}), (FormPlace{"PassData", 0, 1}));
  EXPECT_EQ(PlaceOnForm({.table = FindingTable::solverSettings, .row = 6}), (FormPlace{"EvalMax"}));
  EXPECT_EQ(PlaceOnForm({.question = "20", .row = 2}), (FormPlace{"Note2"}));
  EXPECT_EQ(PlaceOnForm({}), FormPlace{});
}

}  // namespace
}  // namespace polefit::testing
