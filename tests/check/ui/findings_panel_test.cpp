#include "check/ui/findings_panel.h"

#include <QPushButton>
#include <QTableWidget>

#include "check/finding_place.h"
#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

class FindingsPanelTest : public MainForm {
 protected:
  const std::vector<Finding> findings = {
      {{.question = "2"}, Severity::fault, "Question 2: no number."},
      {{.table = FindingTable::passband, .row = 3, .column = 2}, Severity::warning, "Row 3."},
      {{.question = "8"}, Severity::open, "Question 8: empty."}};
  FindingsPanel* panel = new FindingsPanel(form);
  QPushButton& count = Find<QPushButton>("cmdFindings");
};

TEST_F(FindingsPanelTest, TheStatusBarCountsAndTheKeysGoRoundTheFindings) {
  ShowPoints(5);
  panel->ShowFindings({}, true);
  EXPECT_EQ(count.text(), "No findings");
  panel->ShowFindings(findings, true);
  EXPECT_TRUE(count.text().startsWith("1 fault, 1 warning, 1 open: Question 2"));
  EXPECT_FALSE(panel->isVisible());
  Press(Qt::Key_F7);
  EXPECT_TRUE(panel->isVisible());
  Press(Qt::Key_F8);
  EXPECT_EQ(FocusName(), "iPower");
  Press(Qt::Key_F8);
  EXPECT_EQ(FocusName(), "PassData");
  EXPECT_EQ(Find<GridWidget>("PassData").CurrentRow(), 3);
  Press(Qt::Key_F8);
  EXPECT_EQ(FocusName(), "poleReal");
  Press(Qt::Key_F8);
  EXPECT_EQ(FocusName(), "iPower");
  Press(Qt::SHIFT | Qt::Key_F8);
  EXPECT_EQ(FocusName(), "poleReal");
}

TEST_F(FindingsPanelTest, WhatIsBeingTypedIsNotJudgedAndWhatIsOpenOnlyCountedBeforeASubmit) {
  ShowPoints(5);
  form.SetFocus("iPower");
  panel->ShowFindings(findings, true);
  EXPECT_EQ(Find<QTableWidget>("lstFindings").rowCount(), 3) << "looked at, not typed in";
  Type("x");
  panel->ShowFindings(findings, true);
  EXPECT_EQ(Find<QTableWidget>("lstFindings").rowCount(), 2);
  form.SetFocus("freqNorm");
  panel->ShowFindings(findings, true);
  EXPECT_EQ(Find<QLineEdit>("iPower").accessibleDescription(), "Question 2: no number.");
  EXPECT_EQ(Find<QLineEdit>("poleReal").accessibleDescription(), "Question 8: empty.");
  panel->ShowFindings(findings, false);
  EXPECT_EQ(Find<QLineEdit>("poleReal").accessibleDescription(), "");
  EXPECT_TRUE(count.text().startsWith("1 fault, 1 warning, 1 open: "));
  EXPECT_EQ(Find<QTableWidget>("lstFindings").rowCount(), 2);
  const QAbstractItemModel& cells = *Find<GridWidget>("PassData").model();
  EXPECT_EQ(cells.index(2, 1).data(Qt::ToolTipRole).toString(), "Row 3.");
  panel->ShowFindings({}, true);
  EXPECT_EQ(Find<QLineEdit>("iPower").accessibleDescription(), "");
}

TEST_F(FindingsPanelTest, ACureIsAButtonInTheListAndAnEntryAtItsCellAndOneStep) {
  ShowPoints(5);
  form.ForgetSteps();
  form.PassData().SetText(3, 2, "0,5");
  const Finding comma = {{.table = FindingTable::passband, .row = 3, .column = 2},
                         Severity::fault,
                         "a comma",
                         Cure::commasToPoints};
  panel->ShowFindings({findings[0], comma}, true);
  auto& entry = Find<QAction>("curePassData");
  EXPECT_FALSE(entry.isVisible());
  Press(Qt::Key_F8, Qt::Key_F8);
  ASSERT_TRUE(entry.isVisible());
  entry.trigger();
  EXPECT_EQ(form.PassData().Text(3, 2), "0.5");
  EXPECT_EQ(Find<QAction>("mnuEditUndo").text(), "&Undo Commas to Points");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(form.PassData().Text(3, 2), "0,5");
  panel->show();
  const QWidget* cell = Find<QTableWidget>("lstFindings").cellWidget(1, 1);
  ASSERT_NE(cell, nullptr);
  auto* button = cell->findChild<QPushButton*>();
  ASSERT_NE(button, nullptr);
  button->click();
  QApplication::processEvents();
  EXPECT_EQ(form.PassData().Text(3, 2), "0.5");
}

TEST(PlaceText, SaysWhereAFindingStands) {
  const std::pair<FindingPlace, const char*> cases[] = {
      {{.question = "11a"}, "question 11a"},
      {{.table = FindingTable::passband, .row = 3, .column = 2}, "passband row 3"},
      {{.table = FindingTable::delay}, "delay points"},
      {{.table = FindingTable::solverSettings, .row = 2}, "solver setting 2"},
      {{}, ""}};
  for (const auto& [place, words] : cases) EXPECT_EQ(PlaceText(place), words);
}

}  // namespace
}  // namespace polefit::testing
