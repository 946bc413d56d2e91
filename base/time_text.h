#pragma once

#include <cstdint>
#include <string>

namespace polefit {

/// A time in seconds since 1970 as "21 Nov 18:40", in the user's time zone.
std::string ShortTime(std::int64_t seconds);

}  // namespace polefit
