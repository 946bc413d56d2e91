#include <gmock/gmock.h>

#include <QClipboard>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalSpy>

#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

/// Runs in both grids.
class GridEditing : public MainForm, public ::testing::WithParamInterface<const char*> {
 protected:
  GridEditing() {
    form.SelectTab(grid.objectName() == "PassData" ? Tab::passbandData : Tab::delayData);
    ShowPoints(5);
    MoveTo(2, 2);
    grid.setFocus();
  }
  void MoveTo(int row, int column) { grid.setCurrentIndex(Index(row, column)); }
  QModelIndex Index(int row, int column) const { return grid.model()->index(row - 1, column - 1); }
  QPoint Middle(int row, int column) const { return grid.visualRect(Index(row, column)).center(); }

  GridWidget& grid = Find<GridWidget>(GetParam());
  QLineEdit& editor = Find<QLineEdit>("txtCellEditor");
};

INSTANTIATE_TEST_SUITE_P(BothGrids, GridEditing, ::testing::Values("PassData", "DelayData"),
                         [](const auto& grid) { return grid.param; });

TEST_P(GridEditing, TypingReplacesTheCellAndEnterStoresIt) {
  Type("7.25");
  EXPECT_EQ(FocusName(), "txtCellEditor");
  EXPECT_TRUE(editor.isVisible());
  EXPECT_EQ(editor.text(), "7.25");
  EXPECT_EQ(editor.geometry(), grid.visualRect(Index(2, 2)));
  EXPECT_EQ(editor.parentWidget(), grid.viewport());
  EXPECT_EQ(grid.Text(2, 2), "2");
  Press(Qt::Key_Return);
  EXPECT_EQ(grid.Text(2, 2), "7.25");
  EXPECT_FALSE(editor.isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &grid);
  EXPECT_EQ(grid.currentIndex(), Index(2, 2));
  EXPECT_EQ(program.DataChanged, 1);
}

TEST_P(GridEditing, EveryOtherKeyOfTheEditor) {
  struct Case {
    int key;
    const char* cell;
    bool visible;
    int row;
  };
  for (const Case& c : {Case{Qt::Key_Escape, "2", false, 2}, Case{Qt::Key_Tab, " 9 ", false, 2},
                        Case{Qt::Key_Enter, " 9 ", false, 2}, Case{Qt::Key_Up, " 9 ", true, 1},
                        Case{Qt::Key_Down, " 9 ", true, 3}}) {
    MoveTo(2, 2);
    grid.SetText(2, 2, "2");
    grid.setFocus();
    Type(" 9 ");
    program.DataChanged = 0;
    Press(c.key);
    EXPECT_EQ(grid.Text(2, 2), c.cell) << c.key;
    EXPECT_EQ(program.DataChanged, c.key == Qt::Key_Escape ? 0 : 1) << c.key;
    EXPECT_EQ(editor.isVisible(), c.visible) << c.key;
    EXPECT_EQ(grid.currentIndex(), Index(c.row, 2)) << c.key;
    const QWidget* focus = c.visible ? static_cast<QWidget*>(&editor) : &grid;
    EXPECT_EQ(QApplication::focusWidget(), focus) << c.key;
    if (!c.visible) continue;
    EXPECT_EQ(editor.text().toStdString(), grid.Text(c.row, 2));
  }
}

TEST_P(GridEditing, LeftRightAndPageKeysStayInTheEditor) {
  Type("12");
  Press(Qt::Key_Left);
  Type("x");
  Press(Qt::Key_PageDown);
  Press(Qt::Key_Home);
  Press(Qt::Key_Right);
  EXPECT_EQ(editor.text(), "1x2");
  EXPECT_EQ(editor.cursorPosition(), 1);
  EXPECT_EQ(grid.currentIndex(), Index(2, 2));
}

TEST_P(GridEditing, ControlCharactersAndADoubleClickKeepTheOldText) {
  for (const int key : {Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Escape}) {
    Press(key);
    EXPECT_TRUE(editor.isVisible()) << key;
    EXPECT_EQ(editor.text(), "2") << key;
    Press(Qt::Key_Escape);
  }
  Press(Qt::Key_Delete);
  Press(Qt::Key_Right);
  Press(Qt::Key_F5);
  EXPECT_FALSE(editor.isVisible());
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, Middle(4, 1));
  QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, Middle(4, 1));
  EXPECT_TRUE(editor.isVisible());
  EXPECT_EQ(editor.text(), "4");
  EXPECT_EQ(editor.geometry(), grid.visualRect(Index(4, 1)));
}

TEST_P(GridEditing, APressOnTheGridAndAnyLossOfFocusStoreTheText) {
  Type("a");
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, Middle(4, 1));
  EXPECT_EQ(grid.Text(2, 2), "a");
  EXPECT_FALSE(editor.isVisible());
  EXPECT_EQ(grid.currentIndex(), Index(4, 1));
  Type("b");
  form.SelectTab(Tab::start);
  EXPECT_EQ(grid.Text(4, 1), "b");
  EXPECT_FALSE(editor.isVisible());
}

TEST_P(GridEditing, ACommandFindsWhatStandsInTheEditor) {
  const QSignalSpy save(&form, &FrmMain::mnuFileSave);
  Type("77");
  program.DataChanged = 0;
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(save.count(), 1);
  EXPECT_EQ(grid.Text(2, 2), "77");
  EXPECT_EQ(program.DataChanged, 1);
}

