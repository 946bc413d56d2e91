#include "record/finding.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

std::vector<std::string> Texts(const std::vector<Finding>& findings, bool areFaults) {
  std::vector<std::string> texts;
  for (const Finding& finding : findings) {
    if (finding.IsFault() == areFaults) texts.push_back(SentenceOf(finding));
  }
  return texts;
}

/// The place among the questions, tables behind them.
int RankOf(const FindingPlace& place) {
  int slot = slot::kEqualDelay;
  switch (place.table) {
    case FindingTable::passband:
      return slot::kFreqPointCount;
    case FindingTable::delay:
      return slot::kDelayPointCount;
    case FindingTable::solverSettings:
      return slot::kDelayPointCount + 2;
    case FindingTable::none:
      break;
  }
  if (place.question == kNotesQuestion) return slot::kDelayPointCount + 1;
  while (slot <= slot::kFreqPointCount && QuestionNumber(slot) != place.question) ++slot;
  return place.question.empty() || slot > slot::kFreqPointCount ? slot::kDelayPointCount + 3 : slot;
}

/// The place among the questions, and the row in a table; what is about all rows follows them.
std::pair<int, int> PlaceRank(const FindingPlace& place) {
  constexpr int kAllRows = std::numeric_limits<int>::max();
  const bool isRow = place.table == FindingTable::none || place.row > 0;
  return {RankOf(place), isRow ? place.row : kAllRows};
}

}  // namespace

void SortByQuestion(std::vector<Finding>& findings) {
  std::stable_sort(findings.begin(), findings.end(), [](const Finding& one, const Finding& other) {
    return PlaceRank(one.place) < PlaceRank(other.place);
  });
}

std::string SentenceOf(const Finding& finding) {
  return (finding.severity == Severity::warning ? "Warning: " : "") + finding.text;
}

std::vector<std::string> FaultTexts(const std::vector<Finding>& findings) {
  return Texts(findings, true);
}

std::vector<std::string> WarningTexts(const std::vector<Finding>& findings) {
  return Texts(findings, false);
}

bool HasFault(const std::vector<Finding>& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const Finding& finding) { return finding.IsFault(); });
}

}  // namespace polefit
