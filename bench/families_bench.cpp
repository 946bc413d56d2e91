// Solves problems with known answers in this process.
//   families_bench                 the textbook families: right answers, evaluations, times
//   families_bench --empty         the same without starting values
//   families_bench --bad-starts    random starting values
//   families_bench --noise         noisy rows
//   families_bench --random        random filters, rows of 5 decimals
//   families_bench --write FOLDER  writes the problems as files
// A word behind these takes only problems whose names hold it; --all lists the right ones too.

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <vector>

#include "bench/families/families.h"
#include "platform/linux/console_host.h"
#include "responsefile/writer.h"
#include "solver/problem/problem_reader.h"
#include "solver/search/data_start.h"
#include "solver/search/search.h"

namespace polefit::families {
namespace {

constexpr double kWantedPoleError = 1e-3;
constexpr double kWantedExactCost = 1e-13;
constexpr int kWantedEvaluations = 2000;
constexpr double kWantedSidelobes = 0.02;  // dB

struct Outcome {
  Summary summary;
  double poleError = 0;
  double seconds = 0;
  bool isRight = false;
};

std::vector<std::complex<double>> PolesOf(const Problem& problem, const Iterate& iterate) {
  std::vector<std::complex<double>> poles;
  for (const Factor& factor : problem.constellation.factors) {
    const double real = iterate.parameters[factor.parameter];
    if (factor.kind == FactorKind::sigmaPole) poles.emplace_back(-real, 0);
    if (factor.kind == FactorKind::polePair) {
      poles.emplace_back(-real, iterate.parameters[factor.parameter + 1]);
    }
  }
  return poles;
}

/// How far the sidelobes are from equal, in dB.
double SidelobeSpread(const Iterate& iterate) {
  double low = 0;
  double high = 0;
  for (const Peak& peak : iterate.peaks) {
    low = std::min(low, peak.level - iterate.peaks.front().level);
    high = std::max(high, peak.level - iterate.peaks.front().level);
  }
  return 20 / std::log(10.0) * (high - low);
}

bool IsRight(const FamilyProblem& wanted, const Outcome& outcome) {
  const Summary& summary = outcome.summary;
  if (!IsConverged(summary.ending) || summary.evaluations > kWantedEvaluations) {
    return false;
  }
  const double cost = summary.best.Cost();
  switch (wanted.truth) {
    case Truth::poles:
    case Truth::equalised:
      return cost <= kWantedExactCost && outcome.poleError <= kWantedPoleError &&
             SidelobeSpread(summary.best) <= kWantedSidelobes;
    case Truth::magnitude:
      return cost <= 2 * summary.roundingCost;
    case Truth::approximation:
      return cost <= 1.001 * wanted.cost;
    case Truth::noisy:
      return cost <= wanted.cost;
  }
  return false;
}

Outcome SolveProblem(const FamilyProblem& wanted, const ResponseRecord& record) {
  Outcome outcome;
  std::vector<Finding> findings;
  const std::clock_t begin = std::clock();  // of the processor: the machine may have other work
  Problem problem = ReadProblem(record, findings);
  FillFromPoints(problem, findings);
  Listener nobody;
  outcome.summary = Solve(problem, nobody, [] { return false; });
  outcome.seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  if (!wanted.filter.poles.empty() && outcome.summary.best.isFinite) {
    outcome.poleError = WorstPoleError(wanted.filter, PolesOf(problem, outcome.summary.best));
  }
  outcome.isRight = IsRight(wanted, outcome);
  return outcome;
}

/// The figures of one family, added up.
struct Row {
  int count = 0;
  int right = 0;
  std::vector<int> evaluations;
  std::vector<double> milliseconds;
};

void PrintRow(const std::string& name, Row row) {
  std::sort(row.evaluations.begin(), row.evaluations.end());
  std::sort(row.milliseconds.begin(), row.milliseconds.end());
  const std::size_t middle = row.evaluations.size() / 2;
  std::printf("| %s | %d of %d | %d | %d | %.1f | %.1f |\n", name.c_str(), row.right, row.count,
              row.evaluations[middle], row.evaluations.back(), row.milliseconds[middle],
              row.milliseconds.back());
}

/// What the program was asked for.
struct Request {
  std::string mode;
  std::string part;
  std::string folder;
  bool listsAll = false;
};

class Table {
 public:
  explicit Table(const Request& request) : request_(request) {}

