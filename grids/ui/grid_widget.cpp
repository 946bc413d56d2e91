#include "grids/ui/grid_widget.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <algorithm>

#include "grids/ui/grid_corner.h"
#include "grids/ui/grid_model.h"
#include "widgets/mark.h"
#include "widgets/program_style.h"
#include "widgets/twips.h"

namespace polefit {

namespace {

constexpr int kDesignRowCount = 4;

/// Whether the window has a menu entry with this key, one that is greyed at present too.
bool IsMenuKey(const QWidget& window, const QKeyEvent& event) {
  const QKeySequence key(event.keyCombination());
  const QList<QAction*> actions = window.findChildren<QAction*>();
  return std::any_of(actions.begin(), actions.end(),
                     [&key](const QAction* action) { return action->shortcuts().contains(key); });
}

/// The character that a key press types, or none: keys that only move, "Del", what belongs to a
/// menu or to a shortcut and Ctrl+Tab. Ctrl with a letter types the control character.
QString TypedCharacter(const QWidget& window, const QKeyEvent& event) {
  const QString text = event.text();
  const bool forMenu =
      (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier)) != 0 || IsMenuKey(window, event);
  const bool typesNothing =
      event.key() == Qt::Key_Delete || event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  if (text.isEmpty() || forMenu || typesNothing) return {};
  const bool isShortcut = event.modifiers() & Qt::ControlModifier;
  if (isShortcut && text.at(0) >= ' ') return {};
  return text.left(text.at(0).isHighSurrogate() ? 2 : 1);
}

/// Fills the selected cells only while their grid has the focus, so that one place at a time says
/// where the keys go.
class CellDelegate final : public QStyledItemDelegate {
 public:
  explicit CellDelegate(QWidget* grid) : QStyledItemDelegate(grid), grid_(grid) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (!grid_->hasFocus()) option->state &= ~QStyle::State_Selected;
  }

 public:
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    // The style has filled a selected cell's row already.
    if (!grid_->hasFocus()) painter->fillRect(option.rect, option.palette.base());
    QStyledItemDelegate::paint(painter, option, index);
    const QVariant fault = index.data(Qt::UserRole);
    if (fault.isValid()) DrawMark(*painter, option.rect, fault.toBool());
  }

 private:
  QWidget* grid_;
};

}  // namespace

GridWidget::GridWidget(const char* name, int columns, int width)
    : model_(new GridModel(columns, this)),
      corner_(new GridCorner(this)),
      columnWidths_(static_cast<std::size_t>(columns)),
      width_(width) {
  setObjectName(name);
  setModel(model_);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ContiguousSelection);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this,
          [this](int section, int, int pixels) { TakeDraggedWidth(section, pixels); });
  connect(horizontalHeader(), &QHeaderView::sectionPressed, this, &GridWidget::mousePressed);
  connect(verticalHeader(), &QHeaderView::sectionPressed, this, [this] {
    areWholeRows_ = true;
    Q_EMIT mousePressed();
  });
  setItemDelegate(new CellDelegate(this));
  connect(this, &QTableView::doubleClicked, this, &GridWidget::cellDoubleClicked);
  horizontalHeader()->setHighlightSections(false);
  verticalHeader()->setHighlightSections(false);
  SetRowCount(kDesignRowCount);
  for (int column = 0; column < columns; ++column) SetColumnWidth(column, TitleWidth(column));
  ApplyMetrics();
  // There is always a current cell.
  ShowChanges();
  setCurrentIndex(model_->index(0, 0));
}

int GridWidget::RowCount() const {
  return model_->GridRowCount();
}

void GridWidget::SetRowCount(int rows) {
  model_->SetGridRowCount(rows);
  // The current cell stays inside the rows that there are.
  if (currentIndex().row() + 1 >= rows) ShowChanges();
  ShowChangesLater();
}

std::string GridWidget::Text(int row, int column) const {
  return model_->Cell(row, column);
}

void GridWidget::SetText(int row, int column, const std::string& text) {
  model_->SetCell(row, column, text);
  ShowChangesLater();
}

void GridWidget::Clear() {
  model_->Clear();
  ShowChangesLater();
}

void GridWidget::SetFormatString(const std::string& format) {
  model_->Apply(ParseFormatString(format));
  corner_->setText(QString::fromStdString(model_->Cell(0, 0)));
  for (int column = 0; column < model_->GridColumnCount(); ++column) {
    SetColumnWidth(column, TitleWidth(column));
  }
  ShowChangesLater();
}

int GridWidget::ColumnWidth(int column) const {
  return columnWidths_.at(static_cast<std::size_t>(column));
}

void GridWidget::SetColumnWidth(int column, int twips) {
  if (ColumnWidth(column) == twips) return;
  columnWidths_.at(static_cast<std::size_t>(column)) = twips;
  ApplyColumnWidth(column);
}

void GridWidget::SetWidth(int twips) {
  width_ = twips;
  updateGeometry();
}

int GridWidget::CurrentRow() const {
  return std::max(currentIndex().row() + 1, 1);
}

int GridWidget::CurrentColumn() const {
  return currentIndex().column() + 1;
}

void GridWidget::SetCurrentRow(int row) {
  ShowChanges();
  setCurrentIndex(model_->index(row - 1, CurrentColumn() - 1));
}

