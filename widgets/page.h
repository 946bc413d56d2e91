#pragma once

#include <QScrollArea>
#include <initializer_list>
#include <string_view>

class QGridLayout;
class QLabel;
class QLayout;

namespace polefit {

/// One tab of the main form: rows from top to bottom, in each the response left and the question
/// right. It scrolls only in a window that is too small for it.
class Page final : public QScrollArea {
  Q_OBJECT

 public:
  /// A page whose rows have `columns` cells; the last one takes the spare width.
  explicit Page(int columns = 2);

  void AddHeaders(std::initializer_list<QLabel*> headers);
  /// One cell a column, each as wide as it wants to be.
  void AddRow(std::initializer_list<QWidget*> cells);
  /// A row of its own over the whole width; `stretch` is its share of the spare height.
  void AddWhole(QWidget* widget, int stretch = 0);
  void AddWhole(QLayout* layout, int stretch = 0);
  void AddGap();
  /// The rest of the page stays blank.
  void AddStretch();

  /// How wide the columns in front of the last one are together at least, where the page is wide
  /// enough for it: the questions of all pages then begin on one line.
  void SetLeftEdge(int pixels) { leftEdge_ = pixels; }

  /// The same for every page, so that hidden ones need not be laid out: the window has its size.
  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void LimitBoxes();

  QGridLayout* rows_;
  int leftEdge_ = 0;
  int row_ = 0;
};

}  // namespace polefit
