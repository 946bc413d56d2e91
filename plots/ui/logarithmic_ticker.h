#pragma once

#include "plots/ui/custom_plot.h"

namespace polefit {

/// The figures of a logarithmic axis: powers of ten, with 2 and 5 between them where there are few
/// of these; in a part of a decade even steps, as it is nearly straight there.
class LogarithmicTicker final : public QCPAxisTicker {
 protected:
  QVector<double> createTickVector(double step, const QCPRange& range) override;
  int getSubTickCount(double /*step*/) override { return 0; }
};

}  // namespace polefit
