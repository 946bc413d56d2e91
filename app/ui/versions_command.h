#pragma once

#include "form/state.h"

class QWidget;

namespace polefit {

/// Shows the former versions of a file, at first of the current one where it has any, and does with
/// one of them what is wished. Throws RunTimeError.
void ChooseFormerVersion(Program& program, QWidget* parent);

}  // namespace polefit
