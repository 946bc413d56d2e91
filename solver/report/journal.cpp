#include "solver/report/journal.h"

#include <cmath>

#include "base/text_format.h"

namespace polefit {

namespace {

/// Whether the `count`-th event is one of every `each`.
bool IsEach(int count, int each) {
  return each > 0 && count % each == 0;
}

/// A barrier problem's name for the console and for DETAIL.
std::string NameOfProblem(int problem) {
  return problem == 0 ? "polish" : Format("problem %d", problem);
}

double Rms(const Iterate& iterate) {
  return std::sqrt(iterate.fit.meanSquare);
}

}  // namespace

const char* NameOf(StartKind kind) {
  switch (kind) {
    case StartKind::typed:
      return "typed values";
    case StartKind::data:
      return "from the points";
    case StartKind::standard:
      return "standard constellation";
    case StartKind::perturbed:
      return "best point perturbed";
    case StartKind::parted:
      return "met zeros parted";
    default:
      return "random point";
  }
}

const char* NameOf(EndReason reason) {
  switch (reason) {
    case EndReason::converged:
      return "ZERO";
    case EndReason::atBound:
      return "BOUND";
    case EndReason::rho:
      return "RHO";
    case EndReason::stepsLim:
      return "STEPSLIM";
    case EndReason::evalMax:
      return "EVALMAX";
    default:
      return "request";
  }
}

Journal::Journal(const Problem& problem, std::ostream& progress)
    : problem_(problem), progress_(progress), lastShown_(Clock::now() - std::chrono::hours(1)) {}

void Journal::StartBegan(int start, StartKind kind) {
  start_ = start;
  if (IsTimeToShow()) progress_ << Format("start %d: %s", start, NameOf(kind)) << std::endl;
}

/// STEPOUT counts the steps of the typed start through all its problems.
void Journal::StepTaken(const StepReport& step) {
  if (start_ != 1 || !IsEach(++stepsOfTypedStart_, problem_.options.stepOut)) return;
  const Iterate& iterate = *step.iterate;
  lines_.push_back({start_, Kind::problem,
                    Format("    step %-4d (%d) RHO %.1e F %.6e rms %.1e max %.1e r %.2g",
                           stepsOfTypedStart_, step.evaluations, step.rho, iterate.Cost(),
                           Rms(iterate), iterate.fit.largestError, step.radius)});
  ShowProgress(step.problem, step.step, step.evaluations, iterate);
}

void Journal::ProblemEnded(const ProblemReport& problem) {
  const Iterate& iterate = *problem.iterate;
  const std::string name = problem.problem == 0 ? "polish " : Format("%-7d", problem.problem);
  lines_.push_back(
      {start_, Kind::problem,
       Format("  %s RHO %.2e %4d steps, at evaluation %5d  F %.6e  %s", name.c_str(), problem.rho,
              problem.steps, problem.evaluations, iterate.Cost(), NameOf(problem.ending))});
  ShowProgress(problem.problem, problem.steps, problem.evaluations, iterate);
  if (problem.problem > 0 && IsEach(++problems_, problem_.options.detail[0])) {
    AddDetail("      " + NameOfProblem(problem.problem) + " ended at these locations, normalised:");
    AddLocations(iterate);
  }
}

void Journal::LynxIterated(double mismatch, double share) {
  if (!IsEach(++lynxIterations_, problem_.options.detail[1])) return;
  AddDetail(Format("      LYNX iteration %d: peaks differ by %.2e nepers, step share %g",
                   lynxIterations_, mismatch, share));
}

void Journal::WrenIterated(double frequency, double step) {
  if (!IsEach(++wrenIterations_, problem_.options.detail[2])) return;
  AddDetail(Format("      WREN iteration %d: frequency %.9g MHz, step %.2e MHz", wrenIterations_,
                   frequency * problem_.freqNorm, step * problem_.freqNorm));
}

void Journal::AddDetail(const std::string& text) {
  constexpr int kMostLines = 500;
  if (++detailLines_ < kMostLines) lines_.push_back({start_, Kind::detail, text});
  if (detailLines_ == kMostLines) {
    lines_.push_back({start_, Kind::detail, "      (DETAIL ends here, after 500 lines)"});
  }
}

/// The locations one after the other, a pair as "real,imaginary", a few a line.
void Journal::AddLocations(const Iterate& iterate) {
  constexpr std::size_t kWidth = 78;
  const std::string begin = "       ";
  std::string line = begin;
  for (const Factor& factor : problem_.constellation.factors) {
    std::string location = Format(" %.9g", iterate.parameters[factor.parameter]);
    if (factor.IsPair()) location += Format(",%.9g", iterate.parameters[factor.parameter + 1]);
    if (line.size() + location.size() > kWidth) {
      AddDetail(line);
      line = begin;
    }
    line += location;
  }
  AddDetail(line);
}

/// A terminal or a pipe that is slow to read must not slow the solver down.
bool Journal::IsTimeToShow() {
  const Clock::time_point now = Clock::now();
  if (now - lastShown_ < std::chrono::milliseconds(100)) return false;
  lastShown_ = now;
  return true;
}

void Journal::ShowProgress(int problem, int step, int evaluations, const Iterate& iterate) {
  if (!IsTimeToShow()) return;
  progress_ << Format("start %d, %s, step %d: %d of %d, F %.1e, rms %.3e, max %.3e", start_,
                      NameOfProblem(problem).c_str(), step, evaluations,
                      problem_.options.maxEvaluations, iterate.Cost(), Rms(iterate),
                      iterate.fit.largestError)
            << std::endl;
}

}  // namespace polefit
