#pragma once

#include <string>

#include "exchange/filter_result.h"

namespace polefit {

/// Comma-separated: a row for each pole and each zero.
std::string LocationTable(const FilterResult& result);

/// Comma-separated: a row for each passband point, with the error and the delay of H. A figure that
/// does not exist is empty.
std::string CurveTable(const FilterResult& result);

/// A Touchstone file (version 1, MHz RI) of a two-port with S21 = S12 = H, S11 = S22 = 0, at 401
/// frequencies from 0 to three times Freq Norm or at those of the passband points, rising.
std::string Touchstone(const FilterResult& result, bool atDataPoints);

}  // namespace polefit
