#include "form/ui/edit_menu.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <utility>

#include "grids/cell_editor.h"
#include "grids/ui/cell_editor_box.h"
#include "grids/ui/grid_widget.h"
#include "platform/message_style.h"

namespace polefit {

EditMenu::EditMenu(QMenu* menu, FormTables& tables, ProgramGuard run)
    : QObject(menu), tables_(tables), run_(std::move(run)) {
  AddEntries(menu);
  // Shortcuts of entries that are greyed would reach the table as characters.
  connect(menu, &QMenu::aboutToShow, this, [this] { EnableEntries(false); });
  connect(menu, &QMenu::aboutToHide, this, [this] { EnableEntries(true); });
  connect(&tables_.Editor(), &CellEditorBox::blockPasted, this, [this] { Choose(Entry::paste); });
}

void EditMenu::AddEntries(QMenu* menu) {
  struct Line {
    const char* name;
    QString caption;
    const char* shortcut;
    const char* icon;
    Entry entry;
    bool isForTable = true;
    bool isSeparated = false;
  };
  const Line lines[] = {
      {"mnuEditUndo", tr("&Undo"), "Ctrl+Z", "edit-undo", Entry::undo, false},
      {"mnuEditRedo", tr("&Redo"), "Ctrl+Shift+Z", "edit-redo", Entry::redo, false},
      {"mnuEditCut", tr("Cu&t"), "Ctrl+X", "edit-cut", Entry::cut, true, true},
      {"mnuEditCopy", tr("&Copy"), "Ctrl+C", "edit-copy", Entry::copy},
      {"mnuEditPaste", tr("&Paste"), "Ctrl+V", "edit-paste", Entry::paste},
      {"mnuEditDelete", tr("&Delete"), "Del", "edit-delete", Entry::clear},
      {"mnuEditInsertRows", tr("&Insert Rows"), "Ctrl++", "list-add", Entry::insertRows, true,
       true},
      {"mnuEditDeleteRows", tr("Delete R&ows"), "Ctrl+-", "list-remove", Entry::deleteRows},
      {"mnuEditFillDown", tr("&Fill Down"), "Ctrl+D", "go-down", Entry::fillDown},
      {"mnuEditSort", tr("&Sort by Frequency"), "", "view-sort-ascending", Entry::sort},
      {"mnuEditSelectAll", tr("Select &All"), "Ctrl+A", "edit-select-all", Entry::selectAll, true,
       true},
  };
  for (const Line& line : lines) {
    if (line.isSeparated) menu->addSeparator();
    QAction* action = menu->addAction(QIcon::fromTheme(line.icon), line.caption);
    action->setObjectName(line.name);
    action->setShortcut(QKeySequence(line.shortcut));
    // Elsewhere than in a table the keys from Del on are another one's.
    if (line.entry >= Entry::clear) action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, entry = line.entry] { Choose(entry); });
    actions_[line.entry] = action;
    if (!line.isForTable) continue;
    for (GridWidget* grid : {&tables_.PassData(), &tables_.DelayData()}) {
      for (QWidget* part :
           {static_cast<QWidget*>(grid), static_cast<QWidget*>(grid->verticalHeader())}) {
        part->addAction(action);
        part->setContextMenuPolicy(Qt::ActionsContextMenu);
      }
    }
  }
}

void EditMenu::Attach(Program& program) {
  history_.emplace(program);
}

void EditMenu::ForgetSteps() {
  if (!history_) return;
  history_->Forget();
  ShowStepNames();
}

void EditMenu::Record(const QString& name, StepKind kind) {
  if (!history_ || isStepping_) return;
  history_->Record(name.toStdString(), kind);
  ShowStepNames();
  Q_EMIT recorded();
}

void EditMenu::ShowStepNames() {
  const auto show = [this](Entry entry, const QString& verb, const std::string& step) {
    actions_[entry]->setText(step.empty() ? verb : verb + ' ' + QString::fromStdString(step));
  };
  show(Entry::undo, tr("&Undo"), history_->UndoName());
  show(Entry::redo, tr("&Redo"), history_->RedoName());
}

void EditMenu::EnableEntries(bool all) {
  const auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  const bool isTable = tables_.Focused() != nullptr;
  const bool isText = box != nullptr && !box->isReadOnly();
  for (const auto& [entry, action] : actions_) {
    const bool isForText = entry <= Entry::clear || entry == Entry::selectAll;
    action->setEnabled(all || isTable || (isText && isForText));
  }
  actions_[Entry::undo]->setEnabled(all || (history_ && history_->CanUndo()) ||
                                    (box != nullptr && box->isUndoAvailable()));
  actions_[Entry::redo]->setEnabled(all || (history_ && history_->CanRedo()));
}

