#include "runs/compare_runs.h"

#include <algorithm>
#include <cmath>

#include "base/line_source.h"
#include "base/run_time_error.h"
#include "base/text_format.h"
#include "record/question_catalogue.h"
#include "responsefile/reader.h"
#include "runs/fit_quality.h"

namespace polefit {

namespace {

constexpr const char* kNoFigure = "-";

/// What could be read of a Response Input File.
ResponseRecord RecordIn(const std::string& bytes) {
  ResponseRecord record;
  try {
    ByteLines lines(bytes);
    lines.ReadLine();
    ReadAnswers(lines, record, {ShortRow::isKept});
  } catch (const RunTimeError&) {
    return record;  // the answers up to there are compared
  }
  return record;
}

FilterResult ResultIn(const std::string& bytes) {
  std::vector<std::string> faults;
  FilterResult result = ReadFilterResult(RecordIn(bytes), faults);
  if (!faults.empty()) result.locations.clear();
  return result;
}

bool AreAlike(const ResultLocation& one, const ResultLocation& other) {
  return one.isPole == other.isPole && one.isPair == other.isPair;
}

std::string Change(std::optional<double> from, std::optional<double> to) {
  if (!from || !to || *from == 0) return kNoFigure;
  return Format("%+.3g %%", 100 * (*to - *from) / *from);
}

std::string Figure(std::optional<double> value) {
  return value ? Fitted(*value, 6, 12) : kNoFigure;
}

/// One of the two sides of a row.
struct PairSide {
  std::optional<double> frequency;  ///< MHz
  std::optional<double> quality;
};

PairSide SideOf(const std::optional<ResultLocation>& location, const FilterResult& result) {
  if (!location) return {};
  return {std::abs(location->Upper()) * result.freqNorm, PairQuality(*location)};
}

/// "omega zero", or of two that are each other's nearest "omega zero, zero pair".
std::string KindsOf(const LocationPair& pair) {
  if (!pair.one || !pair.other) return KindName(pair.one ? *pair.one : *pair.other);
  const std::string a = KindName(*pair.one);
  const std::string b = KindName(*pair.other);
  return a == b ? a : a + ", " + b;
}

ComparedTable CompareLocations(const FilterResult& one, const FilterResult& other) {
  ComparedTable table{
      {"Poles and zeros", "f0 (MHz), A", "f0 (MHz), B", "Change", "Q, A", "Q, B", "Change"}, {}};
  for (const LocationPair& pair : PairLocations(one, other)) {
    const PairSide a = SideOf(pair.one, one);
    const PairSide b = SideOf(pair.other, other);
    table.rows.push_back({KindsOf(pair), Figure(a.frequency), Figure(b.frequency),
                          Change(a.frequency, b.frequency), Figure(a.quality), Figure(b.quality),
                          Change(a.quality, b.quality)});
  }
  return table;
}

template <std::size_t Columns>
int DifferingRows(const PointLists<Columns>& one, int oneRows, const PointLists<Columns>& other,
                  int otherRows) {
  const int common = std::min(oneRows, otherRows);
  int count = std::max(oneRows, otherRows) - common;
  for (int row = 1; row <= common; ++row) {
    bool isSame = true;
    for (int column = 1; column <= one.kColumns; ++column) {
      isSame = isSame && one.At(row, column) == other.At(row, column);
    }
    if (!isSame) ++count;
  }
  return count;
}

void AddPoints(ComparedTable& table, const char* name, int one, int other, int differing) {
  if (differing == 0) return;
  table.rows.push_back({std::string(name) + " (" + std::to_string(differing) + " differ)",
                        std::to_string(one), std::to_string(other)});
}

ComparedTable CompareAnswers(const ResponseRecord& one, const ResponseRecord& other) {
  ComparedTable table{{"Answers that differ", "A", "B"}, {}};
  for (const Question& question : kQuestions) {
    const std::string& a = one.Slot(question.slot);
    const std::string& b = other.Slot(question.slot);
    if (a == b) continue;
    table.rows.push_back(
        {std::string(question.number) + ". " + std::string(question.subject), a, b});
  }
  AddPoints(table, "Passband points", one.nFreqPoints, other.nFreqPoints,
            DifferingRows(one.passband, one.nFreqPoints, other.passband, other.nFreqPoints));
  AddPoints(table, "Delay points", one.nDelayPoints, other.nDelayPoints,
            DifferingRows(one.delay, one.nDelayPoints, other.delay, other.nDelayPoints));
  for (std::size_t i = 0; i < kSolverQuestions.size(); ++i) {
    const std::string& a = one.solver[i];
    const std::string& b = other.solver[i];
    if (a != b) table.rows.push_back({std::string(kSolverQuestions[i].name), a, b});
  }
  return table;
}

std::string Result(const KeptRun& run, std::string_view name) {
  const std::optional<double> figure = run.Figure(name);
  return figure ? ShortestNumber(*figure) : kNoFigure;
}

ComparedTable CompareResults(const KeptRun& one, const KeptRun& other) {
  ComparedTable table{{"Results", "A", "B"}, {}};
  table.rows.push_back({"Verdict", WordOf(one.verdict.outcome), WordOf(other.verdict.outcome)});
  for (const auto& [title, name] : {std::pair("rms error / largest Yout", "rms"),
                                    {"Cost F", "F"},
                                    {"Worst row, dB", "worstdb"},
                                    {"Worst row, MHz", "worstdbat"},
                                    {"Delay ripple, ns", "ripple"},
                                    {"On a bound or held", "bounds"},
                                    {"Starts that agree", "agree"},
                                    {"Evaluations", "evals"},
                                    {"Warnings", "warnings"}}) {
    const std::string a = Result(one, name);
    const std::string b = Result(other, name);
    if (a != kNoFigure || b != kNoFigure) table.rows.push_back({title, a, b});
  }
  return table;
}

}  // namespace

std::vector<LocationPair> PairLocations(const FilterResult& one, const FilterResult& other) {
  struct Candidate {
    double distance;
    std::size_t one;
    std::size_t other;
  };
  std::vector<Candidate> candidates;
  for (std::size_t i = 0; i < one.locations.size(); ++i) {
    for (std::size_t k = 0; k < other.locations.size(); ++k) {
      if (!AreAlike(one.locations[i], other.locations[k])) continue;
      candidates.push_back({std::abs(one.locations[i].Upper() * one.freqNorm -
                                     other.locations[k].Upper() * other.freqNorm),
                            i, k});
    }
  }
  std::ranges::stable_sort(candidates, {}, &Candidate::distance);
  std::vector<std::optional<std::size_t>> partner(one.locations.size());
  std::vector<bool> isTaken(other.locations.size());
  for (const Candidate& candidate : candidates) {
    if (partner[candidate.one] || isTaken[candidate.other]) continue;
    partner[candidate.one] = candidate.other;
    isTaken[candidate.other] = true;
  }
  std::vector<LocationPair> pairs;
  for (std::size_t i = 0; i < partner.size(); ++i) {
    if (partner[i]) pairs.push_back({one.locations[i], other.locations[*partner[i]]});
  }
  for (std::size_t i = 0; i < partner.size(); ++i) {
    if (!partner[i]) pairs.push_back({one.locations[i], std::nullopt});
  }
  for (std::size_t k = 0; k < isTaken.size(); ++k) {
    if (!isTaken[k]) pairs.push_back({std::nullopt, other.locations[k]});
  }
  return pairs;
}

std::vector<ComparedTable> CompareRuns(const ComparedRun& one, const ComparedRun& other) {
  return {CompareLocations(ResultIn(one.contents.values), ResultIn(other.contents.values)),
          CompareAnswers(RecordIn(one.contents.input), RecordIn(other.contents.input)),
          CompareResults(one.run, other.run)};
}

std::string TextOf(const std::vector<ComparedTable>& tables) {
  std::string text;
  const auto add = [&text](const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) text += (i > 0 ? "\t" : "") + cells[i];
    text += '\n';
  };
  for (const ComparedTable& table : tables) {
    if (!text.empty()) text += '\n';
    add(table.heading);
    for (const std::vector<std::string>& row : table.rows) add(row);
  }
  return text;
}

}  // namespace polefit
