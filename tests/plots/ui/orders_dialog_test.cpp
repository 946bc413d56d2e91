#include "plots/ui/orders_dialog.h"

#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableWidget>

#include "plots/ui/curves_form.h"

namespace polefit::testing {
namespace {

class OrdersDialogTest : public CurvesDockTest {
 protected:
  template <typename W>
  static W& In(OrdersDialog& dialog, const char* name) {
    return *dialog.findChild<W*>(name);
  }
};

TEST_F(OrdersDialogTest, FillsQuestionsSixToNineInOneStep) {
  OrdersDialog dialog(dock.Live(), &form);
  QSignalSpy ended(&dialog, &OrdersDialog::ended);
  In<QSpinBox>(dialog, "numMostPoles").setValue(5);
  dialog.show();
  ASSERT_TRUE(ended.wait(60000));
  auto& table = In<QTableWidget>(dialog, "tblOrders");
  ASSERT_EQ(table.rowCount(), 4) << "2 to 5: there are 2 zeros";
  EXPECT_FALSE(dialog.findChild<QProgressBar*>()->isVisible());
  EXPECT_GT(3 * In<DiagramView>(dialog, "DiagramOrders").width(), dialog.width());
  EXPECT_FALSE(table.horizontalScrollBar()->isVisible());
  table.selectRow(2);
  EXPECT_EQ(In<DiagramView>(dialog, "DiagramOrders").Marked(), 2U);
  In<QPushButton>(dialog, "cmdTakeOrder").click();
  EXPECT_EQ(form.Text("nPoles"), table.item(2, 1)->text().toStdString());
  EXPECT_NE(form.Text("poleReal"), ".5 .4 .3");
  Find<QAction>("mnuEditUndo").trigger();
  EXPECT_EQ(form.Text("nPoles"), "0 3");
  EXPECT_EQ(form.Text("poleReal"), ".5 .4 .3");
}

TEST_F(OrdersDialogTest, StopsAndCloses) {
  OrdersDialog dialog(dock.Live(), &form);
  In<QSpinBox>(dialog, "numMostPoles").setValue(40);
  In<QPushButton>(dialog, "cmdStopOrders").click();
  EXPECT_EQ(In<QLabel>(dialog, "lblOrders").text(), "Stopped.");
  EXPECT_FALSE(In<QWidget>(dialog, "cmdTakeOrder").isEnabled());
  In<QSpinBox>(dialog, "numMostPoles").setValue(30);  // and away while it tries
}

TEST_F(OrdersDialogTest, SaysWhyNothingCanBeTried) {
  form.SetText("freqNorm", "x");
  OrdersDialog dialog(dock.Live(), &form);
  QSignalSpy ended(&dialog, &OrdersDialog::ended);
  ASSERT_TRUE(ended.wait(60000));
  EXPECT_TRUE(In<QLabel>(dialog, "lblOrders").text().contains("Question 5"));
}

}  // namespace
}  // namespace polefit::testing
