#include "widgets/page.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>

#include "widgets/answer_edit.h"

namespace polefit {

Page::Page(int columns) {
  setFrameShape(NoFrame);
  setWidgetResizable(true);
  setFocusPolicy(Qt::NoFocus);
  auto* content = new QWidget;
  // A click beside the boxes leaves the one that has the focus.
  content->setFocusPolicy(Qt::ClickFocus);
  rows_ = new QGridLayout(content);
  const int line = fontMetrics().height();
  rows_->setContentsMargins(line, line, line, line);
  rows_->setHorizontalSpacing(line);
  rows_->setVerticalSpacing(line * 2 / 3);
  rows_->setColumnStretch(columns - 1, 1);
  // Beyond this width the rows would only drift apart.
  content->setMaximumWidth(80 * line);
  setWidget(content);
  // The tab's own background shows through.
  content->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
}

void Page::AddHeaders(std::initializer_list<QLabel*> headers) {
  int column = 0;
  for (QLabel* header : headers) rows_->addWidget(header, row_, column++, Qt::AlignBottom);
  ++row_;
  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  AddWhole(line);
}

void Page::AddRow(std::initializer_list<QWidget*> cells) {
  int column = 0;
  for (QWidget* cell : cells) rows_->addWidget(cell, row_, column++, Qt::AlignTop);
  ++row_;
}

void Page::AddWhole(QWidget* widget, int stretch) {
  rows_->addWidget(widget, row_, 0, 1, rows_->columnCount());
  rows_->setRowStretch(row_++, stretch);
}

void Page::AddWhole(QLayout* layout, int stretch) {
  rows_->addLayout(layout, row_, 0, 1, rows_->columnCount());
  rows_->setRowStretch(row_++, stretch);
}

void Page::AddGap() {
  rows_->setRowMinimumHeight(row_++, fontMetrics().height() / 2);
}

void Page::AddStretch() {
  rows_->setRowStretch(row_++, 1);
}

void Page::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  // The questions keep at least as much room as the responses.
  const int before = rows_->columnCount() - 2;
  const bool hasRoom = before >= 0 && viewport()->width() >= 2 * leftEdge_;
  int edge = hasRoom ? leftEdge_ : 0;
  for (int column = 0; column < before; ++column) {
    edge -= rows_->cellRect(0, column).width() + rows_->horizontalSpacing();
  }
  if (before >= 0) rows_->setColumnMinimumWidth(before, std::max(0, edge));
  LimitBoxes();
}

/// The questions of a narrow page, or of one in a large font, would have no room beside the boxes.
void Page::LimitBoxes() {
  constexpr int kLargestShare = 55;  // per cent
  for (int row = 0; row < row_; ++row) {
    const QLayoutItem* response = rows_->itemAtPosition(row, 0);
    if (response == nullptr || response == rows_->itemAtPosition(row, 1)) continue;
    if (auto* box = qobject_cast<AnswerEdit*>(response->widget())) {
      box->setMaximumWidth(viewport()->width() * kLargestShare / 100);
    }
  }
}

QSize Page::sizeHint() const {
  return minimumSizeHint();
}

}  // namespace polefit
