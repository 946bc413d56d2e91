#include "runs/ui/error_plot.h"

#include <QEvent>
#include <cmath>

#include "plots/ui/curve_style.h"

namespace polefit {

namespace {

/// About so many figures have room at the lower axis.
constexpr int kTicks = 3;

}  // namespace

ErrorPlot::ErrorPlot() {
  setObjectName("errorPlot");
  setAccessibleName(tr("Error against evaluations"));
  setFocusPolicy(Qt::NoFocus);
  addGraph();
  xAxis->setLabel(tr("Evaluations"));
  xAxis->ticker()->setTickCount(kTicks);
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
  // Only whole decades have figures.
  yAxis->setRange(std::pow(10, std::floor(std::log10(yAxis->range().lower))),
                  std::pow(10, std::ceil(std::log10(yAxis->range().upper))));
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