TEST_P(GridEditing, GoingDownWithTheEditorNeverRunsOutOfRows) {
  MoveTo(1, 1);
  Type("1");
  Press(Qt::Key_Up);
  EXPECT_EQ(grid.currentIndex(), Index(1, 1));
  for (int row = 2; row < 40; ++row) {
    Press(Qt::Key_Down);
    ASSERT_EQ(grid.currentIndex(), Index(row, 1));
    ASSERT_GE(grid.RowCount(), row + 2);
    ASSERT_EQ(editor.geometry(), grid.visualRect(Index(row, 1)));
    Type("3");
  }
  EXPECT_EQ(grid.Text(40, 0), "40");
  EXPECT_EQ(grid.Text(38, 1), "3");
}

TEST_P(GridEditing, TheEditorFollowsItsCellWhenTheGridScrollsOrAColumnIsDragged) {
  ShowPoints(200);
  MoveTo(2, 2);
  grid.setFocus();
  Type("1");
  grid.scrollTo(Index(10, 2), QAbstractItemView::PositionAtTop);
  EXPECT_EQ(editor.geometry(), grid.visualRect(Index(2, 2)));
  grid.scrollToTop();
  const int before = grid.ColumnWidth(1);
  grid.horizontalHeader()->resizeSection(0, 140);
  EXPECT_EQ(editor.geometry(), grid.visualRect(Index(2, 2)));
  EXPECT_NE(grid.ColumnWidth(1), before);
}

TEST_P(GridEditing, TheCurrentCellStaysInsideTheRowsThatThereAre) {
  ShowPoints(200);
  MoveTo(150, 1);
  ShowPoints(200);
  EXPECT_EQ(grid.CurrentRow(), 2) << "the rows of the first file went before those of the next";
  ShowPoints(0);
  EXPECT_EQ(grid.CurrentRow(), 2);
  EXPECT_EQ(grid.model()->rowCount(), 2);
}

TEST_P(GridEditing, ClearColumnsEmptiesTheGridAtOnce) {
  QTest::mouseClick(&Find<QPushButton>(std::string("cmdClear") + GetParam()), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_EQ(grid.RowCount(), 3);
  EXPECT_EQ(grid.model()->rowCount(), 2);
  EXPECT_EQ(grid.Text(2, 2), "");
  EXPECT_EQ(grid.Text(2, 0), "2");
  EXPECT_EQ(program.DataChanged, 1);
  const bool pass = grid.objectName() == "PassData";
  const auto& hint = Find<QWidget>(pass ? "lblNoFreqPoints" : "lblNoDelayPoints");
  EXPECT_TRUE(hint.isVisible()) << "rows typed now are not read";
}

/// Counts how often a widget is painted.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  int paints = 0;
};

TEST_F(MainForm, PastedLineBreaksAreBlanksAndShortcutsTypeNothing) {
  ShowPoints(3);
  QApplication::clipboard()->setText("1\r\n2\n3");
  form.SetFocus("iPower");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(form.Text("iPower"), "1 2 3");
  form.SelectTab(Tab::passbandData);
  auto& grid = Find<GridWidget>("PassData");
  grid.setFocus();
  Press(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(FocusName(), "PassData");
  Type("7");
  Press(Qt::Key_V, Qt::ControlModifier);
  Press(Qt::Key_Return);
  EXPECT_EQ(grid.Text(1, 1), "71 2 3");
  Find<QPushButton>("cmdClearPassData").setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(grid.RowCount(), 3) << "Return presses a button";
}

TEST_F(MainForm, TheWeightColumnFollowsItsCheckBox) {
  ShowPoints(3);
  auto& grid = Find<GridWidget>("PassData");
  EXPECT_TRUE(grid.isColumnHidden(3));
  form.SelectTab(Tab::passbandData);
  form.SetFocus("chkUseWeights");
  QTest::qWait(50);  // until everything that was asked for so far has been painted
  const PaintCounter cells(*grid.viewport());
  Press(Qt::Key_Space);
  QTest::qWait(50);
  EXPECT_FALSE(grid.isColumnHidden(3));
  EXPECT_GT(cells.paints, 0) << "the cells show, not only their title";
  EXPECT_EQ(grid.columnWidth(3), grid.columnWidth(0));
  grid.setCurrentIndex(grid.model()->index(0, 3));
  Press(Qt::Key_Space);
  EXPECT_TRUE(grid.isColumnHidden(3));
  EXPECT_EQ(grid.currentIndex().column(), 2) << "the current cell stays in sight";
  EXPECT_EQ(grid.Text(1, 4), "1") << "a hidden column keeps its cells";
}

TEST_F(MainForm, TheGridFollowsLargeFontsWithItsWidths) {
  auto& grid = Find<GridWidget>("PassData");
  const int before = grid.columnWidth(0);
  QFont font = grid.font();
  font.setPointSizeF(20);
  grid.setFont(font);
  EXPECT_NEAR(grid.columnWidth(0), before * 2, 6);
  EXPECT_GE(grid.verticalHeader()->defaultSectionSize(), grid.fontMetrics().height());
}

}  // namespace
}  // namespace polefit::testing
