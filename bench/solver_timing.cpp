// Times the solver in this process.
//   solver_timing FILE...          for each problem: F, evaluations and seconds of one start
//   solver_timing --points FILE    seconds of one model evaluation for 21, 1,000, 32,766 points

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/linux/console_host.h"
#include "responsefile/reader.h"
#include "solver/problem/problem_reader.h"
#include "solver/search/orca.h"

namespace polefit {
namespace {

constexpr int kRepetitions = 200;

ResponseRecord Read(const std::string& path) {
  ConsoleHost host;
  ResponseRecord record;
  std::string name;
  std::string folder;
  host.OpenForReading(path);
  ReadResponse(host, record, name, folder);
  host.CloseFile();
  return record;
}

/// The shortest of several runs, in seconds.
template <typename Work>
double ShortestTime(Work work) {
  double shortest = 1e9;
  for (int i = 0; i < kRepetitions; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    shortest = std::min(shortest, taken.count());
  }
  return shortest;
}

void TimeStart(const std::string& path) {
  std::vector<Finding> findings;
  const Problem problem = ReadProblem(Read(path), findings);
  Listener nobody;
  StartSummary summary;
  const double seconds = ShortestTime([&] {
    Evaluator evaluator(problem, nobody, [] { return false; });
    Orca orca(problem, evaluator, nobody);
    summary = orca.Run(StartKind::typed, problem.typedParameters, problem.options.maxSteps);
  });
  std::printf("%s %.9e %d %.3e\n", path.c_str(), summary.best.Cost(), summary.evaluations, seconds);
}

/// The record with its passband points spread over `count` points.
ResponseRecord WithPoints(const ResponseRecord& record, int count) {
  ResponseRecord wide = record;
  wide.passband.Resize(count + 1);
  wide.nFreqPoints = static_cast<std::int16_t>(count);
  for (int row = 1; row <= count; ++row) {
    const int from = 1 + (row - 1) * (record.nFreqPoints - 1) / count;
    for (int column = 2; column <= 4; ++column) {
      wide.passband.At(row, column) = record.passband.At(from, column);
    }
    wide.passband.At(row, 1) = std::to_string(10.0 * (row - 1) / count);
  }
  return wide;
}

void TimeEvaluation(const std::string& path, int points) {
  std::vector<Finding> findings;
  const Problem problem = ReadProblem(WithPoints(Read(path), points), findings);
  Objective objective(problem.constellation, problem.rows);
  Fit fit;
  constexpr int kBatch = 2000000;
  const int evaluations = std::max(1, kBatch / (points * 100));
  const double seconds = ShortestTime([&] {
    for (int i = 0; i < evaluations; ++i) objective.Evaluate(problem.typedParameters, fit);
  });
  std::printf("%d %.3e\n", points, seconds / evaluations);
}

}  // namespace
}  // namespace polefit

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  if (words.size() == 2 && words[0] == "--points") {
    for (const int points : {21, 1000, 32766}) polefit::TimeEvaluation(words[1], points);
    return 0;
  }
  for (const std::string& path : words) polefit::TimeStart(path);
  return words.empty() ? 6 : 0;
}
