#pragma once

#include "plots/ui/custom_plot.h"

namespace polefit {

/// The figures of a logarithmic axis: powers of ten, with 2 and 5 between them where there are few
/// of these; in a part of a decade even steps, as it is nearly straight there.
class LogarithmicTicker final : public QCPAxisTicker {
 protected:
  QVector<double> createTickVector(double step, const QCPRange& range) override;
  QVector<double> createSubTickVector(int count, const QVector<double>& ticks) override;

 private:
  /// Between powers of ten.
  QVector<double> subTicks_;
};

}  // namespace polefit
