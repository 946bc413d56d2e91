#pragma once

#include <QLabel>
#include <QStringList>

namespace polefit {

/// How wide a widget must be to draw a text of one line with its gaps.
int WidthOf(const QWidget& widget, const QString& text);

/// The first of these texts that a widget has the width for; where it has none, the last one, cut.
/// They say the same thing in less and less words.
QString FittingText(const QWidget& widget, const QStringList& texts);

/// Draws the text that fits over a widget.
void DrawFitting(QWidget& widget, const QStringList& texts, Qt::Alignment alignment);

/// A label of one line that takes the width that is left and shows what fits there. Its text, for
/// those who do not see it, is the first one.
class CutLabel final : public QLabel {
  Q_OBJECT

 public:
  CutLabel();

  /// Replaces the text by one that may be said in other words, too.
  void SetTexts(const QStringList& texts);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QStringList shorter_;
};

}  // namespace polefit
