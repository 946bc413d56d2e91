#pragma once

#include <QString>

class QWidget;

namespace polefit {

class CurvesPane;
class Host;

/// A picture of a widget as the bytes of a PNG (twice as large as on the screen), an SVG or a PDF,
/// by the ending of `name`; empty for another ending.
QByteArray PictureOf(QWidget& widget, const QString& name);

/// Asks for a name and saves the pane's picture, or its data as CSV. What cannot be written is said
/// in a box.
void SavePicture(Host& host, CurvesPane& pane);
void SaveData(Host& host, CurvesPane& pane);

void CopyPicture(CurvesPane& pane);
void CopyData(CurvesPane& pane);
void PrintPicture(CurvesPane& pane);

}  // namespace polefit
