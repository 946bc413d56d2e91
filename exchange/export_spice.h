#pragma once

#include <string>

#include "exchange/filter_result.h"

namespace polefit {

// Each is a subcircuit "polefit in out ref" with one section behind the other, low Q first; the
// input draws no current, the output is an ideal source.

/// Of s_xfer code models, for ngspice.
std::string SpiceSections(const FilterResult& result);

/// Of E ... LAPLACE sources, for simulators that have these.
std::string SpiceLaplace(const FilterResult& result);

/// Of resistors, inductors, capacitors and controlled sources, for any simulator. In a section
/// 1 + s R C + s^2 L C is the denominator; the numerator is a sum of the voltages at C, R and L.
std::string SpiceRlc(const FilterResult& result);

}  // namespace polefit
