#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "form/history.h"
#include "form/ui/form_tables.h"

class QAction;
class QLineEdit;
class QMenu;

namespace polefit {

class GridWidget;

/// The Edit menu, whose table entries are also the context menu of the tables, and the steps behind
/// Undo. An entry works on what has the focus: the text of a box or the cells of a table.
class EditMenu final : public QObject {
  Q_OBJECT

 public:
  EditMenu(QMenu* menu, FormTables& tables, ProgramGuard run);

  /// Takes the form as it stands as the first state.
  void Attach(Program& program);
  void ForgetSteps();
  /// Makes a step of what has changed since the last one.
  void Record(const QString& name, StepKind kind = StepKind::edit);

  /// Gets a pasted text that is no block of plain numbers; false when it can do nothing with it
  /// either.
  std::function<bool(const std::string& text, Table table)> takeOther;

 Q_SIGNALS:
  /// A step was undone or done again; this is where.
  void stepShown(const polefit::FormPlace& place);
  /// The form may be another than at the last step.
  void recorded();

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

  FormTables& tables_;
  ProgramGuard run_;
  std::optional<History> history_;
  std::map<Entry, QAction*> actions_;
  /// While a step is shown, boxes are greyed and so left; that is no typing.
  bool isStepping_ = false;
};

}  // namespace polefit
