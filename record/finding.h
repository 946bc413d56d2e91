#pragma once

#include <string>
#include <vector>

namespace polefit {

/// What a finding keeps from going on.
enum class Severity {
  fault,    ///< the problem cannot be run
  warning,  ///< it can, but perhaps not as the user meant it
  open      ///< an answer in use that is still empty; as a fault it keeps the problem from running
};

/// The tables whose rows a finding can be about.
enum class FindingTable { none, passband, delay, solverSettings };

/// What a finding is about, where the user finds it.
struct FindingPlace {
  /// The question's number as the user sees it ("8", "11a"); empty for a table or the whole
  /// problem.
  std::string question = {};
  FindingTable table = FindingTable::none;
  /// The row of the table, the solver setting or the note, and the column; from 1, 0 for all.
  int row = 0;
  int column = 0;

  bool operator==(const FindingPlace&) const = default;
};

/// The one obvious way to put right what a finding is about. Those that are about rows work on the
/// finding's table, the others on its question.
enum class Cure {
  none,
  commasToPoints,  ///< of numbers with a decimal comma, in the whole table or answer
  hertzToMegahertz,
  kilohertzToMegahertz,
  gigahertzToMegahertz,
  decibelsToRatios,  ///< of the finding's column
  sortRows,
  dropRepeatedRows,  ///< all but the first of each frequency
  weightOne,         ///< where a row has all but its weight
  keepTypedRows,
  fitList  ///< cuts or fills a list to the count that another question asks for
};

/// Something that stands out in a problem.
struct Finding {
  FindingPlace place;
  Severity severity = Severity::fault;
  /// What stands out, for eyes only: the sentence but for the word "Warning".
  std::string text;
  Cure cure = Cure::none;

  bool IsFault() const { return severity != Severity::warning; }
  bool operator==(const Finding&) const = default;
};

/// Puts findings into the order of the questions as the file has them: the answers, the passband
/// points, the delay points, the solver settings, and what is about the whole problem. Those of one
/// table are in the order of its rows, and what is about all rows follows.
void SortByQuestion(std::vector<Finding>& findings);

/// The whole sentence: that of a warning begins with "Warning: ".
std::string SentenceOf(const Finding& finding);

/// The sentences of the findings that are faults, or of those that are not.
std::vector<std::string> FaultTexts(const std::vector<Finding>& findings);
std::vector<std::string> WarningTexts(const std::vector<Finding>& findings);

/// Whether the problem cannot be run.
bool HasFault(const std::vector<Finding>& findings);

}  // namespace polefit
