#pragma once

#include <string>

#include "exchange/import/points.h"
#include "exchange/read/source_file.h"

namespace polefit {

/// Yout from a formula of f, x (f over `freqNorm`), yin and row, as a fill of that column takes it.
/// A formula that cannot be calculated is the points' fault.
void FillYout(const std::string& formula, const std::string& freqNorm, Points& points);

/// Yout from the values of another file, interpolated at the points' frequencies; points beyond its
/// ends are left out, and said so. What nobody can guess of that file is the points' fault.
void TakeYout(const SourceFile& file, Points& points);

}  // namespace polefit
