#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/import/guess.h"
#include "exchange/import/new_problem.h"
#include "exchange/import/points.h"
#include "exchange/read/source_file.h"
#include "form/cells.h"

namespace polefit {

/// Everything that is chosen of how a file comes into the form.
struct ImportPlan {
  SourceFile source;
  /// Where the delay comes from, when it is another file; else its table has no columns.
  SourceFile delaySource;
  ImportChoices choices;
  ImportChoices delayChoices;
  /// A parameter that was chosen by name, or empty.
  std::string parameter;
  /// The values that the file does not give are the table's instead of 1.
  bool keepsOther = false;
  Frequencies frequencies = Frequencies::file;
  bool startsProblem = false;
  /// Nothing says what kind the values are, and nobody has said it yet.
  bool isKindUnsure = false;
};

/// What a plan comes to.
struct ImportPreview {
  Points points;
  /// The passband table as it will be, as far as the points reach.
  std::vector<PassbandCells> rows;
  NewProblem problem;
  /// The answers that will be set, in order.
  std::vector<SetAnswer> answers;
  /// What it does, in a line.
  std::string summary;
  /// Why it cannot be done, or empty.
  std::string reason;
};

/// A plan for a file as it is first offered to a form: everything guessed.
ImportPlan PlanFor(SourceFile source, const FormCells& form);

/// Guesses anew for another role, rows and delay kept.
void ChangeRole(ImportPlan& plan, Role role);

/// Makes another file, of which the delay was dropped beside the first, the delay's source.
void TakeDelayFrom(ImportPlan& plan, SourceFile source);

ImportPreview PreviewOf(const ImportPlan& plan, const FormCells& form);

/// The form with the points in it: rows behind those that the counts cover stay below, and no
/// answer changes but those listed. `date` goes into Note 1.
FormCells Imported(const ImportPlan& plan, const ImportPreview& preview, FormCells form,
                   const std::string& date);

/// "Points of dut.s2p, S21, 2004-03-03".
std::string PointsNote(const SourceFile& source, const ImportChoices& choices,
                       std::string_view parameter, const std::string& date);

}  // namespace polefit
