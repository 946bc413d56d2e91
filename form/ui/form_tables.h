#pragma once

#include <QObject>
#include <functional>
#include <vector>

#include "form/history.h"
#include "form/table_edits.h"

class QWidget;

namespace polefit {

class CellEditorBox;
class GridWidget;
class TableNote;

/// Runs what it is given with the program's values and deals with the errors that come out.
using ProgramGuard = std::function<void(const std::function<void(Program&)>&)>;

/// A place on the form with a finding.
struct FormMark {
  FormPlace place;
  bool isFault = false;
  QString text;
};

/// The two tables of the main form with their one editor and the lines beside them. It forwards
/// what the user does in them to the routines of the grids, and shows what follows the cells.
class FormTables final : public QObject {
  Q_OBJECT

 public:
  /// The widgets find their parents on the pages that they are put on.
  explicit FormTables(ProgramGuard run);

  GridWidget& PassData() const { return *passData_; }
  GridWidget& DelayData() const { return *delayData_; }
  CellEditorBox& Editor() const { return *editor_; }
  TableNote* PassNote() const { return passNote_; }
  TableNote* DelayNote() const { return delayNote_; }
  /// The table that has the focus, itself or by its open editor, or none.
  GridWidget* Focused() const;
  Table TableOf(const GridWidget& grid) const;

  void EditorGotFocus();
  void EditorLostFocus();
  /// Shows or hides the lines beside the tables.
  void ShowNotes();
  /// Underlines the cells among these places and no others.
  void ShowMarks(const std::vector<FormMark>& marks);

 Q_SIGNALS:
  /// The button beside a table.
  void keepWanted(polefit::Table table);
  /// What has changed since the last step is one of this name.
  void stepMade(const QString& name);

 private:
  void ConnectGrid(GridWidget& grid);
  void RunInTable(const std::function<void(Program&)>& action);

  ProgramGuard run_;
  GridWidget* passData_;
  GridWidget* delayData_;
  CellEditorBox* editor_;
  TableNote* passNote_;
  TableNote* delayNote_;
};

}  // namespace polefit
