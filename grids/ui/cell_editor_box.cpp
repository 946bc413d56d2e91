#include "grids/ui/cell_editor_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>
#include <optional>
#include <utility>

#include "grids/ui/grid_widget.h"
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

/// The one cell on the clipboard, without the line break that other programs put behind it.
QString ClipboardCell() {
  QString text = QGuiApplication::clipboard()->text();
  while (text.endsWith('\n') || text.endsWith('\r')) text.chop(1);
  return text;
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

void CellEditorBox::SetSelection(int start, int length) {
  // The text box counts UTF-16 units, of which a character may have two.
  const std::u32string characters = text().toStdU32String();
  const auto unitsOf = [&characters](int from, int count) {
    const auto first = std::min(characters.size(), static_cast<std::size_t>(from));
    return static_cast<int>(
        QString::fromStdU32String(characters.substr(first, static_cast<std::size_t>(count)))
            .size());
  };
  setSelection(unitsOf(0, start), unitsOf(start, length));
}

void CellEditorBox::Hide() {
  // First of all the editor counts as hidden, because the focus leaves it below.
  GridWidget* grid = std::exchange(grid_, nullptr);
  if (grid == nullptr) return;
  // On a page that is hidden too, the grid is what gets the focus when the page comes back.
  if (hasFocus() || !grid->isVisible()) grid->setFocus();
  hide();
}

bool CellEditorBox::ClipboardHasBlock() {
  const QString text = QGuiApplication::clipboard()->text();
  const qsizetype at = text.indexOf(QRegularExpression("[\t\r\n]"));
  return at >= 0 && (text.at(at) == '\t' || !text.mid(at).trimmed().isEmpty());
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
  // Where the wheel has moved the cell out of sight, what is typed brings it back.
  if (grid_ != nullptr && !event->text().isEmpty()) grid_->scrollTo(grid_->currentIndex());
  if (const auto key = EditorKeyOf(event->key())) {
    Q_EMIT keyPressed(*key);
  } else if (event->matches(QKeySequence::Paste) && ClipboardHasBlock()) {
    Q_EMIT blockPasted();
  } else if (event->matches(QKeySequence::Paste)) {
    insert(ClipboardCell());
  } else {
    QLineEdit::keyPressEvent(event);
  }
  // Keys that the text does not take would move the grid below.
  event->accept();
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
