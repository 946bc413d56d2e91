#pragma once

#include <string>

#include "check/check.h"

namespace polefit {

/// What the reader understood and what stands out, as a table for people; UTF-8.
std::string CheckAsTable(const CheckedFile& checked);

}  // namespace polefit
