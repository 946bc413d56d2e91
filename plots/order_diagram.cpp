#include "plots/order_diagram.h"

#include <algorithm>

namespace polefit {

Diagram OrderDiagram(const OrderTable& table) {
  constexpr double kLeast = 1e-16;
  Diagram diagram;
  diagram.kind = DiagramKind::orders;
  diagram.x.label = "number of poles";
  diagram.y = {"rms error", 1, 1, true};
  diagram.hasFigures = !table.fits.empty();
  diagram.sentence = "rms error against the number of poles";
  if (table.fits.empty()) return diagram;
  Series line = {"", SeriesRole::typed, {}, {}};
  for (const OrderFit& fit : table.fits) {
    line.x.push_back(fit.poles);
    line.y.push_back(std::max(fit.rms, kLeast));
    diagram.stops.push_back({line.x.back(), line.y.back(), diagram.stops.size()});
  }
  const auto [least, most] = std::minmax_element(line.y.begin(), line.y.end());
  diagram.y.from = *least / 2;
  diagram.y.to = *most * 2;
  diagram.x.from = line.x.front() - .5;
  diagram.x.to = line.x.back() + .5;
  Series marks = line;
  marks.role = SeriesRole::wanted;
  diagram.series = {line, marks};
  if (table.best) {
    diagram.series.push_back({"", SeriesRole::worst, {line.x[*table.best]}, {line.y[*table.best]}});
    diagram.sentence += ", " + std::to_string(table.fits[*table.best].poles) + " poles stand out";
  }
  return diagram;
}

}  // namespace polefit
