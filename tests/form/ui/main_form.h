#pragma once

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QTest>
#include <string>

#include "form/changes.h"
#include "form/field_rules.h"
#include "form/transfer.h"
#include "form/ui/main_window.h"
#include "grids/grid_routines.h"
#include "grids/ui/cell_editor_box.h"
#include "grids/ui/grid_widget.h"
#include "platform/scripted_host.h"
#include "record/points.h"

namespace polefit::testing {

/// The real main form on the screen, as it stands after a first start, worked by keys and mouse.
class MainForm : public ::testing::Test {
 protected:
  MainForm() {
    form.Attach(program);
    form.PassData().SetRowCount(3);
    form.DelayData().SetRowCount(3);
    SizeGridColumns(program.windows.grids);
    PutAnswers(program);
    ShowWeightColumn(program.windows.grids, false);
    ApplyFieldRules(form);
    form.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    form.SetFocus("chkEqualDelay");
    program.document.DataChanged = 0;
    NoteShown(program);
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
    program.document.DataChanged = 0;
  }

  static std::string FocusName() {
    const QWidget* widget = QApplication::focusWidget();
    return widget == nullptr ? "" : widget->objectName().toStdString();
  }

  /// Presses keys or types characters, each into what has the focus by then.
  static void Press(auto... keys) {
    for (const QKeyCombination key : {QKeyCombination(keys)...}) {
      QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
    }
  }
  static void Type(const std::string& text) {
    for (const char character : text) QTest::keyClick(QApplication::focusWidget(), character);
  }
  void Click(const std::string& name) { QTest::mouseClick(&Find<QWidget>(name), Qt::LeftButton); }

  /// Shows `count` points in both grids, each cell its row number.
  void ShowPoints(int count) {
    SetPoints(program.document.record, count);
    GetAnswers(program);
    QApplication::processEvents();
  }

  ScriptedHost host;
  MainWindow form;
  Program program{host, form};
};

}  // namespace polefit::testing
