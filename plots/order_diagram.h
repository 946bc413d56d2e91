#pragma once

#include "plots/diagram.h"
#include "solver/orders.h"

namespace polefit {

/// The rms error against the number of poles, on a logarithmic axis; the number that stands out, if
/// any, is marked. A stop a fit.
Diagram OrderDiagram(const OrderTable& table);

}  // namespace polefit
