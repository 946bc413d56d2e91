#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <optional>

#include "form/history.h"
#include "form/table_edits.h"

class QAction;
class QLineEdit;
class QMenu;

namespace polefit {

class CellEditorBox;
class GridWidget;

/// The Edit menu, whose table entries are also the context menu of the tables, and the steps behind
/// Undo. An entry works on what has the focus: the text of a box or the cells of a table.
class EditMenu final : public QObject {
  Q_OBJECT

 public:
  /// Runs what it is given with the program's values and deals with the errors that come out.
  using Guard = std::function<void(const std::function<void(Program&)>&)>;

  EditMenu(QMenu* menu, GridWidget& passData, GridWidget& delayData, CellEditorBox& editor,
           Guard run);

  /// Takes the form as it stands as the first state.
  void Attach(Program& program);
  void ForgetSteps();
  /// Makes a step of what has changed since the last one.
  void Record(const QString& name, StepKind kind = StepKind::edit);

 Q_SIGNALS:
  /// A step was undone or done again; this is where.
  void stepShown(const polefit::FormPlace& place);

 private:
  enum class Entry {
    undo,
    redo,
    cut,
    copy,
    paste,
    clear,
    insertRows,
    deleteRows,
    fillDown,
    sort,
    selectAll
  };
  /// Changes the cells of a table; false when they stay as they are.
  using Change = std::function<bool(FormCells& cells, Table table, const CellBlock& block)>;

  void AddEntries(QMenu* menu);
  void EnableEntries(bool all);
  void ShowStepNames();
  void Choose(Entry entry);
  void Step(FormPlace (History::*move)());
  void ChooseForText(Entry entry, QLineEdit& box);
  void ChooseForTable(Entry entry, GridWidget& grid);
  void Copy(GridWidget& grid);
  void ChangeTable(GridWidget& grid, const QString& name, const Change& change);
  void PasteInto(GridWidget& grid);
  void Delete(GridWidget& grid, const QString& name);
  /// The table that has the focus, itself or by its open editor.
  GridWidget* FocusedGrid() const;
  Table TableOf(const GridWidget& grid) const;

  GridWidget& passData_;
  GridWidget& delayData_;
  CellEditorBox& editor_;
  Guard run_;
  std::optional<History> history_;
  std::map<Entry, QAction*> actions_;
};

}  // namespace polefit
