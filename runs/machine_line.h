#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace polefit {

/// The solver's last line of output, made for programs: "pfit-end: exit=0 F=1.5e-04 evals=681 ...".
/// Figures by their names; those that the solver does not know are not there.
using MachineLine = std::map<std::string, double, std::less<>>;

/// The figures of such a line; nothing when the line is none or is not whole.
std::optional<MachineLine> ReadMachineLine(std::string_view line);

/// The figures as such a line, so that reading gives the same numbers.
std::string MachineLineOf(const MachineLine& figures);

/// One of the figures.
std::optional<double> FigureOf(const MachineLine& figures, std::string_view name);

}  // namespace polefit
