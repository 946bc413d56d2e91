#pragma once

#include <QByteArray>
#include <QString>

#include "plots/fit_curves.h"

namespace polefit {

/// All diagrams of one set of curves on a light page of 1600 x 2000, as the bytes of a PNG, an SVG
/// or a PDF by the ending of `name`.
QByteArray PlotPage(const FitCurves& curves, const QString& title, const QString& name);

}  // namespace polefit
