#pragma once

#include <QDialog>
#include <array>

#include "exchange/fill_column.h"

class QComboBox;
class QDoubleSpinBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace polefit {

class MainWindow;
class PointsDiagram;
struct Program;

/// Fills a column of the points by a formula, a template's or one's own, at the frequencies that
/// the table has or at new ones. It shows what would come while it is typed.
class FillDialog final : public QDialog {
  Q_OBJECT

 public:
  /// `typed` is all that stands in the tables; `column` is what is filled at first.
  FillDialog(ResponseRecord typed, FillColumn column, QWidget* parent);

  /// What was typed, with the column filled.
  ResponseRecord Filled() const;

 private:
  void Build();
  QWidget* MakeTemplateRow();
  QWidget* MakeFrequencies();
  QWidget* MakeButtons();
  void Connect();
  void ShowTemplate();
  void PutTemplate();
  void Preview();
  void ShowCurve();
  Fill Wanted() const;

  ResponseRecord typed_;
  FilledColumn filled_;

  QComboBox* column_;
  QComboBox* template_;
  std::array<QLabel*, 2> numberNames_;
  std::array<QDoubleSpinBox*, 2> numbers_;
  QLineEdit* expression_;
  QGroupBox* frequencies_;
  QLineEdit* from_;
  QLineEdit* to_;
  QSpinBox* steps_;
  QComboBox* spacing_;
  PointsDiagram* diagram_;
  QLabel* message_;
  QPushButton* fill_;
};

/// Adds Edit > Fill Column, to the tables' context menu too.
void AddFillEntry(MainWindow& form, Program& program);

}  // namespace polefit
