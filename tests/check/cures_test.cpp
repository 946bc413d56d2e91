#include "check/cures.h"

#include <gmock/gmock.h>

#include "check/form_findings.h"
#include "form/scripted_program.h"
#include "form/transfer.h"
#include "record/points.h"

namespace polefit::testing {
namespace {

/// Six points 1 to 6 MHz on a form that has nothing else to complain of.
struct CuresTest : ::testing::Test, ScriptedProgram {
  CuresTest() {
    PutAnswers(program);
    SetPoints(program.document.record, 6);
    GetAnswers(program);
    form.SetText("nPoles", "0 2");
    form.SetText("poleReal", ".1 .1");
    form.SetText("poleImag", ".2 .3");
    for (int row = 1; row <= 6; ++row) form.passData.SetText(row, 1, std::to_string(row));
  }

  /// Cures the one finding that there is; "TEXT; NAME".
  std::string Cured() {
    const std::vector<Finding> findings = FindingsOf(program);
    if (findings.size() != 1) return std::to_string(findings.size()) + " findings";
    FormCells cells = CellsOf(program);
    ApplyCure(cells, findings.front());
    ShowCells(program, cells);
    const std::string left = FindingsOf(program).empty() ? "" : ", not cured";
    return findings.front().text + " " + CureName(findings.front().cure) + left;
  }
  std::string Column(int column) {
    std::string text;
    for (int row = 1; row <= 6; ++row) text += form.passData.Text(row, column) + " ";
    return text;
  }
  void SetColumn(int column, const std::array<const char*, 6>& cells) {
    for (int row = 1; const char* cell : cells) form.passData.SetText(row++, column, cell);
  }
};

TEST_F(CuresTest, EachPutsItsFindingRight) {
  ASSERT_EQ(FindingsOf(program).size(), 0U);
  struct Case {
    int column;
    std::array<const char*, 6> cells;
    const char* said;
    const char* cured;
  };
  const Case cases[] = {
      {2,
       {"0,92", "1", "1", "1", "1", "1"},
       "Passband point 1: Yin \"0,92\" is read as 0 and 92; type 0.92. Commas to Points",
       "0.92 1 1 1 1 1 "},
      {1,
       {"1e6", "2e6", "3e6", "4e6", "5e6", "6.125e6"},
       "Passband point 1: all frequencies lie above 5 times Freq Norm. Are they in Hz or "
       "kHz? Both are taken in MHz. Hz to MHz",
       "1 2 3 4 5 6.125 "},
      {1,
       {"60", "1e3", "2e3", "4e3", "5e3", "6e3"},
       "Passband point 1: all frequencies lie above 5 times Freq Norm. Are they in Hz or "
       "kHz? Both are taken in MHz. kHz to MHz",
       "0.06 1 2 4 5 6 "},
      {1,
       {".001", ".002", ".003", ".004", ".005", ".006"},
       "Passband point 6: all frequencies lie below a tenth of Freq Norm. Are they in "
       "GHz? Both are taken in MHz. GHz to MHz",
       "1 2 3 4 5 6 "},
      {3,
       {"0", "-20", "-6", "-20", "-40", "-60"},
       "Passband points: no Yout is above 0. Are they in dB? Ratios are wanted. dB to Ratios",
       "1 0.1 0.501187234 0.1 0.01 0.001 "},
      {1,
       {"1", "3", "2", "4", "6", "5"},
       "Passband point 3: frequency 2 lies below 3 of the point before, and 1 more such. "
       "Sort by Frequency",
       "1 2 3 4 5 6 "},
      {1,
       {"1", "2", "2.0", "4", "5", "5"},
       "Passband point 3: frequency 2.0 stands in point 2 already, and 1 more such. Drop "
       "Repeated Rows",
       "1 2 4 5   "},
      {4,
       {"1", "1", "1", "1", "1", ""},
       "Passband data: Row 6 is not saved: row 6 has no Weight (column hidden). "
       "Keep Typed Rows",
       "1 1 1 1 1 1 "},
  };
  const FormCells before = CellsOf(program);
  for (const Case& one : cases) {
    ShowCells(program, before);
    SetColumn(one.column, one.cells);
    EXPECT_EQ(Cured(), one.said);
    EXPECT_EQ(Column(one.column), one.cured);
  }
}

TEST_F(CuresTest, AShownWeightIsFilledInAndRowsWithoutPointsAreKept) {
  form.SetChecked("chkUseWeights", true);
  form.passData.SetText(6, 4, "");
  EXPECT_THAT(Cured(), ::testing::EndsWith("row 6 has no Weight. Weight 1 Where Empty"));
  EXPECT_EQ(RecordOf(program).nFreqPoints, 6);
  form.delayData.SetRowCount(9);
  program.document.record.nDelayPoints = 0;
  const std::vector<Finding> findings = FindingsOf(program);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings.front().text, "Delay data: 6 rows typed, no points yet.");
}

TEST_F(CuresTest, AListIsCutOrFilledToItsCountAndItsCommasBecomePoints) {
  for (const auto& [text, cured] :
       {std::pair(".2 .3 .4 .5", ".2 .3"), {".25", ".25 .25"}, {"0,2 .3", "0.2 .3"}}) {
    form.SetText("poleImag", text);
    EXPECT_THAT(Cured(), ::testing::Not(::testing::HasSubstr("not cured")));
    EXPECT_EQ(form.Text("poleImag"), cured);
  }
  form.SetText("nPoles", "0 3");
  form.SetText("poleReal", ".1 .1 .1");
  EXPECT_THAT(Cured(), ::testing::EndsWith("question 6 asks for 3. Fit List to Count"));
  EXPECT_EQ(form.Text("poleImag"), "0.2 .3 0.4");
}

}  // namespace
}  // namespace polefit::testing
