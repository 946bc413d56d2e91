#pragma once

#include <array>
#include <optional>
#include <string>

#include "form/state.h"

namespace polefit {

/// The cell that is being edited, with the text as it stands in the editor.
struct EditedCell {
  bool isDelay = false;
  int row = 0;
  int column = 0;
  std::string text;

  bool operator==(const EditedCell&) const = default;
};

/// Everything that is typed in the main form.
struct FormCells {
  /// Answers, notes, solver values and both point counts. Unlike in a record that is saved, the
  /// point lists hold every row down to the last cell that is not empty, as it was typed and
  /// whatever the count, with a spare row behind.
  ResponseRecord typed;
  /// The boxes of the zero counts, whose one answer does not tell them apart when they hold blanks.
  std::array<std::string, 3> zeroCounts;
  std::optional<EditedCell> editor;
  /// The current file, the last used one, and the name in the box "LastFileName".
  Files files;
  std::string shownFileName;

  bool operator==(const FormCells&) const = default;
};

/// Reads the form and changes nothing: the editor stays open, no mark is set.
FormCells CellsOf(const Program& program);

/// Everything of `typed` but the rows of its tables.
ResponseRecord WithoutRows(const ResponseRecord& typed);

/// Makes the current file's folder that of the process, where Save looks for the file. False when
/// it is gone; Save then asks for another place.
bool EnterCurrentFolder(Program& program);

/// Shows `cells`: the rows that the counts cover through the transfer from record to form, the rest
/// below them. Text of an open editor goes into its cell. The data then count as changed. The
/// current folder of the process stays as it is.
void ShowCells(Program& program, const FormCells& cells);

}  // namespace polefit
