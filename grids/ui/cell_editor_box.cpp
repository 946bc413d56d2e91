#include "grids/ui/cell_editor_box.h"

#include <QKeyEvent>
#include <QPainter>
#include <optional>
#include <utility>

#include "grids/ui/grid_widget.h"
#include "widgets/focus_reason.h"
#include "widgets/one_line.h"

namespace polefit {

namespace {

std::optional<EditorKey> EditorKeyOf(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return EditorKey::enter;
    case Qt::Key_Escape:
      return EditorKey::escape;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return EditorKey::tab;
    case Qt::Key_Up:
      return EditorKey::up;
    case Qt::Key_Down:
      return EditorKey::down;
    default:
      return std::nullopt;
  }
}

}  // namespace

CellEditorBox::CellEditorBox() {
  setObjectName("txtCellEditor");
  setFrame(false);
  KeepToOneLine(*this);
  hide();
}

void CellEditorBox::ShowOver(GridView& grid) {
  grid_ = dynamic_cast<GridWidget*>(&grid);
  if (parentWidget() != grid_->viewport()) setParent(grid_->viewport());
  setFont(grid_->font());
  setAlignment(grid_->CurrentCellAlignment());
  setAccessibleName(grid_->CurrentCellName());
  setGeometry(grid_->CurrentCellRect());
  show();
  raise();
  setFocus();
}

void CellEditorBox::Hide() {
  // First of all the editor counts as hidden, because the focus leaves it below.
  GridWidget* grid = std::exchange(grid_, nullptr);
  if (grid == nullptr) return;
  if (hasFocus()) grid->setFocus();
  hide();
}

bool CellEditorBox::event(QEvent* event) {
  // The Tab key commits; it does not go on to the next control.
  if (event->type() == QEvent::KeyPress) {
    keyPressEvent(static_cast<QKeyEvent*>(event));
    return true;
  }
  return QLineEdit::event(event);
}

void CellEditorBox::keyPressEvent(QKeyEvent* event) {
  if (const auto key = EditorKeyOf(event->key())) {
    Q_EMIT keyPressed(*key);
  } else {
    QLineEdit::keyPressEvent(event);
  }
  // Keys that the text does not take would move the grid below.
  event->accept();
}

void CellEditorBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  if (FocusMovesInProgram(event->reason())) Q_EMIT focusReceived();
}

void CellEditorBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (FocusMovesInProgram(event->reason())) Q_EMIT focusLeft();
}

void CellEditorBox::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CellEditorBox::FollowCell() {
  if (grid_ != nullptr) setGeometry(grid_->visualRect(grid_->currentIndex()));
}

}  // namespace polefit
