#pragma once

#include "widgets/page.h"

namespace polefit {

class GridWidget;
class TableNote;

/// The tabs of the main form, the lines about their tables beside them. Every control bears its
/// given name and has its text of a fresh form.
Page* MakeStartPage();
Page* MakePolesAndZerosPage();
Page* MakeMiscPage();
Page* MakePassbandPage(GridWidget* passData, TableNote* note);
Page* MakeDelayPage(GridWidget* delayData, TableNote* note);
Page* MakeSolverPage();
Page* MakeRunPage();

}  // namespace polefit
