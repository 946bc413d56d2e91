#include <cmath>
#include <string>

#include "solver/last_run.h"
#include "solver/report.h"
#include "solver/text_format.h"
#include "solver/wren.h"

namespace polefit {

namespace {

constexpr FactorKind kReportOrder[] = {FactorKind::sigmaPole, FactorKind::polePair,
                                       FactorKind::sigmaZero, FactorKind::omegaZero,
                                       FactorKind::zeroPair,  FactorKind::zeroQuad};

const char* NameOf(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return "sigma-axis pole";
    case FactorKind::polePair:
      return "pole pair";
    case FactorKind::sigmaZero:
      return "sigma-axis zero";
    case FactorKind::omegaZero:
      return "omega-axis zero";
    case FactorKind::zeroPair:
      return "zero pair";
    default:
      return "zero quad";
  }
}

/// A row of the table of poles and zeros; `sign` stands before the real part, and an imaginary
/// part stands for both signs.
std::string LocationRow(const std::string& name, const char* sign, double real, double imaginary,
                        double freqNorm) {
  const auto part = [](double value, const char* before) {
    return value == 0 ? std::string("0") : before + Format("%.6f", value);
  };
  std::string row = Format("  %-18s %11s %11s %12s %12s", name.c_str(), part(real, sign).c_str(),
                           part(imaginary, "+-").c_str(), part(real * freqNorm, sign).c_str(),
                           part(imaginary * freqNorm, "+-").c_str());
  if (real != 0 && imaginary != 0)
    row += Format(" %8.3f", std::hypot(real, imaginary) / (2 * real));
  return row;
}

bool IsLossless(const Factor& factor) {
  return factor.kind == FactorKind::sigmaZero && factor.logCount == 0;
}

/// The side of the omega axis on which a real part lies, or both sides.
const char* SignOf(const Problem& problem, std::size_t index) {
  const Factor& factor = problem.constellation.factors[index];
  if (factor.kind == FactorKind::zeroQuad) return "+-";
  if (factor.kind == FactorKind::sigmaZero && factor.logCount == 2) return "+-";
  if (IsLossless(factor) || problem.isRightHalf[index]) return "+";
  return "-";
}

void WriteFactor(const Problem& problem, const Point& point, std::size_t index, int number,
                 ReportText& text) {
  const Factor& factor = problem.constellation.factors[index];
  const double location = point.parameters[factor.parameter];
  const bool isOmega = factor.kind == FactorKind::omegaZero;
  const double real = isOmega ? 0 : location;
  const double imaginary =
      isOmega ? location : (factor.IsPair() ? point.parameters[factor.parameter + 1] : 0);
  std::string name = NameOf(factor.kind);
  if (factor.kind == FactorKind::sigmaZero) {
    if (factor.delayCount == 4) name += " x2";
  } else {
    name += Format(" %d", number);
  }
  text.Line(LocationRow(name, SignOf(problem, index), real, imaginary, problem.freqNorm));
  if (!IsLossless(factor)) return;
  text.Line(LocationRow(factor.delayCount == 4 ? "  its own pole x2" : "  its own pole", "-", real,
                        0, problem.freqNorm));
}

/// K of H = K prod(s - z) / prod(s - p) in normalised s.
double LeadingConstant(const Problem& problem, const Point& point) {
  double constant = point.fit.gain;
  for (std::size_t i = 0; i < problem.constellation.factors.size(); ++i) {
    const Factor& factor = problem.constellation.factors[i];
    const double a = point.parameters[factor.parameter];
    const double b = factor.IsPair() ? point.parameters[factor.parameter + 1] : 0;
    const double square = a * a + b * b;
    switch (factor.kind) {
      case FactorKind::sigmaPole:
        constant *= a;
        break;
      case FactorKind::polePair:
        constant *= square;
        break;
      case FactorKind::omegaZero:
      case FactorKind::zeroPair:
        constant /= square;
        break;
      case FactorKind::zeroQuad:
        constant /= square * square;
        break;
      case FactorKind::sigmaZero:
        if (factor.logCount == 1) constant /= problem.isRightHalf[i] ? -a : a;
        if (factor.logCount == 2) constant /= -a * a;
        if (factor.delayCount == 2) constant = -constant;
        break;
    }
  }
  return constant;
}

/// Names a variable that stands on its bound.
void WriteBound(const SolvedProblem& solved, const std::string& name, int variable, bool isReal,
                ReportText& text) {
  const Problem& problem = solved.problem;
  const double value = solved.summary.best.parameters[variable];
  const bool isLow = value <= problem.lower[variable];
  if (!isLow && value < problem.upper[variable]) return;
  const char* source = "question 14";
  if (isLow) source = isReal ? "question 13" : "the sigma axis";
  text.Line("  " + name + ": " + ExactNumber(value) + " is the " + (isLow ? "lower" : "upper") +
            " bound (" + source + ")");
}

void WriteBoundsOf(const SolvedProblem& solved, std::size_t index, const std::string& name,
                   ReportText& text) {
  const Problem& problem = solved.problem;
  const Factor& factor = problem.constellation.factors[index];
  const double location = solved.summary.best.parameters[factor.parameter];
  if (factor.parameter >= problem.constellation.MovedCount()) {
    text.Line("  " + name + " is held at 1, the first null at Freq Norm (question 5)");
    return;
  }
  if (factor.parameter >= problem.constellation.orcaCount) return;
  if (factor.kind == FactorKind::omegaZero && location <= 1) {
    text.Line("  " + name + ": 1 is the lower bound (Freq Norm, question 5)");
    return;
  }
  WriteBound(solved, factor.IsPair() ? name + ", real part" : name, factor.parameter, true, text);
  if (!factor.IsPair()) return;
  WriteBound(solved, name + ", imaginary part", factor.parameter + 1, false, text);
}

/// A pair on the sigma axis has two equal real poles and cannot part by itself: b^2 would have to
/// become negative.
void WriteSplitHint(const SolvedProblem& solved, ReportText& text) {
  int singles = 0;
  int pairs = 0;
  bool isReal = false;
  for (const Factor& factor : solved.problem.constellation.factors) {
    if (factor.kind == FactorKind::sigmaPole) ++singles;
    if (factor.kind != FactorKind::polePair) continue;
    ++pairs;
    isReal = isReal || solved.summary.best.parameters[factor.parameter + 1] == 0;
  }
  if (!isReal) return;
  text.Line(Format("  hint: two sigma-axis poles may fit better; try question 6 = %d %d",
                   singles + 2, pairs - 1));
}

}  // namespace

