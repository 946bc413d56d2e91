#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/import/guess.h"
#include "exchange/import/new_problem.h"
#include "exchange/import/points.h"
#include "exchange/read/source_file.h"
#include "form/cells.h"

namespace polefit {

/// Where the other one of Yin and Yout comes from, beside the points.
enum class OtherSource {
  one,      ///< it is 1
  table,    ///< the form's own, which stays
  column,   ///< a column of the file, `choices.other`
  formula,  ///< Yout only
  file      ///< Yout only: the values of another file
};

/// Everything that is chosen of how a file comes into the form.
struct ImportPlan {
  SourceFile source;
  /// Another file that can give the delay, and whether it does; without one its table has no
  /// columns.
  SourceFile delayFile;
  bool isDelayFromFile = false;
  ImportChoices choices;
  ImportChoices delayChoices;
  /// A parameter that was chosen by name, or empty.
  std::string parameter;
  OtherSource otherSource = OtherSource::one;
  /// Of f, x and yin, for that source.
  std::string formula;
  SourceFile otherFile;
  Frequencies frequencies = Frequencies::file;
  bool startsProblem = false;
  /// Question 5 of a problem that goes on is set too.
  bool setsFreqNorm = false;
  /// Only the delay table gets points.
  bool isOnlyDelay = false;
  /// Nothing says what kind the values are, and nobody has said it yet.
  bool isKindUnsure = false;
  /// The choices are those for the last file of this kind.
  bool isRecalled = false;
  /// The day that Note 1 names.
  std::string date;
};

/// How whoever changes a plan comes to files.
struct ImportFiles {
  /// Reads the source again with other choices for its text.
  std::function<SourceFile(const TextChoices&)> readAgain;
  /// Lets the user choose another file with points and reads it; nothing when there is none.
  std::function<std::optional<SourceFile>()> chooseOther;
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
  /// What TX is made of, in a sentence; "" without a delay.
  std::string delayNote;
  /// Why it cannot be done, or empty.
  std::string reason;
};

/// A plan for a file as it is first offered to a form: everything guessed.
ImportPlan PlanFor(SourceFile source, const FormCells& form);

/// A plan for the delay column of a file, which goes into the delay table alone; `source` must have
/// one, or be a Response Input File with delay points.
ImportPlan DelayPlanFor(SourceFile source, const FormCells& form);
/// Whether it has.
bool HasDelays(const SourceFile& source);

/// Guesses anew for another role, rows and delay kept.
void ChangeRole(ImportPlan& plan, Role role);

/// Sets where the other one of Yin and Yout comes from. The table's own frequencies stay where the
/// points take only some of its columns.
void ChangeOther(ImportPlan& plan, OtherSource source);

/// Makes another file, of which the delay was dropped beside the first, the delay's source.
void TakeDelayFrom(ImportPlan& plan, SourceFile source);

/// Whether the table and the points have different frequencies, so that there is a choice whose
/// stay.
bool AreFrequenciesOpen(const ImportPlan& plan, const ImportPreview& preview,
                        const FormCells& form);

/// What the plan would bring into the form, or why it cannot be taken.
ImportPreview PreviewOf(const ImportPlan& plan, const FormCells& form);

/// The form with the points in it: rows behind those that the counts cover stay below, and no
/// answer changes but those listed.
FormCells Imported(const ImportPlan& plan, const ImportPreview& preview, FormCells form);

/// "Points of dut.s2p, S21, 2004-03-03".
std::string PointsNote(const SourceFile& source, const ImportChoices& choices,
                       std::string_view parameter, const std::string& date);

}  // namespace polefit
