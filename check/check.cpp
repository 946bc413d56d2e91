#include "check/check.h"

#include "base/number.h"
#include "record/question_catalogue.h"
#include "responsefile/reader.h"
#include "solver/problem/problem_reader.h"

namespace polefit {

namespace {

constexpr const char* kPointsQuestion = "23";
constexpr const char* kSolverQuestion = "22";

/// What the solver's sentences begin with when they do not name a question, and where the user
/// finds what they are about.
constexpr std::pair<const char*, const char*> kPlaces[] = {
    {"Passband point", kPointsQuestion}, {"Delay point", "1"}, {"Solver setting", kSolverQuestion}};

/// "8" for "Question 8 (pole pairs, real): ...".
std::string QuestionOf(const std::string& sentence) {
  for (const auto& [beginning, question] : kPlaces) {
    if (sentence.starts_with(beginning)) return question;
  }
  const std::size_t start = sentence.find_first_of("0123456789");
  if (!sentence.starts_with("Question") || start == std::string::npos) return {};
  return sentence.substr(start, sentence.find_first_of(" :,", start) - start);
}

void Add(const std::vector<std::string>& sentences, std::vector<Finding>& findings) {
  for (const std::string& sentence : sentences) {
    findings.push_back({QuestionOf(sentence), sentence});
  }
}

/// A tick is exactly "Y" or "y"; "yes" or "1" are none, and the file does not show it.
void FindOddFlags(const ResponseRecord& record, std::vector<Finding>& findings) {
  for (const Question& question : kQuestions) {
    if (question.kind != AnswerKind::flag) continue;
    const std::string& answer = record.Slot(question.slot);
    const bool plain = answer == "Y" || answer == "y" || answer == "N" || answer == "n";
    if (plain) continue;
    const std::string number(QuestionNumber(question.slot));
    std::string text = "Question " + number;
    text += ": \"" + answer + "\" counts as no; only Y or y is yes.";
    findings.push_back({number, text});
  }
}

/// The first row that is too short for the form, which stops there whether it is in use or not.
template <std::size_t Columns>
void FindShortRow(const std::string& point, const PointLists<Columns>& points, int count,
                  std::vector<Finding>& findings) {
  for (int row = 1; row <= count; ++row) {
    int cells = 0;
    while (cells < points.kColumns && !points.At(row, cells + 1).empty()) ++cells;
    if (cells == points.kColumns) continue;
    const std::string sentence = point + " " + std::to_string(row) + ": " + std::to_string(cells) +
                                 " value(s) found; the form needs " +
                                 std::to_string(points.kColumns) + " and stops reading there.";
    findings.push_back({QuestionOf(sentence), sentence});
    return;
  }
}

/// The first point whose frequency does not lie above the one before, and how many there are.
template <std::size_t Columns>
void FindDisorder(const std::string& point, const PointLists<Columns>& points, int count,
                  std::vector<Finding>& findings) {
  int disordered = 0;
  std::string sentence;
  for (int row = 2; row <= count; ++row) {
    const auto frequency = ParseNumber(points.At(row, 1));
    const auto former = ParseNumber(points.At(row - 1, 1));
    if (!frequency || !former || *frequency > *former) continue;
    if (++disordered > 1) continue;
    sentence = point + " " + std::to_string(row) + ": frequency " + points.At(row, 1) +
               " does not lie above " + points.At(row - 1, 1) + " of the point before";
  }
  if (disordered == 0) return;
  if (disordered > 1) sentence += ", and " + std::to_string(disordered - 1) + " more such";
  findings.push_back({QuestionOf(sentence), sentence + "."});
}

std::vector<Finding> FindingsIn(const ResponseRecord& record) {
  Findings judged;
  ReadProblem(record, judged);
  std::vector<Finding> findings;
  Add(judged.faults, findings);
  Add(judged.warnings, findings);
  FindOddFlags(record, findings);
  FindShortRow("Passband point", record.passband, record.nFreqPoints, findings);
  FindShortRow("Delay point", record.delay, record.nDelayPoints, findings);
  FindDisorder("Passband point", record.passband, record.nFreqPoints, findings);
  FindDisorder("Delay point", record.delay, record.nDelayPoints, findings);
  return findings;
}

/// Reads the file into `record`; the error that stopped it, or nothing.
std::optional<RunTimeError> Read(Host& host, const std::string& path, ShortRow shortRow,
                                 ResponseRecord& record, std::string& folder) {
  host.OpenForReading(path);
  std::optional<RunTimeError> stopped;
  std::string name;
  try {
    ReadResponse(host, record, name, folder, shortRow);
  } catch (const RunTimeError& error) {
    stopped = error;
  }
  host.CloseFile();
  return stopped;
}

}  // namespace

CheckedFile CheckResponseFile(Host& host, const std::string& path) {
  CheckedFile checked;
  checked.path = path;
  checked.error = Read(host, path, ShortRow::fails, checked.record, checked.folder);
  checked.errorLine = host.LinesRead();
  if (!checked.error) {
    checked.findings = FindingsIn(checked.record);
    return checked;
  }
  // A short row stops the form but not the judgement: the rest of the file may have more to tell.
  ResponseRecord whole;
  std::string folder;
  if (!Read(host, path, ShortRow::isKept, whole, folder)) checked.findings = FindingsIn(whole);
  return checked;
}

}  // namespace polefit
