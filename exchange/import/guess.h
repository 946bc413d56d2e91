#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "exchange/import/choices.h"

namespace polefit {

/// What a table is taken for when nothing is chosen, and on what grounds.
struct Guess {
  ImportChoices choices;
  /// "GHz, from the heading"; "" where the file leaves no choice.
  std::string unitGrounds;
  std::string kindGrounds;
  /// Nothing says what kind the values are: a choice must be made.
  bool isKindUnsure = false;
};

/// Guesses every choice for points of this role.
Guess GuessChoices(const SourceTable& table, Role role);

/// The kind that a column of values most likely has; nothing where all values are above 3 and its
/// heading says nothing.
std::optional<ValueKind> GuessKind(const SourceTable& table, int column);

/// The second column that goes with `column`: its imaginary part or angle; kNoColumn without one.
int SecondColumn(const SourceTable& table, int column, Quantity wanted);

/// The unit of a delay column: what its heading says, else the one that makes delay times
/// frequency a number of the size that filters have. `unit` is that of the frequencies.
DelayUnit GuessDelayUnit(const SourceTable& table, int column, int frequency, FrequencyUnit unit);

/// The column of a heading or of a number from 1; kNoColumn where there is none.
int FindColumn(const SourceTable& table, std::string_view name);

/// Chooses the phase that goes with the values: the real and imaginary part, an angle beside them,
/// else the first angle there is. False where there is none.
bool ChoosePhase(const SourceTable& table, ImportChoices& choices);

/// The first column with this quantity; kNoColumn without one.
int ColumnOfQuantity(const SourceTable& table, Quantity quantity);

/// Sets the columns and kind of the values to those of a parameter ("S21"); false where the table
/// has no such one.
bool ChooseParameter(const SourceTable& table, std::string_view name, ValueColumn& value);

}  // namespace polefit
