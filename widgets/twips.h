#pragma once

class QWidget;

namespace polefit {

/// A length in twips (1440 to the inch at the design's font size) in pixels of `widget`. A font
/// larger than the design's makes it longer in proportion, so that columns keep their characters.
int TwipsToPixels(const QWidget& widget, int twips);
/// The other way round, to the nearest twip.
int PixelsToTwips(const QWidget& widget, int pixels);

}  // namespace polefit
