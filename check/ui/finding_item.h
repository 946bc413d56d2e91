#pragma once

#include "record/finding.h"

class QListWidget;

namespace polefit {

/// Adds a finding to the end of a list: its icon, its sentence, and its kind for screen readers.
void AddFinding(QListWidget& list, const Finding& finding);

}  // namespace polefit
