#pragma once

class QWidget;

namespace polefit {

/// Shows title, version, purpose and licence, and waits for its end.
void ShowAboutBox(QWidget* parent);

}  // namespace polefit