void GridWidget::CollapseSelection() {
  ShowChanges();
  selectionModel()->select(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

QRect GridWidget::CurrentCellRect() {
  ShowChanges();
  scrollTo(currentIndex());
  return visualRect(currentIndex());
}

Qt::Alignment GridWidget::CurrentCellAlignment() const {
  return model_->data(currentIndex(), Qt::TextAlignmentRole).value<Qt::Alignment>();
}

QString GridWidget::CurrentCellName() const {
  return QString::fromStdString(model_->Cell(0, CurrentColumn())) + ' ' +
         QString::number(CurrentRow());
}

CellBlock GridWidget::SelectedBlock() const {
  CellBlock block{CurrentRow(), CurrentRow(), CurrentColumn(), CurrentColumn()};
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    block.firstRow = std::min(block.firstRow, range.top() + 1);
    block.lastRow = std::max(block.lastRow, range.bottom() + 1);
    block.firstColumn = std::min(block.firstColumn, range.left() + 1);
    block.lastColumn = std::max(block.lastColumn, range.right() + 1);
  }
  return block;
}

void GridWidget::SelectBlock(const CellBlock& block) {
  ShowChanges();
  const int lastRow = std::min(block.lastRow, model_->GridRowCount() - 1);
  selectionModel()->select(
      {model_->index(std::min(block.firstRow, lastRow) - 1, block.firstColumn - 1),
       model_->index(lastRow - 1, block.lastColumn - 1)},
      QItemSelectionModel::ClearAndSelect);
}

void GridWidget::SetCurrentCell(int row, int column) {
  ShowChanges();
  setCurrentIndex(model_->index(std::min(row, model_->GridRowCount() - 1) - 1, column - 1));
}

void GridWidget::SetMarks(const std::vector<CellMark>& marks) {
  std::map<std::pair<int, int>, GridModel::Mark> byCell;
  for (const CellMark& mark : marks) {
    byCell.try_emplace({mark.row, mark.column}, GridModel::Mark{mark.isFault, mark.text});
  }
  model_->SetMarks(std::move(byCell));
  viewport()->update();
}

void GridWidget::SetEmptyText(const QString& text) {
  emptyText_ = text;
}

void GridWidget::SetColumnTip(int column, const QString& tip) {
  model_->SetColumnTip(column, tip);
}

QSize GridWidget::sizeHint() const {
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
  return {TwipsToPixels(*this, width_) + scrollBar, QTableView::sizeHint().height()};
}

QSize GridWidget::minimumSizeHint() const {
  return {sizeHint().width(),
          horizontalHeader()->sizeHint().height() + 5 * verticalHeader()->defaultSectionSize()};
}

void GridWidget::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) areWholeRows_ = false;
  Q_EMIT mousePressed();
  QTableView::mousePressEvent(event);
}

void GridWidget::keyPressEvent(QKeyEvent* event) {
  const QString character = TypedCharacter(*window(), *event);
  areWholeRows_ = areWholeRows_ && (event->modifiers() & Qt::ShiftModifier) != 0;
  if (character.isEmpty()) return QTableView::keyPressEvent(event);
  Q_EMIT characterTyped(character);
}

void GridWidget::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (emptyText_.isEmpty() || !model_->IsEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
  const int line = fontMetrics().height();
  const int top =
      rowViewportPosition(model_->rowCount() - 1) + verticalHeader()->defaultSectionSize();
  painter.drawText(viewport()->rect().adjusted(line, top + line, -line, -line),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, emptyText_);
}

void GridWidget::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ApplyMetrics();
  if (event->type() == QEvent::PaletteChange) ApplyGridColor();
}

void GridWidget::showEvent(QShowEvent* event) {
  ApplyGridColor();
  QTableView::showEvent(event);
}

void GridWidget::updateGeometries() {
  QTableView::updateGeometries();
  corner_->setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(),
                       horizontalHeader()->height());
  Q_EMIT cellsMoved();
}

void GridWidget::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  Q_EMIT cellsMoved();
}

void GridWidget::TakeDraggedWidth(int section, int pixels) {
  int& twips = columnWidths_.at(static_cast<std::size_t>(section) + 1);
  if (TwipsToPixels(*this, twips) != pixels) twips = PixelsToTwips(*this, pixels);
  Q_EMIT cellsMoved();
}

void GridWidget::ApplyColumnWidth(int column) {
  const int twips = ColumnWidth(column);
  const int pixels = TwipsToPixels(*this, twips);
  if (column == 0) {
    verticalHeader()->setFixedWidth(pixels);
    return;
  }
  if (twips == 0 && column == CurrentColumn() && column > 1) {
    setCurrentIndex(currentIndex().siblingAtColumn(column - 2));
  }
  // Showing a column gives it its former width for a moment, which is not a dragged one.
  {
    const QSignalBlocker noDrag(horizontalHeader());
    setColumnHidden(column - 1, twips == 0);
    if (twips != 0) setColumnWidth(column - 1, pixels);
  }
  // The blocked signals would have told the table to lay out and paint its cells.
  updateGeometries();
  viewport()->update();
}

void GridWidget::ApplyMetrics() {
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 8 / 5);
  for (int column = 0; column < model_->GridColumnCount(); ++column) ApplyColumnWidth(column);
  updateGeometry();
}

void GridWidget::ApplyGridColor() {
  // The style's own colour cannot be seen on a dark base.
  const QString sheet = "QTableView { gridline-color: " + LineColor(palette()).name() + "; }";
  if (styleSheet() != sheet) setStyleSheet(sheet);
}

int GridWidget::TitleWidth(int column) const {
  // Column 0 has room for the longest row number, so that it need not grow with the rows.
  const QString text =
      column == 0 ? QString("00000") : QString::fromStdString(model_->Cell(0, column));
  return PixelsToTwips(*this, fontMetrics().horizontalAdvance(text) + fontMetrics().height());
}

void GridWidget::ShowChanges() {
  model_->Announce();
}

void GridWidget::ShowChangesLater() {
  if (changesPosted_) return;
  changesPosted_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        changesPosted_ = false;
        ShowChanges();
      },
      Qt::QueuedConnection);
}

}  // namespace polefit