  void Solve(const FamilyProblem& problem, const ResponseRecord& record, const std::string& name) {
    if (problem.name.find(request_.part) == std::string::npos) return;
    const Outcome outcome = SolveProblem(problem, record);
    for (const std::string& key : {problem.family, std::string("all")}) {
      if (!rows_.contains(key)) order_.push_back(key);
      Row& row = rows_[key];
      ++row.count;
      row.right += outcome.isRight ? 1 : 0;
      row.evaluations.push_back(outcome.summary.evaluations);
      row.milliseconds.push_back(1000 * outcome.seconds);
    }
    if (!outcome.isRight || request_.listsAll) Describe(problem, outcome, name);
  }

  void Print() const {
    std::printf("| Family | right | evaluations, median | most | ms, median | most |\n");
    std::printf("|---|---|---|---|---|---|\n");
    for (const std::string& key : order_) {
      if (key != "all") PrintRow(key, rows_.at(key));
    }
    if (!order_.empty()) PrintRow("all", rows_.at("all"));
    for (const std::string& line : notes_) std::printf("\n%s", line.c_str());
    std::printf("\n");
  }

 private:
  void Describe(const FamilyProblem& problem, const Outcome& outcome, const std::string& name) {
    const Summary& summary = outcome.summary;
    char text[300];
    std::snprintf(text, sizeof text,
                  "- %s%s: ending %d, F %.3e (known %.6e), poles off by %.1e, "
                  "%d evaluations, %zu starts, %d near",
                  name.c_str(), outcome.isRight ? " (right)" : "", static_cast<int>(summary.ending),
                  summary.best.Cost(), problem.cost, outcome.poleError, summary.evaluations,
                  summary.starts.size(),
                  summary.optima.empty() ? 0 : summary.optima.front().starts);
    notes_.emplace_back(text);
  }

  const Request& request_;
  std::vector<std::string> order_;
  std::map<std::string, Row> rows_;
  std::vector<std::string> notes_;
};

std::vector<FamilyProblem> MainProblems() {
  std::vector<FamilyProblem> problems = TextbookProblems();
  for (auto* more : {&Approximations, &LargeProblems}) {
    for (const FamilyProblem& problem : more()) problems.push_back(problem);
  }
  return problems;
}

/// Every sixth textbook problem.
void SolveFromBadStarts(Table& table) {
  constexpr unsigned kStarts = 20;
  const std::vector<FamilyProblem> problems = TextbookProblems();
  for (std::size_t i = 0; i < problems.size(); i += 5) {
    if (problems[i].family == "all-pass") continue;
    for (unsigned start = 1; start <= kStarts; ++start) {
      table.Solve(problems[i], WithRandomStarts(problems[i].record, start),
                  problems[i].name + ", start " + std::to_string(start));
    }
  }
}

void WriteFiles(const std::string& folder) {
  for (const FamilyProblem& problem : MainProblems()) {
    std::string name = problem.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == ' ' || c == ',' || c == '%'; }, '-');
    ConsoleHost host;
    ResponseRecord record = problem.record;
    WriteResponseFile(host, record, {folder, name, ""});
  }
}

void Run(const Request& request) {
  if (!request.folder.empty()) return WriteFiles(request.folder);
  Table table(request);
  if (request.mode == "--bad-starts") {
    SolveFromBadStarts(table);
  } else if (request.mode == "--noise") {
    for (const FamilyProblem& one : NoisyProblems()) table.Solve(one, one.record, one.name);
  } else if (request.mode == "--random") {
    for (const FamilyProblem& one : RandomProblems(190, 1)) table.Solve(one, one.record, one.name);
  } else {
    for (const FamilyProblem& one : MainProblems()) {
      const bool isEmpty = request.mode == "--empty";
      if (isEmpty && one.family == "all-pass") continue;
      table.Solve(one, isEmpty ? WithoutStarts(one.record) : one.record, one.name);
    }
  }
  table.Print();
}

}  // namespace
}  // namespace polefit::families

int main(int argc, char** argv) {
  polefit::families::Request request;
  const std::vector<std::string> words(argv + 1, argv + argc);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--all") {
      request.listsAll = true;
    } else if (words[i] == "--write" && i + 1 < words.size()) {
      request.folder = words[++i];
    } else {
      (words[i].starts_with("--") ? request.mode : request.part) = words[i];
    }
  }
  polefit::families::Run(request);
  return 0;
}
