#pragma once

class QMenu;
class QPoint;

namespace polefit {

class DiagramView;
class LiveCurves;

/// Adds the entries that add a pole or zero at a place of the s-plane, and that take away the one
/// that is there, or else the marked one. Without a whole typed H(s) there are none.
void AddStructureEntries(QMenu& menu, LiveCurves& live, const DiagramView& view, const QPoint& at);

}  // namespace polefit
