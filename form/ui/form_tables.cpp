#include "form/ui/form_tables.h"

#include <QApplication>
#include <map>
#include <utility>

#include "form/ui/table_note.h"
#include "grids/cell_editor.h"
#include "grids/ui/cell_editor_box.h"
#include "grids/ui/grid_widget.h"

namespace polefit {

FormTables::FormTables(ProgramGuard run)
    : run_(std::move(run)),
      passData_(new GridWidget("PassData", 5, 6810)),
      delayData_(new GridWidget("DelayData", 3, 5200)),
      editor_(new CellEditorBox),
      passNote_(new TableNote(Table::passband, "PassData")),
      delayNote_(new TableNote(Table::delay, "DelayData")) {
  passData_->SetFormatString("#|^Frequency|^Yin|^Yout|^Weight;#|1|2|3");
  delayData_->SetFormatString("#|^Frequency|^Delay (tx);#|1|2|3");
  // The editor lies on the passband tab at first.
  editor_->setParent(passData_->viewport());
  ConnectGrid(*passData_);
  ConnectGrid(*delayData_);
  connect(passNote_, &TableNote::keepWanted, this, [this] { Q_EMIT keepWanted(Table::passband); });
  connect(delayNote_, &TableNote::keepWanted, this, [this] { Q_EMIT keepWanted(Table::delay); });
  connect(editor_, &CellEditorBox::keyPressed, this, [this](EditorKey key) {
    RunInTable([key](Program& program) { CellEditorKeyPressed(program.windows.grids, key); });
  });
}

void FormTables::ConnectGrid(GridWidget& grid) {
  connect(&grid, &GridWidget::cellsMoved, editor_, &CellEditorBox::FollowCell);
  connect(&grid, &GridWidget::mousePressed, this, [this, &grid] {
    RunInTable([&grid](Program& program) { GridMousePressed(program.windows.grids, grid); });
  });
  connect(&grid, &GridWidget::cellDoubleClicked, this, [this, &grid] {
    RunInTable([&grid](Program& program) { GridDoubleClicked(program.windows.grids, grid); });
  });
  connect(&grid, &GridWidget::characterTyped, this, [this, &grid](const QString& character) {
    RunInTable([&](Program& program) {
      GridCharacterTyped(program.windows.grids, grid, character.toStdString());
    });
  });
}

void FormTables::RunInTable(const std::function<void(Program&)>& action) {
  run_(action);
  Q_EMIT stepMade(tr("Edit Cell"));
}

GridWidget* FormTables::Focused() const {
  QWidget* focus = QApplication::focusWidget();
  for (GridWidget* grid : {passData_, delayData_}) {
    if (focus == grid || (focus == editor_ && grid->isAncestorOf(focus))) return grid;
  }
  return nullptr;
}

Table FormTables::TableOf(const GridWidget& grid) const {
  return &grid == passData_ ? Table::passband : Table::delay;
}

void FormTables::EditorGotFocus() {
  RunInTable([](Program& program) { CellEditorGotFocus(program.windows.grids); });
}

void FormTables::EditorLostFocus() {
  RunInTable([](Program& program) { CellEditorLostFocus(program.windows.grids); });
}

void FormTables::ShowNotes() {
  run_([this](Program& program) {
    const FormCells cells = CellsOf(program);
    passNote_->ShowFor(cells);
    delayNote_->ShowFor(cells);
  });
}

void FormTables::ShowMarks(const std::vector<FormMark>& marks) {
  std::map<std::string, std::vector<GridWidget::CellMark>> cells;
  for (const FormMark& mark : marks) {
    if (mark.place.row == 0) continue;
    cells[mark.place.control].push_back(
        {mark.place.row, mark.place.column, mark.isFault, mark.text});
  }
  for (GridWidget* grid : {passData_, delayData_}) {
    grid->SetMarks(cells[grid->objectName().toStdString()]);
  }
}

}  // namespace polefit
