#pragma once

#include "widgets/page.h"

namespace polefit {

class GridWidget;

/// The tabs of the main form. Every control bears its given name and has its text of a fresh form.
Page* MakeStartPage();
Page* MakePolesAndZerosPage();
Page* MakeMiscPage();
Page* MakePassbandPage(GridWidget* passData);
Page* MakeDelayPage(GridWidget* delayData);
Page* MakeSolverPage();
Page* MakeRunPage();

}  // namespace polefit
