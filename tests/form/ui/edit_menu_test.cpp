#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QSignalSpy>

#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

/// Five points in both tables, the second cell of row 2 of the passband table current.
class EditMenuTest : public MainForm {
 protected:
  EditMenuTest() {
    form.SelectTab(Tab::passbandData);
    ShowPoints(5);
    form.ForgetSteps();
    grid.SetCurrentCell(2, 2);
    grid.setFocus();
  }
  std::string Caption(const char* entry) { return Find<QAction>(entry).text().toStdString(); }
  static void Copied(const char* text) { QApplication::clipboard()->setText(text); }

  GridWidget& grid = Find<GridWidget>("PassData");
};

TEST_F(EditMenuTest, ABlockIsCopiedEmptiedPastedAndUndoneByKeys) {
  Press(Qt::SHIFT | Qt::Key_Down, Qt::SHIFT | Qt::Key_Right, Qt::CTRL | Qt::Key_C);
  EXPECT_EQ(QApplication::clipboard()->text(), "2.2\t2.3\r\n3.2\t3.3\r\n");
  Press(Qt::Key_Delete);
  EXPECT_EQ(grid.Text(2, 2) + grid.Text(3, 3) + grid.Text(2, 4), "2.4") << "weights stay";
  EXPECT_EQ(grid.SelectedBlock().lastRow, 3) << "the selection stays";
  EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Delete");
  grid.SetCurrentCell(6, 1);
  Press(Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(grid.Text(7, 2) + grid.Text(7, 4), "3.31") << "a new row has the weight 1";
  Press(Qt::CTRL | Qt::Key_Z, Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(grid.Text(2, 2) + grid.Text(7, 2), "2.2");
  EXPECT_EQ(grid.CurrentRow(), 2) << "where the step was";
  EXPECT_EQ(program.document.DataChanged, 1);
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
  EXPECT_EQ(grid.Text(2, 2), "");
}

TEST_F(EditMenuTest, WholeRowsAreRemovedAndRowsInsertedFilledAndSorted) {
  const int rowMiddle = grid.rowViewportPosition(2) + grid.rowHeight(2) / 2;
  QTest::mouseClick(grid.verticalHeader()->viewport(), Qt::LeftButton, {}, {5, rowMiddle});
  Press(Qt::Key_Delete);
  EXPECT_EQ(grid.Text(3, 1), "4.1");
  EXPECT_EQ(program.document.record.nFreqPoints, 4);
  Press(Qt::CTRL | Qt::Key_Plus);
  EXPECT_EQ(grid.Text(3, 1) + grid.Text(4, 1), "4.1");
  Press(Qt::CTRL | Qt::Key_Minus);
  EXPECT_EQ(grid.Text(3, 1), "4.1");
  grid.SetCurrentCell(1, 3);
  Press(Qt::SHIFT | Qt::Key_Down, Qt::CTRL | Qt::Key_D);
  EXPECT_EQ(grid.Text(2, 3), "1.3");
  grid.SetText(1, 1, "99");
  Find<QAction>("mnuEditSort").trigger();
  EXPECT_EQ(grid.Text(4, 1), "99");
}

TEST_F(EditMenuTest, AClipboardWithABlockClosesTheEditorAndARefusedOneChangesNothing) {
  Type("7");
  Copied("1\t2\r\n3\t4\r\n");
  Press(Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(grid.Text(2, 2) + grid.Text(3, 3), "14");
  EXPECT_EQ(FocusName(), "PassData");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(grid.Text(2, 2), "7") << "what was typed before it is a step of its own";
  Copied("0,5\t1\n0,6\t2");
  host.ReplyToBox(Reply::ok);
  Press(Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(grid.Text(2, 2) + grid.Text(3, 3), "73.3");
  form.SelectTab(Tab::start);
  form.SetFocus("iPower");
  Press(Qt::CTRL | Qt::Key_V);
  EXPECT_EQ(form.Text("iPower"), "0,5 1 0,6 2");
}

TEST_F(EditMenuTest, WhatFollowsTheCellsFollowsThemAfterEveryCommand) {
  const auto settles = [this](auto... keys) {
    QSignalSpy settled(&form, &MainWindow::settled);
    while (settled.wait(500)) settled.clear();
    Press(keys...);
    return settled.wait(2000);
  };
  Copied("7\t8\r\n");
  EXPECT_TRUE(settles(Qt::CTRL | Qt::Key_V));
  EXPECT_TRUE(settles(Qt::Key_Delete));
  EXPECT_TRUE(settles(Qt::CTRL | Qt::Key_Z));
}

TEST_F(EditMenuTest, ABoxUndoesItsOwnTypingFirstAndThenTheFormItsSteps) {
  form.SetFocus("tmin");
  form.SetFocus("iPower");
  Type("12");
  form.SetFocus("freqNorm");
  Type("3");
  EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Answer 2");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(form.Text("freqNorm") + form.Text("iPower"), "1012");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(form.Text("iPower"), "-2");
  EXPECT_EQ(FocusName(), "iPower");
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
  EXPECT_EQ(form.Text("iPower"), "12");
}

TEST_F(EditMenuTest, AnUndoneTickThatGreysTheBoxWithTheFocusCanBeDoneAgain) {
  form.SetFocus("chkSigmaZero");
  Press(Qt::Key_Space, Qt::Key_Tab);
  ASSERT_EQ(FocusName(), "sigmaZero");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_FALSE(form.IsChecked("chkSigmaZero") || form.IsEnabled("sigmaZero"));
  Press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
  EXPECT_TRUE(form.IsChecked("chkSigmaZero") && form.IsEnabled("sigmaZero"));
}

TEST_F(EditMenuTest, TicksButtonsAndTheWeightColumnComeBack) {
  form.SetFocus("chkUseWeights");
  Press(Qt::Key_Space);
  EXPECT_FALSE(grid.isColumnHidden(3));
  Click("cmdClearPassData");
  EXPECT_EQ(Caption("mnuEditUndo"), "&Undo Clear Columns");
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_EQ(grid.Text(5, 4), "5.4");
  EXPECT_EQ(program.document.record.nFreqPoints, 5);
  Press(Qt::CTRL | Qt::Key_Z);
  EXPECT_TRUE(grid.isColumnHidden(3));
}

TEST_F(EditMenuTest, MenuKeysOpenNoEditorEvenWhenThereIsNothingToDo) {
  auto& editor = Find<CellEditorBox>("txtCellEditor");
  const auto press = [](Qt::Key key) {
    const QString text(QChar(key - Qt::Key_A + 1));
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), key, text, Qt::ControlModifier);
  };
  for (const Qt::Key key : {Qt::Key_A, Qt::Key_C, Qt::Key_D, Qt::Key_V, Qt::Key_X, Qt::Key_Z,
                            Qt::Key_L, Qt::Key_N, Qt::Key_O, Qt::Key_S}) {
    press(key);
    EXPECT_FALSE(editor.isVisible()) << key;
  }
  press(Qt::Key_B);
  EXPECT_TRUE(editor.isVisible());
}

TEST_F(EditMenuTest, TypedRowsOfANewProblemBecomePointsByAButton) {
  Click("cmdClearPassData");
  grid.SetCurrentCell(1, 1);
  for (int row = 1; row <= 2; ++row) {
    for (int column = 1; column <= 3; ++column) {
      grid.SetCurrentCell(row, column);
      grid.setFocus();
      Type(std::to_string(row));
      Press(Qt::Key_Return);
    }
  }
  auto& keep = Find<QWidget>("cmdKeepPassData");
  EXPECT_TRUE(QTest::qWaitFor([&keep] { return keep.isVisible(); }, 20000));
  EXPECT_EQ(Find<QLabel>("lblUnsavedPassData").text(), "2 rows typed, no points yet.");
  Click("cmdKeepPassData");
  EXPECT_EQ(program.document.record.nFreqPoints, 2);
  EXPECT_FALSE(keep.isVisible());
  EXPECT_EQ(grid.Text(2, 3) + grid.Text(2, 4), "21");
}

}  // namespace
}  // namespace polefit::testing
