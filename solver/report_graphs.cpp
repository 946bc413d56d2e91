#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "solver/model.h"
#include "solver/report.h"
#include "solver/text_format.h"

namespace polefit {

namespace {

constexpr int kRows = 18;
constexpr int kColumns = 66;

struct Range {
  double low;
  double high;
};

/// A line graph of characters with labelled axes.
class Graph {
 public:
  Graph(Range x, Range y) : x_(x), y_(y) { rows_.fill(std::string(kColumns, ' ')); }

  /// Puts a mark where the point lies in the graph; two different marks at one place are "#".
  void Plot(double x, double y, char mark) {
    const double column = (x - x_.low) / (x_.high - x_.low) * (kColumns - 1);
    const double row = (y_.high - y) / (y_.high - y_.low) * (kRows - 1);
    const bool isInside =
        column > -0.5 && column < kColumns - 0.5 && row > -0.5 && row < kRows - 0.5;
    if (!isInside) return;
    char& place = rows_[static_cast<std::size_t>(std::lround(row))]
                       [static_cast<std::size_t>(std::lround(column))];
    place = place == ' ' || place == mark ? mark : '#';
  }

  void Write(ReportText& text) const {
    for (int row = 0; row < kRows; ++row) {
      const double value = y_.high - (y_.high - y_.low) * row / (kRows - 1);
      const bool isLabelled = (kRows - 1 - row) % 2 == 0;
      text.Line((isLabelled ? Format("%9.4g +", value) : std::string(10, ' ') + "|") +
                rows_[static_cast<std::size_t>(row)]);
    }
    text.Line(std::string(10, ' ') + "+" + std::string(kColumns, '-'));
    const std::string low = Format("%.4g", x_.low);
    const std::string high = Format("%.4g MHz", x_.high);
    const std::string middle = Format("%.4g", (x_.low + x_.high) / 2);
    std::string axis(11, ' ');
    axis += Padded(low, kColumns / 2 - middle.size() / 2) + middle;
    text.Line(Padded(axis, 11 + kColumns - high.size()) + high);
  }

 private:
  Range x_;
  Range y_;
  std::array<std::string, kRows> rows_;
};

/// A range that holds the values, with a round number a row.
Range RoundedRange(double low, double high) {
  constexpr std::array<double, 11> kUnits = {1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8, 10};
  const double span = std::max({high - low, 1e-6 * std::abs(low), 1e-12});
  const double decade = std::pow(10, std::floor(std::log10(span / (kRows - 1))));
  for (const double unit : kUnits) {
    const double step = unit * decade;
    const double start = std::floor(low / step) * step;
    if (start + (kRows - 1) * step >= low + span) return {start, start + (kRows - 1) * step};
  }
  return {low, low + span * 2};
}

Range FrequencyRange(double low, double high) {
  if (!(high > low)) return {low - 0.5, low + 0.5};
  return {low, high};
}

void DrawPassband(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Eigen::ArrayXd magnitudes =
      solved.summary.best.fit.gain *
      Magnitudes(problem.constellation, solved.summary.best.parameters, problem.rows.frequencies);
  Range x = {problem.passband[0].frequency, problem.passband[0].frequency};
  double top = 0;
  for (std::size_t i = 0; i < problem.passband.size(); ++i) {
    const PassbandPoint& point = problem.passband[i];
    x = {std::min(x.low, point.frequency), std::max(x.high, point.frequency)};
    top = std::max({top, point.yout, point.yin * magnitudes[static_cast<Eigen::Index>(i)]});
  }
  Graph graph(FrequencyRange(x.low, x.high), RoundedRange(0, top));
  for (std::size_t i = 0; i < problem.passband.size(); ++i) {
    const PassbandPoint& point = problem.passband[i];
    graph.Plot(point.frequency, point.yout, 'o');
    graph.Plot(point.frequency, point.yin * magnitudes[static_cast<Eigen::Index>(i)], '*');
  }
  text.Heading("OUTPUT AGAINST FREQUENCY:  o desired (Yout)  * obtained (Yin*|H|)  # both");
  graph.Write(text);
}

/// |H| to three times Freq Norm, where the sidelobes that matter are; deeper than -80 dB it is
/// drawn on the floor.
void DrawMagnitude(const SolvedProblem& solved, ReportText& text) {
  constexpr double kFloor = -80;
  constexpr int kSamples = 4 * kColumns;
  const Problem& problem = solved.problem;
  const double end = std::min(3.0, problem.largest);
  const Eigen::ArrayXd w = Eigen::ArrayXd::LinSpaced(kSamples, 0, end);
  const Eigen::ArrayXd decibels =
      20 * Magnitudes(problem.constellation, solved.summary.best.parameters, w).log10();
  const double top = std::max(0.0, std::ceil(decibels.maxCoeff() / 5) * 5);
  Graph graph({0, end * problem.freqNorm}, RoundedRange(kFloor, top));
  for (Eigen::Index i = 0; i < w.size(); ++i) {
    graph.Plot(w[i] * problem.freqNorm, std::max(kFloor, decibels[i]), '*');
  }
  text.Heading("MAGNITUDE OF H IN dB AGAINST H(0)");
  graph.Write(text);
}

void DrawDelay(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const double constant = solved.summary.best.fit.delayConstant;
  const DelayQuality quality = JudgeDelay(problem, solved.summary.best);
  Range x = {problem.delay[0].frequency, problem.delay[0].frequency};
  Range y = {constant, constant};
  for (std::size_t i = 0; i < problem.delay.size(); ++i) {
    const double frequency = problem.delay[i].frequency;
    x = {std::min(x.low, frequency), std::max(x.high, frequency)};
    y = {std::min(y.low, quality.total[i]), std::max(y.high, quality.total[i])};
  }
  x = FrequencyRange(x.low, x.high);
  Graph graph(x, RoundedRange(y.low, y.high));
  for (std::size_t i = 0; i < problem.delay.size(); ++i) {
    graph.Plot(problem.delay[i].frequency, quality.total[i], '*');
  }
  for (int column = 0; column < kColumns; ++column) {
    graph.Plot(x.low + (x.high - x.low) * column / (kColumns - 1), constant, '-');
  }
  text.Heading("TOTAL DELAY IN ns:  * TX + delay of H  - its constant T0  # both");
  graph.Write(text);
}

}  // namespace

void ReportGraphs(const SolvedProblem& solved, ReportText& text) {
  DrawPassband(solved, text);
  DrawMagnitude(solved, text);
  if (solved.problem.wantsDelay) DrawDelay(solved, text);
}

}  // namespace polefit
