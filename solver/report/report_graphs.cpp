#include "solver/report/report_graphs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/model/model.h"

namespace polefit {

namespace {

constexpr int kRows = 18;
constexpr int kColumns = 66;

struct Range {
  double low;
  double high;
};

/// A label of an axis with values up to `largest`: whole below 1e9, and with so many digits that
/// those of neighbouring marks, `step` apart, differ. A rounding error at 0 is 0.
std::string Label(double value, double step, double largest) {
  constexpr int kWidth = 11;
  constexpr int kWhole = 9;
  if (std::abs(value) < 1e-6 * step) return "0";
  const int exponent = DecimalExponent(largest, 1);
  const int digits = exponent - DecimalExponent(step, 1) + 2;
  return Fitted(value, std::max({4, digits, std::min(exponent + 1, kWhole)}), kWidth);
}

/// A line graph of characters with labelled axes.
class Graph {
 public:
  /// `unit` is that of y; x is in MHz.
  Graph(Range x, Range y, std::string unit) : x_(x), y_(y), unit_(std::move(unit)) {
    rows_.fill(std::string(kColumns, ' '));
  }

  /// Puts a mark where the point lies in the graph; two different marks at one place are "#".
  void Plot(double x, double y, char mark) {
    const double column = (x - x_.low) / (x_.high - x_.low) * (kColumns - 1);
    const double row = Row(y);
    const bool isInside =
        column > -0.5 && column < kColumns - 0.5 && row > -0.5 && row < kRows - 0.5;
    if (!isInside) return;
    char& place = rows_[static_cast<std::size_t>(std::lround(row))]
                       [static_cast<std::size_t>(std::lround(column))];
    place = place == ' ' || place == mark ? mark : '#';
  }

  /// Plots a straight line without gaps between its rows.
  void Connect(double x1, double y1, double x2, double y2, char mark) {
    const double rows = std::ceil(std::abs(Row(y2) - Row(y1)));
    // In this order 1 also where `rows` is no number.
    const int parts = static_cast<int>(std::min(std::max(1.0, rows), 1.0 * kRows));
    for (int i = 0; i <= parts; ++i) {
      Plot(x1 + (x2 - x1) * i / parts, y1 + (y2 - y1) * i / parts, mark);
    }
  }

  void Write(ReportText& text) const {
    std::array<std::string, kRows> labels;
    labels[0] = unit_ + " |";
    const double step = (y_.high - y_.low) / (kRows - 1);
    for (int row = 1; row < kRows; ++row) {
      const bool isLabelled = (kRows - 1 - row) % 2 == 0;
      const double largest = std::max(std::abs(y_.low), std::abs(y_.high));
      labels[static_cast<std::size_t>(row)] =
          isLabelled ? Label(y_.high - step * row, step, largest) + " +" : "|";
    }
    std::size_t margin = 11;
    for (const std::string& label : labels) margin = std::max(margin, label.size());
    for (std::size_t row = 0; row < kRows; ++row) {
      text.Line(std::string(margin - labels[row].size(), ' ') + labels[row] + rows_[row]);
    }
    WriteAxis(margin, text);
  }

 private:
  double Row(double y) const { return (y_.high - y) / (y_.high - y_.low) * (kRows - 1); }

  void WriteAxis(std::size_t margin, ReportText& text) const {
    text.Line(std::string(margin - 1, ' ') + "+" + std::string(kColumns, '-'));
    const auto label = [this](double value) {
      return Label(value, (x_.high - x_.low) / kColumns, std::max(std::abs(x_.low), x_.high));
    };
    const std::string high = label(x_.high) + " MHz";
    const std::string middle = label((x_.low + x_.high) / 2);
    std::string axis(margin, ' ');
    axis += Padded(label(x_.low), kColumns / 2 - middle.size() / 2) + middle;
    text.Line(Padded(axis, margin + kColumns - high.size()) + high);
  }

  Range x_;
  Range y_;
  std::string unit_;
  std::array<std::string, kRows> rows_;
};

/// A range that holds the values, with a round number a row.
Range RoundedRange(double low, double high) {
  constexpr std::array<double, 11> kUnits = {1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8, 10};
  double span = std::max({high - low, 1e-6 * std::abs(low), 1e-6 * std::abs(high)});
  if (span == 0) span = 1;
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
  Graph graph(FrequencyRange(x.low, x.high), RoundedRange(0, top), "as Yout");
  for (std::size_t i = 0; i < problem.passband.size(); ++i) {
    const PassbandPoint& point = problem.passband[i];
    graph.Plot(point.frequency, point.yout, 'o');
    graph.Plot(point.frequency, point.yin * magnitudes[static_cast<Eigen::Index>(i)], '*');
  }
  text.Heading("OUTPUT AGAINST FREQUENCY:  o desired (Yout)  * obtained (Yin*|H|)  # both");
  graph.Write(text);
}

/// |H| to three times Freq Norm, where the sidelobes that matter are; deeper than -80 dB it is
/// drawn on the floor. Every null in that range is among the samples.
void DrawMagnitude(const SolvedProblem& solved, ReportText& text) {
  constexpr double kFloor = -80;
  constexpr int kSamples = 4 * kColumns;
  const Problem& problem = solved.problem;
  const Eigen::VectorXd& parameters = solved.summary.best.parameters;
  const double end = std::min(3.0, problem.largest);
  std::vector<double> samples;
  samples.reserve(kSamples);
  for (int i = 0; i < kSamples; ++i) samples.push_back(end * i / (kSamples - 1));
  for (const Factor& factor : problem.constellation.factors) {
    const double location = parameters[factor.parameter];
    if (factor.kind == FactorKind::omegaZero && location <= end) samples.push_back(location);
  }
  std::sort(samples.begin(), samples.end());
  const Eigen::ArrayXd w =
      Eigen::Map<Eigen::ArrayXd>(samples.data(), static_cast<Eigen::Index>(samples.size()));
  const Eigen::ArrayXd decibels =
      (20 * Magnitudes(problem.constellation, parameters, w).log10()).max(kFloor);
  const double top = std::max(0.0, std::ceil(decibels.maxCoeff() / 5) * 5);
  Graph graph({0, end * problem.freqNorm}, RoundedRange(kFloor, top), "dB");
  for (Eigen::Index i = 1; i < w.size(); ++i) {
    graph.Connect(w[i - 1] * problem.freqNorm, decibels[i - 1], w[i] * problem.freqNorm,
                  decibels[i], '*');
  }
  text.Heading("MAGNITUDE OF H IN dB AGAINST H(0)");
  graph.Write(text);
}

void DrawDelay(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const double constant = solved.summary.best.fit.delayConstant;
  const DelayFigures& quality = *solved.figures.delay;
  Range x = {problem.delay[0].frequency, problem.delay[0].frequency};
  Range y = {constant, constant};
  for (std::size_t i = 0; i < problem.delay.size(); ++i) {
    const double frequency = problem.delay[i].frequency;
    x = {std::min(x.low, frequency), std::max(x.high, frequency)};
    y = {std::min(y.low, quality.total[i]), std::max(y.high, quality.total[i])};
  }
  x = FrequencyRange(x.low, x.high);
  Graph graph(x, RoundedRange(y.low, y.high), "ns");
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
