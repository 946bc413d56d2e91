#include "check/finding_place.h"

#include <algorithm>

#include "record/question_catalogue.h"

namespace polefit {

namespace {

FormPlace PlaceOfQuestion(const std::string& number) {
  for (const Question& question : kQuestions) {
    if (question.number == number) return {std::string(question.boxes[0].name)};
  }
  return {};
}

FormPlace PlaceOfNote(int number) {
  return {std::string(kNoteBoxes.at(static_cast<std::size_t>(std::max(1, number) - 1)).name)};
}

void AddCount(std::string& text, const std::vector<Finding>& findings, Severity severity,
              const char* one, const char* many) {
  const auto count = std::count_if(findings.begin(), findings.end(), [&](const Finding& finding) {
    return finding.severity == severity;
  });
  if (count == 0) return;
  if (!text.empty()) text += ", ";
  text += std::to_string(count) + ' ' + (count == 1 ? one : many);
}

}  // namespace

FormPlace PlaceOnForm(const FindingPlace& place) {
  switch (place.table) {
    case FindingTable::passband:
      return {"PassData", place.row, std::max(1, place.column)};
    case FindingTable::delay:
      return {"DelayData", place.row, std::max(1, place.column)};
    case FindingTable::solverSettings: {
      const auto index = static_cast<std::size_t>(std::max(1, place.row) - 1);
      return {std::string(kSolverQuestions.at(index).name)};
    }
    case FindingTable::none:
      break;
  }
  return place.question == kNotesQuestion ? PlaceOfNote(place.row)
                                          : PlaceOfQuestion(place.question);
}

std::string PlaceText(const FindingPlace& place) {
  const std::string row = place.row > 0 ? " row " + std::to_string(place.row) : " points";
  switch (place.table) {
    case FindingTable::passband:
      return "passband" + row;
    case FindingTable::delay:
      return "delay" + row;
    case FindingTable::solverSettings:
      return "solver setting " + std::to_string(place.row);
    case FindingTable::none:
      break;
  }
  return place.question.empty() ? std::string() : "question " + place.question;
}

std::string CountText(const std::vector<Finding>& findings) {
  std::string text;
  AddCount(text, findings, Severity::fault, "fault", "faults");
  AddCount(text, findings, Severity::warning, "warning", "warnings");
  AddCount(text, findings, Severity::open, "open", "open");
  return text;
}

}  // namespace polefit
