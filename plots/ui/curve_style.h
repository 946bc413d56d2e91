#pragma once

#include <QPalette>
#include <QPen>

#include "plots/diagram.h"
#include "plots/ui/custom_plot.h"

namespace polefit {

/// Dark on white, as pictures are that leave the program.
QPalette PaperPalette();

/// The colour of a series: told apart without red and green, and 3 : 1 at least on the palette's
/// base.
QColor ColorOf(SeriesRole role, const QPalette& palette);

/// The line of a series, fixed by its role so that it can be told in grey too.
QPen PenOf(const Series& series, const QPalette& palette);

/// The mark of a series that is not a line.
QCPScatterStyle MarkOf(const Series& series, const QPalette& palette, double size);

}  // namespace polefit
