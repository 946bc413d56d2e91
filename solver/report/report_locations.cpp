#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/report/last_run.h"
#include "solver/report/report.h"

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

/// A row of the table of poles and zeros; `sign` stands before the real part, and an imaginary
/// part stands for both signs. The parts are magnitudes, normalised.
struct LocationRow {
  std::string name;
  const char* sign;
  double real;
  double imaginary;
};

/// The row of a factor, and that of the pole that a lossless zero brings along.
void AddRows(const Problem& problem, const Point& point, std::size_t index, int number,
             std::vector<LocationRow>& rows) {
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
  rows.push_back({name, SignOf(problem, index), real, imaginary});
  if (!IsLossless(factor)) return;
  rows.push_back({factor.delayCount == 4 ? "  its own pole x2" : "  its own pole", "-", real, 0});
}

/// Adds the real and the imaginary parts, multiplied by `scale`, as figures of up to `digits`
/// digits. A real part that is small beside the others matters most: it makes a high Q.
void AddParts(const std::vector<LocationRow>& rows, const char* unit, double scale, int digits,
              ReportTable& table) {
  constexpr int kLeastDigits = 4;
  constexpr int kSigns = 2;
  const int width = digits + 2;
  double largest = scale;
  for (const LocationRow& row : rows) {
    largest = std::max({largest, row.real * scale, row.imaginary * scale});
  }
  const FigureFormat format(largest, width, digits, kLeastDigits);
  const auto figure = [&](const char* sign, double value) {
    return value == 0 ? std::string("0") : sign + format(value * scale);
  };
  std::vector<std::string> reals, imaginaries;
  for (const LocationRow& row : rows) {
    reals.push_back(figure(row.sign, row.real));
    imaginaries.push_back(figure("+-", row.imaginary));
  }
  table.Add("real", unit, width + kSigns, reals);
  table.Add("imaginary", unit, width + kSigns, imaginaries);
}

void WriteRows(const std::vector<LocationRow>& rows, double freqNorm, ReportText& text) {
  constexpr std::size_t kNameWidth = 20;
  const FigureFormat thousandths(1, 8, 4);
  std::vector<std::string> names, qualities;
  for (const LocationRow& row : rows) {
    names.push_back(Padded("  " + row.name, kNameWidth));
    const bool isPair = row.real != 0 && row.imaginary != 0;
    qualities.push_back(isPair ? thousandths(std::hypot(row.real, row.imaginary) / (2 * row.real))
                               : "");
  }
  ReportTable table;
  table.Add("", "", static_cast<int>(kNameWidth), names);
  AddParts(rows, "normalised", 1, 7, table);
  AddParts(rows, "MHz", freqNorm, 8, table);
  table.Add("Q", "(none)", 8, qualities);
  table.Write(text);
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
  text.Wrapped("  " + name + ": " + ExactNumber(value) + " is the " + (isLow ? "lower" : "upper") +
                   " bound (" + source + ")",
               4);
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
  // The others stand above it, so that it cannot reach the bound itself.
  if (factor.kind == FactorKind::omegaZero && problem.Equalises() &&
      IsAtRangeEnd(problem, location)) {
    text.Wrapped(
        "  " + name +
            " stands next to the upper bound (question 14): no sidelobe is left to be made "
            "equal; fewer omega-axis zeros may do as well",
        4);
    return;
  }
  WriteBound(solved, factor.IsPair() ? name + ", real part" : name, factor.parameter, true, text);
  if (!factor.IsPair()) return;
  WriteBound(solved, name + ", imaginary part", factor.parameter + 1, false, text);
}

/// What other structures of H(s) reach.
void WriteStructureHints(const Summary& summary, ReportText& text) {
  constexpr std::size_t kIndent = 4;
  if (summary.splitPairs) {
    const OtherStructure& split = *summary.splitPairs;
    text.Wrapped(Format("  hint: a pole pair ended on the sigma axis; two sigma-axis poles in its "
                        "place: question 6 = %d %d reaches F %.6e",
                        split.poleCounts[0], split.poleCounts[1], split.cost),
                 kIndent);
  }
  if (!summary.hasMetZeros) return;
  std::string met = "  hint: omega-axis zeros have met, and did not fit better apart";
  if (summary.joinedZeros) {
    const OtherStructure& joined = *summary.joinedZeros;
    met += Format("; question 11 = %d %d %d reaches F %.6e", joined.zeroCounts[0],
                  joined.zeroCounts[1], joined.zeroCounts[2], joined.cost);
  }
  text.Wrapped(met, kIndent);
}

}  // namespace

void ReportLocations(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Point& best = solved.summary.best;
  std::vector<LocationRow> rows;
  for (const FactorKind kind : kReportOrder) {
    int number = 0;
    for (const std::size_t index : SortedFactors(problem, best, kind)) {
      AddRows(problem, best, index, ++number, rows);
    }
  }
  text.Heading("POLES AND ZEROS OF H(s)");
  WriteRows(rows, problem.freqNorm, text);
  text.Line();
  text.Line(Format("  gain      H(0) = %.9g", best.fit.gain));
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
  WriteStructureHints(solved.summary, bounds);
  text.Heading("LOCATIONS ON A BOUND");
  if (bounds.Lines().empty()) text.Line("  none");
  for (const std::string& line : bounds.Lines()) text.Line(line);
}

}  // namespace polefit