void ReportLocations(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Point& best = solved.summary.best;
  text.Heading("POLES AND ZEROS OF H(s)");
  text.Line("                         real   imaginary         real    imaginary        Q");
  text.Line("                   normalised  normalised          MHz          MHz");
  for (const FactorKind kind : kReportOrder) {
    int number = 0;
    for (const std::size_t index : SortedFactors(problem, best, kind)) {
      WriteFactor(problem, best, index, ++number, text);
    }
  }
  text.Line();
  text.Line("  gain      H(0) = " + PlainNumber(best.fit.gain));
  text.Line(Format("  constant  K    = %.9g", LeadingConstant(problem, best)));
  text.Line("            of H(s) = K prod(s-z)/prod(s-p) with normalised s");
}

void ReportBounds(const SolvedProblem& solved, ReportText& text) {
  ReportText bounds;
  for (const FactorKind kind : kReportOrder) {
    int number = 0;
    for (const std::size_t index : SortedFactors(solved.problem, solved.summary.best, kind)) {
      const std::string name = kind == FactorKind::sigmaZero
                                   ? std::string(NameOf(kind))
                                   : NameOf(kind) + Format(" %d", ++number);
      WriteBoundsOf(solved, index, name, bounds);
    }
  }
  WriteSplitHint(solved, bounds);
  text.Heading("LOCATIONS ON A BOUND");
  if (bounds.Lines().empty()) text.Line("  none");
  for (const std::string& line : bounds.Lines()) text.Line(line);
}

}  // namespace polefit
