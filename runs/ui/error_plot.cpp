#include "runs/ui/error_plot.h"

#include <QEvent>
#include <algorithm>
#include <cmath>

#include "plots/ui/curve_style.h"
#include "plots/ui/logarithmic_ticker.h"

namespace polefit {

ErrorPlot::ErrorPlot() {
  setObjectName("errorPlot");
  setAccessibleName(tr("Error against evaluations"));
  setToolTip(accessibleName());
  setFocusPolicy(Qt::NoFocus);
  addGraph();
  yAxis->setScaleType(QCPAxis::stLogarithmic);
  yAxis->setTicker(QSharedPointer<QCPAxisTicker>(new LogarithmicTicker));
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
  // Only whole decades have figures.
  yAxis->setRange(std::pow(10, std::floor(std::log10(yAxis->range().lower))),
                  std::pow(10, std::ceil(std::log10(yAxis->range().upper))));
  replot(QCustomPlot::rpQueuedReplot);
}

/// As many figures as there is room for; in a low panel they have all of it.
void ErrorPlot::resizeEvent(QResizeEvent* event) {
  QCustomPlot::resizeEvent(event);
  constexpr int kLinesWithNames = 9;
  constexpr int kMostFigures = 6;
  const int line = fontMetrics().height();
  const bool hasNames = height() >= kLinesWithNames * line;
  xAxis->setLabel(hasNames ? tr("Evaluations") : QString());
  yAxis->setLabel(hasNames ? tr("rms error") : QString());
  xAxis->ticker()->setTickCount(std::clamp(width() / (7 * line), 1, kMostFigures));
  yAxis->ticker()->setTickCount(std::clamp(height() / (3 * line), 1, kMostFigures));
}

void ErrorPlot::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) TakePalette();
}

void ErrorPlot::TakePalette() {
  const QColor text = palette().color(QPalette::Text);
  setBackground(palette().color(QPalette::Base));
  for (QCPAxis* const axis : {xAxis, yAxis}) {
    axis->setBasePen(text);
    axis->setTickPen(text);
    axis->setSubTickPen(text);
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
