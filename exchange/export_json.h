#pragma once

#include <string>

#include "exchange/filter_result.h"

namespace polefit {

/// One object: zeros, poles and gain in rad/s, what they come from, and the locations by kind.
std::string JsonResult(const FilterResult& result);

}  // namespace polefit
