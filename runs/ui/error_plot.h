#pragma once

#include "plots/ui/custom_plot.h"

namespace polefit {

/// How the rms error falls with the evaluations, on a logarithmic scale, while a run is on.
class ErrorPlot final : public QCustomPlot {
  Q_OBJECT

 public:
  ErrorPlot();

  void Clear();
  /// Takes the error after so many evaluations, in parts of the largest Yout.
  void Add(int evaluations, double rms);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void TakePalette();

  int last_ = 0;
};

}  // namespace polefit
