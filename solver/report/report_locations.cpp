#include "solver/report/report_locations.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/report/locations.h"

namespace polefit {

namespace {

/// What stands before a real part.
const char* SignOf(Side side) {
  switch (side) {
    case Side::both:
      return "+-";
    case Side::right:
      return "+";
    default:
      return "-";
  }
}

std::string RowName(const LocationFigures& location) {
  const std::string name = location.isOwnPole ? "  its own pole" : location.Name();
  return location.isLossless && location.isDoublet ? name + " x2" : name;
}

/// Adds the real and the imaginary parts, multiplied by `scale`, as figures of up to `digits`
/// digits. A real part that is small beside the others matters most: it makes a high Q.
void AddParts(const std::vector<LocationFigures>& locations, const char* unit, double scale,
              int digits, ReportTable& table) {
  constexpr int kLeastDigits = 4;
  constexpr int kSigns = 2;
  const int width = digits + 2;
  double largest = scale;
  for (const LocationFigures& location : locations) {
    largest = std::max({largest, location.real.value * scale, location.imaginary.value * scale});
  }
  const FigureFormat format(largest, width, digits, kLeastDigits);
  const auto figure = [&](const char* sign, double value) {
    return value == 0 ? std::string("0") : sign + format(value * scale);
  };
  std::vector<std::string> reals, imaginaries;
  for (const LocationFigures& location : locations) {
    reals.push_back(figure(SignOf(location.side), location.real.value));
    imaginaries.push_back(figure("+-", location.imaginary.value));
  }
  table.Add("real", unit, width + kSigns, reals);
  table.Add("imaginary", unit, width + kSigns, imaginaries);
}

void WriteRows(const std::vector<LocationFigures>& locations, double freqNorm, ReportText& text) {
  constexpr std::size_t kNameWidth = 20;
  const FigureFormat thousandths(1, 8, 4);
  std::vector<std::string> names, qualities;
  for (const LocationFigures& location : locations) {
    names.push_back(Padded("  " + RowName(location), kNameWidth));
    qualities.push_back(location.IsPair() ? thousandths(location.Quality()) : "");
  }
  ReportTable table;
  table.Add("", "", static_cast<int>(kNameWidth), names);
  AddParts(locations, "normalised", 1, 7, table);
  AddParts(locations, "MHz", freqNorm, 8, table);
  table.Add("Q", "(none)", 8, qualities);
  table.Write(text);
}

std::string RootText(double real, double imaginary) {
  return imaginary == 0 ? Format("%.9g", real) : Format("%.9g%+.9gj", real, imaginary);
}

/// All roots that a location stands for.
std::vector<std::string> RootsOf(const LocationFigures& location) {
  const double real = location.real.value;
  const double imaginary = location.imaginary.value;
  const bool isSingle =
      location.kind == FactorKind::sigmaPole || location.kind == FactorKind::sigmaZero;
  std::vector<double> reals;
  if (location.side != Side::right) reals.push_back(real == 0 ? 0 : -real);
  if (location.side != Side::left) reals.push_back(real);
  if (location.isLossless && location.isDoublet) reals.push_back(reals.front());
  std::vector<std::string> roots;
  for (const double part : reals) {
    roots.push_back(RootText(part, imaginary));
    if (!isSingle) roots.push_back(RootText(part, -imaginary));
  }
  return roots;
}

/// The roots as Python, MATLAB and Octave all read them: from column 0, since Python minds the
/// indent, and each in a line, since marks of continuation are not alike.
void WriteForPasting(const Figures& figures, ReportText& text) {
  text.Line("  to paste into Python, MATLAB or Octave, for normalised s:");
  text.Line();
  for (const bool wantsPoles : {false, true}) {
    text.Line(wantsPoles ? "p = [" : "z = [");
    for (const LocationFigures& location : figures.locations) {
      const bool isPole = location.kind == FactorKind::sigmaPole ||
                          location.kind == FactorKind::polePair || location.isOwnPole;
      if (isPole != wantsPoles) continue;
      for (const std::string& root : RootsOf(location)) text.Line("  " + root + ",");
    }
    text.Line("]");
  }
  text.Line(Format("k = %.9g", figures.constant));
}

/// "+-.0012", or why there is no deviation; empty where the part is 0 by its kind.
std::string DeviationText(const LocationFigures& location, const LocationPart& part) {
  constexpr int kDigits = 2;
  constexpr int kWidth = 10;
  if (part.parameter < 0) return "";
  if (part.bound == Bound::held) return "held";
  if (part.bound != Bound::none) return "on bound";
  if (!location.IsDetermined()) return "-";
  return "+-" + Fitted(part.deviation, kDigits, kWidth);
}

/// How far each location can be trusted.
void WriteDeviations(const Figures& figures, ReportText& text) {
  constexpr std::size_t kNameWidth = 20;
  constexpr int kWidth = 12;
  std::vector<std::string> names, reals, imaginaries, remarks;
  for (const LocationFigures& location : figures.locations) {
    if (location.isOwnPole) continue;
    const bool isTold = !location.IsFree() || location.IsDetermined();
    names.push_back(Padded("  " + RowName(location), kNameWidth));
    reals.push_back(DeviationText(location, location.real));
    imaginaries.push_back(DeviationText(location, location.imaginary));
    remarks.push_back(isTold ? "" : "not determined by the points");
  }
  ReportTable table;
  table.Add("", "", static_cast<int>(kNameWidth), names);
  table.Add("+- real", "normalised", kWidth, reals);
  table.Add("+- imaginary", "normalised", kWidth, imaginaries);
  table.Add("", "", 31, remarks);
  table.Write(text);
  text.Line();
  text.Wrapped(
      "  +- is one standard deviation. It takes the errors for noise, equal in the weighted "
      "measure, and is too low where a location is hardly determined.",
      2);
}

/// Where a bound comes from.
const char* SourceOf(const LocationPart& part, const LocationFigures& location) {
  if (part.bound == Bound::upper) return "question 14";
  return &part == &location.real ? "question 13" : "the sigma axis";
}

/// Tells a part that stands on its bound; `name` says which part it is.
void WriteBound(const LocationFigures& location, const LocationPart& part, const std::string& name,
                ReportText& text) {
  const bool isOmega = location.kind == FactorKind::omegaZero;
  switch (part.bound) {
    case Bound::none:
      return;
    case Bound::held:
      text.Line("  " + name + " is held at 1, the first null at Freq Norm (question 5)");
      return;
    case Bound::rangeEnd:
      text.Wrapped(
          "  " + name +
              " stands next to the upper bound (question 14): no sidelobe is left to be made "
              "equal; fewer omega-axis zeros may do as well",
          4);
      return;
    default:
      break;
  }
  const bool isLow = part.bound == Bound::lower;
  if (isLow && isOmega) {
    text.Line("  " + name + ": 1 is the lower bound (Freq Norm, question 5)");
    return;
  }
  text.Wrapped("  " + name + ": " + ExactNumber(part.value) + " is the " +
                   (isLow ? "lower" : "upper") + " bound (" + SourceOf(part, location) + ")",
               4);
}

void WriteBoundsOf(const LocationFigures& location, ReportText& text) {
  if (location.isOwnPole) return;
  const bool hasBoth = location.real.parameter >= 0 && location.imaginary.parameter >= 0;
  const std::string name = location.Name();
  WriteBound(location, location.real, hasBoth ? name + ", real part" : name, text);
  WriteBound(location, location.imaginary, hasBoth ? name + ", imaginary part" : name, text);
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
  text.Heading("POLES AND ZEROS OF H(s)");
  WriteRows(solved.figures.locations, problem.freqNorm, text);
  text.Line();
  text.Line(Format("  gain      H(0) = %.9g", solved.figures.gain));
  text.Line(Format("  constant  K    = %.9g", solved.figures.constant));
  text.Line("            of H(s) = K prod(s-z)/prod(s-p) with normalised s");
  text.Line();
  WriteForPasting(solved.figures, text);
  text.Line();
  WriteDeviations(solved.figures, text);
}

void ReportBounds(const SolvedProblem& solved, ReportText& text) {
  ReportText bounds;
  for (const LocationFigures& location : solved.figures.locations) WriteBoundsOf(location, bounds);
  WriteStructureHints(solved.summary, bounds);
  text.Heading("LOCATIONS ON A BOUND");
  if (bounds.Lines().empty()) text.Line("  none");
  for (const std::string& line : bounds.Lines()) text.Line(line);
}

}  // namespace polefit
