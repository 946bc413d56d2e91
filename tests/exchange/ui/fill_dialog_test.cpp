#include "exchange/ui/fill_dialog.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include "form/ui/main_form.h"

namespace polefit::testing {
namespace {

class FillDialogTest : public MainForm {
 protected:
  FillDialogTest() {
    AddFillEntry(form, program);
    form.SelectTab(Tab::passbandData);
    form.ForgetSteps();
  }

  /// Chooses Edit > Fill Column and does this in the dialog that comes up.
  void Fill(const std::function<void(FillDialog&)>& use) {
    bool isUp = false;
    QTimer::singleShot(0, &form, [&] {
      auto* dialog = qobject_cast<FillDialog*>(QApplication::activeModalWidget());
      isUp = dialog != nullptr;
      if (isUp) use(*dialog);
    });
    Find<QAction>("mnuEditFillColumn").trigger();
    EXPECT_TRUE(isUp);
  }
  template <typename W>
  static W& In(FillDialog& dialog, const char* name) {
    return *dialog.findChild<W*>(name);
  }
  static void SetFormula(FillDialog& dialog, const char* text) {
    In<QLineEdit>(dialog, "fillExpression").setText(text);
  }
  static std::string Said(FillDialog& dialog) {
    return In<QLabel>(dialog, "lblFill").text().toStdString();
  }
  static void Accept(FillDialog& dialog) { In<QPushButton>(dialog, "cmdFill").click(); }

  GridWidget& grid = Find<GridWidget>("PassData");
};

TEST_F(FillDialogTest, ANewTableIsMadeFromATemplateAtNewFrequenciesAsOneStep) {
  Find<GridWidget>("PassData").SetCurrentCell(1, 3);
  Fill([](FillDialog& dialog) {
    EXPECT_EQ(In<QComboBox>(dialog, "fillColumn").currentText(), "Yout");
    EXPECT_TRUE(In<QGroupBox>(dialog, "fillGrid").isChecked()) << "the table has no rows";
    EXPECT_EQ(Said(dialog), "21 rows.");
    In<QComboBox>(dialog, "fillTemplate").setCurrentText("Butterworth low-pass");
    In<QDoubleSpinBox>(dialog, "fillNumber1").setValue(3);
    EXPECT_EQ(In<QLineEdit>(dialog, "fillExpression").text(), "1/sqrt(1 + x^6)");
    In<QSpinBox>(dialog, "fillSteps").setValue(10);
    Accept(dialog);
  });
  EXPECT_EQ(grid.Text(11, 1), "10");
  EXPECT_EQ(grid.Text(11, 3), "0.707106781");
  EXPECT_EQ(grid.Text(11, 4), "1") << "the hidden weight";
  EXPECT_EQ(program.document.record.nFreqPoints, 0) << "Yin is still empty";
  Fill([](FillDialog& dialog) {
    EXPECT_FALSE(In<QGroupBox>(dialog, "fillGrid").isChecked());
    In<QComboBox>(dialog, "fillColumn").setCurrentText("Yin");
    SetFormula(dialog, "yout^2 + 0.5");
    Accept(dialog);
  });
  EXPECT_EQ(grid.Text(11, 2), "1");
  EXPECT_EQ(program.document.record.nFreqPoints, 11);
  EXPECT_EQ(Find<QAction>("mnuEditUndo").text(), "&Undo Fill Column");
  for (int step = 0; step < 2; ++step) Find<QAction>("mnuEditUndo").trigger();
  EXPECT_EQ(grid.Text(1, 1), "");
}

TEST_F(FillDialogTest, WhatCannotBeFilledIsSaidWithItsPlaceAndNothingIsTaken) {
  ShowPoints(5);
  grid.SetText(8, 2, "behind the points");
  Fill([](FillDialog& dialog) {
    auto& fill = In<QPushButton>(dialog, "cmdFill");
    SetFormula(dialog, "1 + sqr(x)");
    EXPECT_EQ(Said(dialog).substr(0, 12), "Character 5:");
    EXPECT_FALSE(fill.isEnabled());
    SetFormula(dialog, "f");
    EXPECT_EQ(Said(dialog), "Row 6: f is not a number there.");
    In<QGroupBox>(dialog, "fillGrid").setChecked(true);
    In<QSpinBox>(dialog, "fillSteps").setValue(5);
    EXPECT_EQ(
        Said(dialog),
        "The new frequencies end at row 6, and the table has 8 typed rows; take more steps or "
        "delete the rows first.");
    EXPECT_FALSE(fill.isEnabled());
    In<QSpinBox>(dialog, "fillSteps").setValue(7);
    EXPECT_TRUE(fill.isEnabled());
    dialog.reject();
  });
  EXPECT_EQ(grid.Text(5, 2) + grid.Text(8, 2), "5.2behind the points");
  EXPECT_FALSE(Find<QAction>("mnuEditUndo").text().contains("Fill"));
}

}  // namespace
}  // namespace polefit::testing
