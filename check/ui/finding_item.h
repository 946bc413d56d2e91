#pragma once

#include <QIcon>

#include "record/finding.h"

class QListWidget;
class QStyle;

namespace polefit {

QIcon FindingIcon(const QStyle& style, Severity severity);

/// What a screen reader says of a finding: its kind and what stands out.
QString SpokenFinding(const Finding& finding);

/// Adds a finding to the end of a list: its icon, its sentence, and its kind for screen readers.
void AddFinding(QListWidget& list, const Finding& finding);

}  // namespace polefit
