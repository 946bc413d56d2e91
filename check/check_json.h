#pragma once

#include <string>

#include "check/check.h"

namespace polefit {

/// What the check found and the answers that it looked at, as one JSON object in UTF-8, ended by a
/// line feed.
std::string CheckAsJson(const CheckedFile& checked);

}  // namespace polefit
