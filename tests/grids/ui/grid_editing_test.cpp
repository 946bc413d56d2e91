#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>

#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

/// Runs in both grids, on five points with the second row's second cell current.
class GridEditing : public MainForm, public ::testing::WithParamInterface<const char*> {
 protected:
  GridEditing() {
    form.SelectTab(isPass ? Tab::passbandData : Tab::delayData);
    ShowPoints(5);
    MoveTo(2, 2);
    grid.setFocus();
  }
  void MoveTo(int row, int column) { grid.setCurrentIndex(Index(row, column)); }
  QModelIndex Index(int row, int column) const { return grid.model()->index(row - 1, column - 1); }
  void ClickCell(int row, int column) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(Index(row, column)).center());
  }

  /// The current cell and the text of the editor over it: "2,2 '7'", or "2,2" when it is closed.
  /// What has no place in either state is said behind.
  std::string Now() const {
    std::string now =
        std::to_string(grid.CurrentRow()) + "," + std::to_string(grid.CurrentColumn());
    const QWidget* focus = &grid;
    if (editor.isVisible()) {
      now += " '" + editor.Text() + "'";
      if (editor.parentWidget() != grid.viewport()) now += " in the other grid";
      if (editor.geometry() != grid.visualRect(grid.currentIndex())) now += " beside its cell";
      focus = &editor;
    }
    return QApplication::focusWidget() == focus ? now : now + " without the focus";
  }

  GridWidget& grid = Find<GridWidget>(GetParam());
  CellEditorBox& editor = Find<CellEditorBox>("txtCellEditor");
  const bool isPass = grid.objectName() == "PassData";
};

INSTANTIATE_TEST_SUITE_P(BothGrids, GridEditing, ::testing::Values("PassData", "DelayData"),
                         [](const auto& grid) { return grid.param; });

TEST_P(GridEditing, TypingReplacesTheCellAndAKeyStoresItOrDropsIt) {
  for (const auto& [typed, key, cell, now, changed] :
       {std::tuple("7.25", Qt::Key_Return, "7.25", "2,2", 1),
        {" 9 ", Qt::Key_Enter, " 9 ", "2,2", 1},
        {" 9 ", Qt::Key_Tab, " 9 ", "2,2", 1},
        {" 9 ", Qt::Key_Up, " 9 ", "1,2 '1.2'", 1},
        {" 9 ", Qt::Key_Down, " 9 ", "3,2 '3.2'", 1},
        {" 9 ", Qt::Key_Escape, "old", "2,2", 0},
        {"old", Qt::Key_Return, "old", "2,2", 0}}) {
    MoveTo(2, 2);
    grid.SetText(2, 2, "old");
    grid.setFocus();
    Type(typed);
    EXPECT_EQ(Now(), std::string("2,2 '") + typed + "'");
    EXPECT_EQ(grid.Text(2, 2), "old");
    program.document.DataChanged = 0;
    Press(key);
    EXPECT_EQ(grid.Text(2, 2), cell) << key;
    EXPECT_EQ(Now(), now) << key;
    EXPECT_EQ(program.document.DataChanged, changed) << key;
  }
}

TEST_P(GridEditing, TheCaretStandsBehindWhatWasTypedAndLeftRightAndPageKeysMoveNoCell) {
  QTest::sendKeyEvent(QTest::Click, &grid, Qt::Key_unknown, "😀", {});
  Type("7");
  EXPECT_EQ(Now(), "2,2 '😀7'");
  Press(Qt::Key_Escape);
  QTest::sendKeyEvent(QTest::Click, &grid, Qt::Key_mu, "µ", {});
  EXPECT_EQ(editor.cursorPosition(), 1);
  Type("2");
  Press(Qt::Key_Left, Qt::Key_X, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_Right);
  EXPECT_EQ(Now(), "2,2 'µx2'");
  EXPECT_EQ(editor.cursorPosition(), 1);
}

TEST_P(GridEditing, ControlCharactersAndADoubleClickKeepTheOldText) {
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Escape}) {
    Press(key);
    EXPECT_EQ(Now(), "2,2 '2.2'") << key;
    Press(Qt::Key_Escape);
  }
  Press(Qt::Key_Delete, Qt::Key_F5, Qt::Key_Left);
  EXPECT_EQ(Now(), "2,1");
  ClickCell(4, 1);
  QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(Index(4, 1)).center());
  EXPECT_EQ(Now(), "4,1 '4.1'");
  EXPECT_EQ(editor.accessibleName(), "Frequency 4");
}

TEST_P(GridEditing, APressOnTheGridACommandAndAnyLossOfFocusStoreTheText) {
  Type("a");
  ClickCell(4, 1);
  EXPECT_EQ(grid.Text(2, 2), "a");
  EXPECT_EQ(Now(), "4,1");
  Type("b");
  const QSignalSpy save(&form, &MainWindow::mnuFileSave);
  Press(Qt::CTRL | Qt::Key_S);
  EXPECT_EQ(save.count(), 1);
  EXPECT_EQ(grid.Text(4, 1), "b");
  Type("c");
  PutAnswers(program);
  EXPECT_EQ(grid.Text(4, 1), "c");
  Type("d");
  form.SelectTab(Tab::start);
  EXPECT_EQ(grid.Text(4, 1), "d");
}

