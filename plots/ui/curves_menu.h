#pragma once

namespace polefit {

class CurvesDock;
class MainWindow;

/// Adds View > Curves and the menu of the fit, which stands before the demos.
void AddCurvesMenu(MainWindow& form, CurvesDock& dock);

}  // namespace polefit
