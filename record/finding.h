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
  /// The row of the table or the solver setting, and the column; from 1, 0 for all of them.
  int row = 0;
  int column = 0;

  bool operator==(const FindingPlace&) const = default;
};

/// Something that stands out in a problem.
struct Finding {
  FindingPlace place;
  Severity severity = Severity::fault;
  /// The whole sentence, for eyes only.
  std::string text;

  bool IsFault() const { return severity != Severity::warning; }
  bool operator==(const Finding&) const = default;
};

/// Puts findings into the order of the questions as the file has them: the answers, the passband
/// points, the delay points, the solver settings, and what is about the whole problem.
void SortByQuestion(std::vector<Finding>& findings);

/// The sentences of the findings that are faults, or of those that are not.
std::vector<std::string> FaultTexts(const std::vector<Finding>& findings);
std::vector<std::string> WarningTexts(const std::vector<Finding>& findings);

/// Whether the problem cannot be run.
bool HasFault(const std::vector<Finding>& findings);

}  // namespace polefit
