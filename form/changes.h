#pragma once

#include "form/cells.h"
#include "form/state.h"

namespace polefit {

/// True when a save would write, from line 2 on, something else than the last start, New, Open,
/// Save or Save As left. Reads the form and changes nothing.
bool Differs(const Program& program);

/// True when something is typed that would be lost with the form: what differs, and rows and
/// unfinished cells that no save reaches.
bool HasUnsavedCells(const Program& program, const FormCells& cells);

/// A start, New or Open has shown what the form holds now.
void NoteShown(Program& program);

/// The form has been saved. What no save reaches stays unsaved.
void NoteSaved(Program& program);

}  // namespace polefit
