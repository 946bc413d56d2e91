#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <string>

#include "form/field_rules.h"
#include "form/transfer.h"
#include "form/ui/frm_main.h"
#include "grids/grid_routines.h"
#include "grids/ui/grid_widget.h"
#include "platform/scripted_host.h"

namespace polefit::testing {

/// The real main form on the screen, as it stands after a first start, worked by keys and mouse.
class MainForm : public ::testing::Test {
 protected:
  MainForm() {
    form.Attach(program);
    form.PassData().SetRowCount(3);
    form.DelayData().SetRowCount(3);
    SizeGridColumns(Grids(program));
    PutAnswers(program);
    ShowWeightColumn(Grids(program), false);
    ApplyFieldRules(form);
    form.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    form.SetFocus("chkEqualDelay");
    program.DataChanged = 0;
  }

  template <typename W>
  W& Find(const std::string& name) {
    W* widget = form.findChild<W*>(QString::fromStdString(name));
    if (widget == nullptr) throw std::out_of_range("no control " + name);
    return *widget;
  }

  /// Gives the deciding answers that enable every box.
  void EnableAll() {
    form.SetChecked("chkEqualDelay", true);
    form.SetChecked("chkSigmaZero", true);
    for (const char* count : {"nYzeros", "nZpairs", "nZquads"}) form.SetText(count, "1");
    ApplyFieldRules(form);
    program.DataChanged = 0;
  }

  static QString FocusName() {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? QString() : widget->objectName();
  }

  /// A key press to whatever has the focus.
  static void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
  }
  /// Each character goes to what has the focus by then.
  static void Type(const std::string& text) {
    for (const char character : text) QTest::keyClick(QApplication::focusWidget(), character);
  }

  /// Shows `count` points in both grids, each cell its row number.
  void ShowPoints(int count) {
    ResponseRecord& record = program.record;
    record.Slot(slot::kFreqPoints) = record.Slot(slot::kDelayPointCount) = std::to_string(count);
    record.passband.Resize(count + 1);
    record.delay.Resize(count + 1);
    for (int row = 1; row <= count; ++row) {
      for (int column = 1; column <= 4; ++column) {
        record.passband.At(row, column) = std::to_string(row);
      }
      for (int column = 1; column <= 2; ++column)
        record.delay.At(row, column) = std::to_string(row);
    }
    GetAnswers(program);
    QApplication::processEvents();
  }

  ScriptedHost host;
  FrmMain form;
  Program program{host, form};
};

}  // namespace polefit::testing
