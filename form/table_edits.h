#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "form/cells.h"
#include "grids/grid_view.h"

namespace polefit {

enum class Table { passband, delay };

// Each of these changes the cells, and the count of points where rows come or go, and nothing
// else; `ShowCells` then shows them. While question 3 is not ticked the Weight column is hidden: it
// takes no part in blocks, and rows that come get the weight 1.

/// The cells as they stand: a tab between cells, CR LF behind each row, empty rows at the end left
/// out.
std::string CopyBlock(const FormCells& cells, Table table, const CellBlock& block);

/// Empties the cells of the block.
void ClearBlock(FormCells& cells, Table table, const CellBlock& block);

/// Takes whole rows out; the rows below move up.
void DeleteRows(FormCells& cells, Table table, int firstRow, int lastRow);

/// Puts as many empty rows in front of the block as it has. False when the table would get too
/// long.
bool InsertRows(FormCells& cells, Table table, const CellBlock& block);

/// Copies the cells of the block's first row into its other rows.
void FillDown(FormCells& cells, Table table, const CellBlock& block);

/// Puts the rows in the order of the numbers in column 1; rows without a number there go to the
/// end. Rows of the same frequency keep their order.
void SortByFrequency(FormCells& cells, Table table);

/// Takes the rows out whose frequency is that of a row above.
void DropRepeatedRows(FormCells& cells, Table table);

/// Puts a text as other programs copy cells over the cells from `row`, `column` on: one cell as it
/// stands, or a block of numbers, and of empty cells. The table's points then reach at least as far
/// down as its full rows. Nothing is changed unless all of the text can be taken: otherwise the
/// answer is the sentence that says why not.
std::string Paste(FormCells& cells, Table table, int row, int column, std::string_view text);

/// Makes every full row from the top a point; a hidden empty weight becomes 1.
void KeepTypedRows(FormCells& cells, Table table);

/// Gives the weight 1 to every passband row that has all but its weight, and keeps the typed rows.
void GiveWeights(FormCells& cells);

/// Whether KeepTypedRows would make more of the rows points than a save would write now.
bool CanKeepRows(const FormCells& cells, Table table);

/// The cell that keeps a save from writing all rows: the first empty one, or the table's first
/// where it has no points yet. Nothing when all typed rows are saved.
struct CellPlace {
  int row = 1;
  int column = 1;
};
std::optional<CellPlace> FirstUnsaved(const FormCells& cells, Table table);

/// What a save would leave out of a table, or "": "Rows 3 to 5 are not saved: row 3 has no Weight
/// (column hidden)."
std::string UnsavedRows(const FormCells& cells, Table table);

}  // namespace polefit