void EditMenu::Choose(Entry entry) {
  if (entry == Entry::undo) return Step(&History::Undo);
  if (entry == Entry::redo) return Step(&History::Redo);
  auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  const bool isBlock =
      box == &tables_.Editor() && entry == Entry::paste && CellEditorBox::ClipboardHasBlock();
  if (box != nullptr && !isBlock &&
      (box != &tables_.Editor() || entry <= Entry::clear || entry == Entry::selectAll)) {
    ChooseForText(entry, *box);
  } else if (GridWidget* grid = tables_.Focused()) {
    ChooseForTable(entry, *grid);
  }
}

void EditMenu::Step(FormPlace (History::*move)()) {
  run_([this, move](Program& program) {
    HideCellEditor(program.windows.grids, false);
    // What was typed and not yet left is a step of its own.
    Record(tr("Typing"));
    const FormPlace place = [&] {
      const QScopedValueRollback<bool> stepping(isStepping_, true);
      return ((*history_).*move)();
    }();
    ShowStepNames();
    Q_EMIT stepShown(place);
  });
}

void EditMenu::ChooseForText(Entry entry, QLineEdit& box) {
  switch (entry) {
    case Entry::cut:
      return box.cut();
    case Entry::copy:
      return box.copy();
    case Entry::paste:
      return box.paste();
    case Entry::clear:
      return box.del();
    case Entry::selectAll:
      return box.selectAll();
    default:
      return;
  }
}

void EditMenu::ChooseForTable(Entry entry, GridWidget& grid) {
  using Cells = FormCells&;
  const QString name = actions_[entry]->text().remove('&');
  switch (entry) {
    case Entry::cut:
      Copy(grid);
      return Delete(grid, name);
    case Entry::copy:
      return Copy(grid);
    case Entry::paste:
      return PasteInto(grid);
    case Entry::clear:
      return Delete(grid, name);
    case Entry::insertRows:
      return ChangeTable(grid, name, InsertRows);
    case Entry::deleteRows:
      return ChangeTable(grid, name, [](Cells cells, Table table, const CellBlock& block) {
        DeleteRows(cells, table, block.firstRow, block.lastRow);
        return true;
      });
    case Entry::fillDown:
      return ChangeTable(grid, name, [](Cells cells, Table table, const CellBlock& block) {
        FillDown(cells, table, block);
        return true;
      });
    case Entry::sort:
      return ChangeTable(grid, name, [](Cells cells, Table table, const CellBlock&) {
        SortByFrequency(cells, table);
        return true;
      });
    case Entry::selectAll:
      return grid.selectAll();
    case Entry::undo:
    case Entry::redo:
      return;
  }
}

void EditMenu::Copy(GridWidget& grid) {
  run_([&](Program& program) {
    const std::string text =
        CopyBlock(CellsOf(program), tables_.TableOf(grid), grid.SelectedBlock());
    QApplication::clipboard()->setText(QString::fromStdString(text));
  });
}

void EditMenu::Delete(GridWidget& grid, const QString& name) {
  ChangeTable(grid, name, [&grid](FormCells& cells, Table table, const CellBlock& block) {
    if (grid.AreWholeRows()) {
      DeleteRows(cells, table, block.firstRow, block.lastRow);
    } else {
      ClearBlock(cells, table, block);
    }
    return true;
  });
}

void EditMenu::PasteInto(GridWidget& grid) {
  const std::string text = QApplication::clipboard()->text().toStdString();
  std::string refusal;
  ChangeTable(grid, tr("Paste"), [&](FormCells& cells, Table table, const CellBlock& block) {
    refusal = Paste(cells, table, block.firstRow, block.firstColumn, text);
    return refusal.empty();
  });
  if (refusal.empty()) return;
  run_([&](Program& program) {
    if (takeOther && takeOther(text, tables_.TableOf(grid))) {
      return Record(tr("Paste"), StepKind::replacesDocument);
    }
    program.host.MessageBox(refusal, message_style::kExclamation, tr("Paste").toStdString());
  });
}

void EditMenu::ChangeTable(GridWidget& grid, const QString& name, const Change& change) {
  run_([&](Program& program) {
    HideCellEditor(program.windows.grids, false);
    Record(tr("Edit Cell"));
    const CellBlock block = grid.SelectedBlock();
    FormCells cells = CellsOf(program);
    if (!change(cells, tables_.TableOf(grid), block)) return;
    ShowCells(program, cells);
    Record(name);
    grid.SetCurrentCell(block.firstRow, block.firstColumn);
    grid.SelectBlock(block);
  });
}

}  // namespace polefit
