#pragma once

#include <string>
#include <vector>

#include "exchange/import/merging.h"
#include "record/response_record.h"

namespace polefit {

/// The record of a fresh form: the built-in answers, no points, no solver values.
ResponseRecord BuiltInAnswers();

/// An answer that an import sets, to be listed before it does.
struct SetAnswer {
  /// As the user sees it: "5", "11 S".
  std::string question;
  std::string value;
};

/// What points say of a problem that begins with them.
struct NewProblem {
  /// Question 2: 1 where every Yout is above 0, else 0.
  std::string ipower;
  /// Question 5: the highest frequency where Yout is within 3 dB of its largest, never above a
  /// null.
  std::string freqNorm;
  /// Question 11's S: the nulls at or above that, 0 where they are more than 3.
  int nulls = 0;
  /// What is worth a sentence, or empty.
  std::string note;
};

/// What a problem with these points begins with. There are at least two.
NewProblem LookAtPoints(const std::vector<PassbandRow>& points);

/// Sets the answers of a problem that starts with these points; `note` goes into Note 1, `poles`
/// into question 6 unless it is empty. The starting values stay empty: the solver makes them.
void StartProblem(const NewProblem& problem, const std::string& note, const std::string& poles,
                  ResponseRecord& record);

/// The answers that StartProblem sets, in order.
std::vector<SetAnswer> AnswersOf(const NewProblem& problem);

/// Puts rows into the record's passband table and its count.
void PutRows(const std::vector<PassbandCells>& rows, ResponseRecord& record);
/// Puts delay rows in, ticks question 1 and lets the level of the delay be free (question 1a 0).
void PutDelays(const std::vector<DelayCells>& rows, ResponseRecord& record);

/// The passband rows of a record.
std::vector<PassbandCells> RowsOf(const ResponseRecord& record);

}  // namespace polefit
