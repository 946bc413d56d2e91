#pragma once

#include <QLabel>

namespace polefit {

/// Draws a text over a widget, cut to its width.
void DrawCut(QWidget& widget, const QString& text, Qt::Alignment alignment);

/// A label of one line that takes the width that is left; a longer text is cut on the screen only.
class CutLabel final : public QLabel {
  Q_OBJECT

 public:
  CutLabel();

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace polefit
