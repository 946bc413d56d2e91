#pragma once

#include <QString>

class QWidget;

namespace polefit {

class CurvesPane;
struct Program;

/// A picture of a widget as the bytes of a PNG (twice as large as on the screen), an SVG or a PDF,
/// by the ending of `name`; empty for another ending.
QByteArray PictureOf(QWidget& widget, const QString& name);

/// Asks for a name, "vna_curves.png" for those of "vna.1", and saves the pane's picture, or its
/// data as CSV. What cannot be written is said in a box.
void SavePicture(Program& program, CurvesPane& pane);
void SaveData(Program& program, CurvesPane& pane);

void CopyPicture(CurvesPane& pane);
void CopyData(CurvesPane& pane);
void PrintPicture(CurvesPane& pane);

}  // namespace polefit
