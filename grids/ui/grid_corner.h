#pragma once

#include <QWidget>

namespace polefit {

/// The header cell where row and column headers meet, which the table view leaves blank.
class GridCorner final : public QWidget {
 public:
  using QWidget::QWidget;

  void setText(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
};

}  // namespace polefit
