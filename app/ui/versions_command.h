#pragma once

#include "form/state.h"

class QWidget;

namespace polefit {

/// Shows the former versions of all files, those of the current one first, and does with one of
/// them what is wished. Throws RunTimeError.
void ChooseFormerVersion(Program& program, QWidget* parent);

}  // namespace polefit
