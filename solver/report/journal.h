#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

#include "solver/problem/problem.h"
#include "solver/search/evaluator.h"
#include "solver/search/listener.h"

namespace polefit {

/// What STEPOUT and DETAIL ask for and how the barrier problems ended, as lines for the report;
/// and the run's progress on the console, at most ten lines a second.
class Journal : public Listener {
 public:
  /// The report shows problem lines of the typed and of the chosen start, detail lines of all.
  enum class Kind { problem, detail };
  struct Line {
    int start;
    Kind kind;
    std::string text;
  };

  Journal(const Problem& problem, std::ostream& progress);

  const std::vector<Line>& Lines() const { return lines_; }

  void StartBegan(int start, StartKind kind) override;
  void StepTaken(const StepReport& step) override;
  void ProblemEnded(const ProblemReport& problem) override;
  void LynxIterated(double mismatch, double share) override;
  void WrenIterated(double frequency, double step) override;

 private:
  using Clock = std::chrono::steady_clock;

  void AddDetail(const std::string& text);
  void AddLocations(const Iterate& iterate);
  void ShowProgress(int problem, int step, int evaluations, const Iterate& iterate);
  bool IsTimeToShow();

  const Problem& problem_;
  std::ostream& progress_;
  std::vector<Line> lines_;
  Clock::time_point lastShown_;
  int start_ = 0;
  int stepsOfTypedStart_ = 0;
  int problems_ = 0;
  int lynxIterations_ = 0;
  int wrenIterations_ = 0;
  int detailLines_ = 0;
};

/// "typed values", "standard constellation", ...
const char* NameOf(StartKind kind);

/// "ZERO", "RHO", "STEPSLIM", "BOUND", "EVALMAX", "request".
const char* NameOf(EndReason reason);

}  // namespace polefit
