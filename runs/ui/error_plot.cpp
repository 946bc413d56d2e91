#include "runs/ui/error_plot.h"

#include <QEvent>

#include "plots/ui/curve_style.h"

namespace polefit {

ErrorPlot::ErrorPlot() {
  setObjectName("errorPlot");
  setAccessibleName(tr("Error against evaluations"));
  setFocusPolicy(Qt::NoFocus);
  addGraph();
  xAxis->setLabel(tr("Evaluations"));
  yAxis->setLabel(tr("rms error"));
  yAxis->setScaleType(QCPAxis::stLogarithmic);
  yAxis->setTicker(QSharedPointer<QCPAxisTickerLog>(new QCPAxisTickerLog));
  yAxis->setNumberFormat("eb");
  yAxis->setNumberPrecision(0);
  TakePalette();
}

void ErrorPlot::Clear() {
  last_ = 0;
  graph(0)->data()->clear();
  replot();
}

void ErrorPlot::Add(int evaluations, double rms) {
  if (evaluations <= last_ || rms <= 0) return;
  last_ = evaluations;
  graph(0)->addData(evaluations, rms);
  rescaleAxes();
  xAxis->setRangeLower(0);
  constexpr double kRoom = 1.3;  // above and below the line, on the logarithmic scale
  yAxis->setRange(yAxis->range().lower / kRoom, yAxis->range().upper * kRoom);
  replot(QCustomPlot::rpQueuedReplot);
}

void ErrorPlot::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) TakePalette();
}

void ErrorPlot::TakePalette() {
  const QColor text = palette().color(QPalette::Text);
  setBackground(palette().color(QPalette::Base));
  for (QCPAxis* const axis : {xAxis, yAxis}) {
    for (const QPen& pen : {QPen(text)}) {
      axis->setBasePen(pen);
      axis->setTickPen(pen);
      axis->setSubTickPen(pen);
    }
    axis->setTickLabelColor(text);
    axis->setLabelColor(text);
    axis->setTickLabelFont(font());
    axis->setLabelFont(font());
    QColor grid = text;
    grid.setAlphaF(0.2F);
    axis->grid()->setPen({grid, 0, Qt::DotLine});
  }
  graph(0)->setPen({ColorOf(SeriesRole::typed, palette()), 1.8});
}

}  // namespace polefit
