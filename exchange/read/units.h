#pragma once

#include <optional>
#include <string_view>

namespace polefit {

enum class FrequencyUnit { hertz, kilohertz, megahertz, gigahertz };
enum class DelayUnit { seconds, milliseconds, microseconds, nanoseconds, picoseconds };
enum class AngleUnit { degrees, radians };

/// How many places the decimal point moves to the right from the unit to MHz.
int PlacesToMegahertz(FrequencyUnit unit);
/// How many places the decimal point moves to the right from the unit to ns.
int PlacesToNanoseconds(DelayUnit unit);

/// "Hz", "kHz", "MHz", "GHz".
std::string_view NameOf(FrequencyUnit unit);
/// "s", "ms", "us", "ns", "ps".
std::string_view NameOf(DelayUnit unit);
/// "deg", "rad".
std::string_view NameOf(AngleUnit unit);

/// The unit that a word names, in any case.
std::optional<FrequencyUnit> FrequencyUnitOf(std::string_view word);
/// The unit that a word names: "s", "sec", "usec", "µs" ...
std::optional<DelayUnit> DelayUnitOf(std::string_view word);
std::optional<AngleUnit> AngleUnitOf(std::string_view word);

}  // namespace polefit
