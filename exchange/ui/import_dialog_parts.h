#pragma once

#include <QComboBox>
#include <QWidget>

#include "exchange/read/table.h"

class QFormLayout;
class QLabel;

namespace polefit {

/// A box of choices; where the file leaves none it is the text of the one that holds.
class ChoiceBox final : public QComboBox {
 public:
  void SetFixed(bool isFixed);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool isFixed_ = false;
};

/// A box that grows and shrinks with the dialog, whatever its longest entry.
ChoiceBox* MakeChoice(const char* name, const QString& tip);

/// Adds the table's columns, "2: S21 dB", each with its number from 0.
void FillColumns(QComboBox& box, const SourceTable& table);

/// Chooses the entry with this data.
void Choose(QComboBox& box, int data);

/// Two controls on one line, the first taking the spare width.
QWidget* Beside(QWidget* first, QWidget* second);

/// A row of a form; the mnemonic of the label, which is returned, leads to `control`.
QLabel* AddChoice(QFormLayout& rows, const QString& label, QWidget* control,
                  QWidget* second = nullptr);

}  // namespace polefit
