#include "check/ui/findings_panel.h"

#include <QListWidget>
#include <QPushButton>

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
  panel->ShowFindings({});
  EXPECT_EQ(count.text(), "No findings");
  panel->ShowFindings(findings);
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

TEST_F(FindingsPanelTest, WhatIsBeingTypedIsNotJudgedAndWhatIsOpenNotUnderlined) {
  ShowPoints(5);
  form.SetFocus("iPower");
  panel->ShowFindings(findings);
  EXPECT_EQ(Find<QListWidget>("lstFindings").count(), 2);
  form.SetFocus("freqNorm");
  panel->ShowFindings(findings);
  EXPECT_EQ(Find<QLineEdit>("iPower").accessibleDescription(), "Question 2: no number.");
  EXPECT_EQ(Find<QLineEdit>("poleReal").accessibleDescription(), "");
  const QAbstractItemModel& cells = *Find<GridWidget>("PassData").model();
  EXPECT_EQ(cells.index(2, 1).data(Qt::ToolTipRole).toString(), "Row 3.");
  panel->ShowFindings({});
  EXPECT_EQ(Find<QLineEdit>("iPower").accessibleDescription(), "");
}

}  // namespace
}  // namespace polefit::testing
