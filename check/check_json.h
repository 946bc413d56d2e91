#pragma once

#include <string>

#include "check/check.h"

namespace polefit {

/// The same as one JSON object, UTF-8, ended by a line feed.
std::string CheckAsJson(const CheckedFile& checked);

}  // namespace polefit