TEST_P(GridEditing, GoingDownWithTheEditorAddsARowWhenFewerThanTwoWouldBeLeft) {
  MoveTo(1, 1);
  Type("1");
  Press(Qt::Key_Up);
  // The editor's focus asks for a row more, of the passband grid only.
  const int rowsAhead = isPass ? 3 : 2;
  for (int row = 2; row < 40; ++row) {
    Press(Qt::Key_Down);
    ASSERT_EQ(Now(), std::to_string(row) + ",1 '" + grid.Text(row, 1) + "'");
    ASSERT_EQ(grid.RowCount(), std::max(9, row + rowsAhead));
    Type("3");
  }
  EXPECT_EQ(grid.Text(40, 0), "40");
  EXPECT_EQ(grid.Text(1, 1) + grid.Text(2, 1) + grid.Text(38, 1), "133") << "in place of the old";
}

TEST_P(GridEditing, TheEditorFollowsItsCellWhenTheGridScrollsOrAColumnIsDragged) {
  ShowPoints(200);
  Type("1");
  grid.scrollTo(Index(10, 2), QAbstractItemView::PositionAtTop);
  EXPECT_EQ(Now(), "2,2 '1'");
  EXPECT_FALSE(grid.viewport()->rect().contains(editor.geometry()));
  Type("5");
  EXPECT_EQ(Now(), "2,2 '15'");
  EXPECT_TRUE(grid.viewport()->rect().contains(editor.geometry()));
  const int before = grid.ColumnWidth(1);
  grid.horizontalHeader()->resizeSection(0, 140);
  EXPECT_EQ(Now(), "2,2 '15'");
  EXPECT_NE(grid.ColumnWidth(1), before);
}

TEST_P(GridEditing, ClearColumnsEmptiesTheGridAtOnceAndLeavesACurrentCell) {
  ShowPoints(200);
  MoveTo(150, 1);
  ShowPoints(200);
  EXPECT_EQ(grid.CurrentRow(), 2) << "the rows of the first file went before those of the next";
  MoveTo(150, 1);
  form.SetFocus(std::string("cmdClear") + GetParam());
  Press(Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(grid.CurrentRow(), 2);
  EXPECT_EQ(grid.model()->rowCount(), 2);
  EXPECT_EQ(grid.Text(2, 0) + grid.Text(2, 2), "2");
}

TEST_P(GridEditing, ASingleCellIsPastedIntoTheEditorAndLineBreaksAreBlanksInABox) {
  QApplication::clipboard()->setText("5\r\n");
  Type("7");
  Press(Qt::CTRL | Qt::Key_V, Qt::Key_Return);
  EXPECT_EQ(grid.Text(2, 2), "75");
  form.SetFocus("iPower");
  QApplication::clipboard()->setText("1\r\n2\n3");
  Press(Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(form.Text("iPower"), "1 2 3");
}

TEST_P(GridEditing, TheCurrentCellIsFilledOnlyWhileItsGridHasTheFocus) {
  const auto ground = [this] {
    const QPoint corner = grid.visualRect(grid.currentIndex()).topLeft() + QPoint(3, 3);
    return grid.viewport()->grab().toImage().pixelColor(corner);
  };
  EXPECT_NE(ground(), grid.palette().color(QPalette::Base));
  form.SetFocus(std::string("cmdClear") + GetParam());
  EXPECT_EQ(ground(), grid.palette().color(QPalette::Base));
}

TEST_P(GridEditing, LargeFontsWidenTheColumnsAndTheRows) {
  const int before = grid.columnWidth(0);
  QFont font = grid.font();
  font.setPointSizeF(20);
  grid.setFont(font);
  EXPECT_NEAR(grid.columnWidth(0), before * 2, 6);
  EXPECT_GE(grid.verticalHeader()->defaultSectionSize(), grid.fontMetrics().height());
}

struct PaintCounter : QObject {
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int paints = 0;
};

TEST_F(MainForm, TheWeightColumnFollowsItsCheckBox) {
  ShowPoints(3);
  auto& grid = Find<GridWidget>("PassData");
  EXPECT_TRUE(grid.isColumnHidden(3));
  form.SetFocus("chkUseWeights");
  QTest::qWait(50);  // until everything that was asked for so far has been painted
  PaintCounter cells;
  grid.viewport()->installEventFilter(&cells);
  Press(Qt::Key_Space);
  QTest::qWait(50);
  EXPECT_FALSE(grid.isColumnHidden(3));
  EXPECT_GT(cells.paints, 0) << "the cells show, not only their title";
  EXPECT_EQ(grid.columnWidth(3), grid.columnWidth(0));
  grid.setCurrentIndex(grid.model()->index(0, 3));
  Press(Qt::Key_Space);
  EXPECT_TRUE(grid.isColumnHidden(3));
  EXPECT_EQ(grid.CurrentColumn(), 3) << "the current cell stays in sight";
  EXPECT_EQ(grid.Text(1, 4), "1.4") << "a hidden column keeps its cells";
}

}  // namespace
}  // namespace polefit::testing
