#pragma once

#include <string>

#include "exchange/filter_result.h"

namespace polefit {

/// A Python module with zeros, poles, gain, system, sections and response(f_mhz). Run by itself it
/// prints a table of the response.
std::string ScipyModule(const FilterResult& result);

/// The same names as a script for MATLAB and Octave, which needs no toolbox.
std::string MatlabScript(const FilterResult& result);

}  // namespace polefit
