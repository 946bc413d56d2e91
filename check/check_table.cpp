#include "check/check_table.h"

#include "base/number.h"
#include "base/text.h"
#include "base/text_format.h"
#include "record/question_catalogue.h"

namespace polefit {

namespace {

constexpr std::size_t kLabelWidth = 52;

/// A caption cut to the column.
std::string Caption(std::string_view label) {
  return Padded(FirstCharacters(OneLineCaption(label), kLabelWidth), kLabelWidth);
}

std::string Line(std::string_view label, std::string_view value) {
  return "  " + Caption(label) + "  " + std::string(value.empty() ? "(empty)" : value) + "\n";
}

std::string Answers(const ResponseRecord& record) {
  std::string table = "Answers\n";
  for (const Question& question : kQuestions) {
    table += Line(question.label, record.Slot(question.slot));
  }
  return table;
}

template <std::size_t Columns>
std::string Rows(const std::string& title, const std::array<const char*, Columns>& heads,
                 const PointLists<Columns>& points, int count) {
  constexpr std::size_t kWidth = 14;
  std::string table = "\n" + title + ":" + SignedText(count) + "\n";
  if (count == 0) return table;
  table += Padded("     #", 8);
  for (const char* const head : heads) table += Padded(head, kWidth);
  table += '\n';
  for (int row = 1; row <= count; ++row) {
    const std::string number = std::to_string(row);
    table += Padded(std::string(number.size() < 6 ? 6 - number.size() : 0, ' ') + number, 8);
    for (int column = 1; column <= static_cast<int>(Columns); ++column) {
      table += Padded(points.At(row, column), kWidth);
    }
    table += '\n';
  }
  return table;
}

std::string SolverValues(const ResponseRecord& record) {
  if (record.solverCount == 0) return "\nSolver values: the solver's own defaults\n";
  std::string table = "\nSolver values\n";
  for (std::size_t i = 0; i < record.solver.size(); ++i) {
    table += Line(kSolverQuestions[i].label, record.solver[i]);
  }
  return table;
}

std::string Verdict(const CheckedFile& checked) {
  std::string text = "\n";
  if (checked.error) {
    text += "Reading stopped at line" + SignedText(checked.errorLine) + ": error" +
            SignedText(checked.error->number) + ", " + checked.error->description + ".\n";
  }
  if (checked.findings.empty())
    return text + (checked.error ? "" : "Nothing to find fault with.\n");
  text += "Findings\n";
  for (const Finding& finding : checked.findings) text += "  " + SentenceOf(finding) + "\n";
  return text;
}

}  // namespace

std::string CheckAsTable(const CheckedFile& checked) {
  const ResponseRecord& record = checked.record;
  return checked.path + "\n" + Line("Name in line 1", record.LastFileName) +
         Line("Note 1", record.Note1) + Line("Note 2", record.Note2) + "\n" + Answers(record) +
         Rows<4>("Passband points", {"Frequency", "Yin", "Yout", "Weight"}, record.passband,
                 record.nFreqPoints) +
         Rows<2>("Delay points", {"Frequency", "Delay"}, record.delay, record.nDelayPoints) +
         SolverValues(record) + Verdict(checked);
}

}  // namespace polefit
