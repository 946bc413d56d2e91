#pragma once

#include <QWidget>

#include "form/table_edits.h"

class QLabel;
class QPushButton;

namespace polefit {

/// The line beside a table: only what a save would leave out of it, and a button that makes the
/// full rows points.
class TableNote final : public QWidget {
  Q_OBJECT

 public:
  /// `tableName` is that of the table beside it.
  TableNote(Table table, const QString& tableName);

  void ShowFor(const FormCells& cells);

 Q_SIGNALS:
  void keepWanted();

 private:
  Table table_;
  QLabel* text_;
  QPushButton* keep_;
};

}  // namespace polefit
