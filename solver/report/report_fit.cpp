#include "solver/report/report_fit.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/report/figures.h"

namespace polefit {

namespace {

/// A thousandth of a decibel is little at every scale.
std::string InDecibels(double value) {
  if (std::isnan(value)) return "-";
  return FigureFormat(1, 7, 4)(value);
}

/// The rows that a table shows: of a long one the worst and every n-th.
class ShownRows {
 public:
  ShownRows(const std::vector<double>& errors, bool all) : all_(errors.size()) {
    constexpr std::size_t kMostRows = 2000;
    constexpr std::size_t kWorst = 200;
    constexpr std::size_t kSpread = 1000;
    rows_.resize(errors.size());
    std::iota(rows_.begin(), rows_.end(), 0U);
    if (all || errors.size() <= kMostRows) return;
    std::nth_element(rows_.begin(), rows_.begin() + kWorst, rows_.end(),
                     [&](std::size_t one, std::size_t other) {
                       return std::abs(errors[one]) > std::abs(errors[other]);
                     });
    rows_.resize(kWorst);
    each_ = errors.size() / kSpread;
    for (std::size_t row = 0; row < errors.size(); row += each_) rows_.push_back(row);
    std::sort(rows_.begin(), rows_.end());
    rows_.erase(std::unique(rows_.begin(), rows_.end()), rows_.end());
  }

  template <typename Value>
  std::vector<Value> Of(const std::vector<Value>& values) const {
    std::vector<Value> shown;
    shown.reserve(rows_.size());
    for (const std::size_t row : rows_) shown.push_back(values[row]);
    return shown;
  }

  /// Says what is left out.
  void Write(ReportText& text) const {
    if (each_ == 0) return;
    text.Line(Format("  Of %zu rows the 200 worst and one in %zu; pfit --all-rows shows all.", all_,
                     each_));
    text.Line();
  }

  /// Adds the columns that name the rows.
  void AddTo(ReportTable& table, const std::vector<double>& frequencies) const {
    constexpr int kWidth = 10;
    std::vector<std::string> numbers, texts;
    for (const std::size_t row : rows_) {
      numbers.push_back(std::to_string(row + 1));
      texts.push_back(Fitted(frequencies[row], 9, kWidth));
    }
    table.Add("row", "", 5, numbers);
    table.Add("frequency", "MHz", kWidth, texts);
  }

 private:
  std::size_t all_;
  std::size_t each_ = 0;  ///< 0: all rows are shown
  std::vector<std::size_t> rows_;
};

std::vector<std::string> WithExponents(const std::vector<double>& values) {
  std::vector<std::string> texts;
  texts.reserve(values.size());
  for (const double value : values) texts.push_back(Format("%.3e", value));
  return texts;
}

/// The delay errors as F takes them.
std::vector<double> WeightedDelay(const SolvedProblem& solved) {
  std::vector<double> errors = solved.figures.delay->error;
  for (std::size_t i = 0; i < errors.size(); ++i) {
    errors[i] *= solved.problem.rows.delayLevels[static_cast<Eigen::Index>(i)];
  }
  return errors;
}

}  // namespace

const char* ConstantNote(const Problem& problem) {
  if (problem.rows.wantedDelay > 0) return "Tmin, question 1a";
  return problem.delayRipplePower == 0 ? "free, the best fit" : "free, weighted by question 1b";
}

void ReportPassband(const SolvedProblem& solved, ReportText& text) {
  const PassbandFigures& rows = solved.figures.passband;
  const ShownRows shown(rows.weighted, solved.allRows);
  std::vector<std::string> decibels;
  for (const double value : shown.Of(rows.decibels)) decibels.push_back(InDecibels(value));
  ReportTable table;
  shown.AddTo(table, rows.frequency);
  table.Add("Yin", "as typed", 9, shown.Of(rows.yin), {LargestSize(rows.yin), 9, 6, 3});
  table.Add("Yout", "as typed", 9, shown.Of(rows.yout), {LargestSize(rows.yout), 9, 6, 3});
  table.Add("Yin*|H|", "as Yout", 10, shown.Of(rows.obtained),
            {LargestSize(rows.obtained), 10, 7, 4});
  table.Add("error", "as Yout", 10, shown.Of(rows.error), {LargestSize(rows.error), 9, 4});
  table.Add("error", "dB", 8, decibels);
  table.Add("weighted e", "of Ymax", 11, WithExponents(shown.Of(rows.weighted)));
  text.Heading("PASSBAND FIT");
  shown.Write(text);
  table.Write(text);

  const auto at = [](const Extreme& extreme) {
    return "at " + Fitted(extreme.frequency, 9, 15) + " MHz";
  };
  text.Line();
  text.Line(Format("  rms error      %.4e as Yout", rows.rms));
  text.Line(Format("      weighted   %.4e of Ymax", std::sqrt(solved.summary.best.fit.meanSquare)));
  text.Line(Format("  largest error  %.4e as Yout   ", rows.largest.size) + at(rows.largest));
  text.Line(Format("      weighted   %.4e of Ymax   ", rows.largestWeighted.size) +
            at(rows.largestWeighted));
  text.Line(
      Format("      in dB      %-21s", (InDecibels(rows.largestDecibels.size) + " dB").c_str()) +
      at(rows.largestDecibels));
  text.Line("  Ymax, the largest Yout, is " + Fitted(LargestSize(rows.yout), 9, 15));
}

void ReportDelay(const SolvedProblem& solved, ReportText& text) {
  constexpr int kWidth = 12;
  constexpr int kDigits = 6;
  constexpr int kMostDigits = 10;
  constexpr int kErrorDigits = 4;
  const Problem& problem = solved.problem;
  const DelayFigures& quality = *solved.figures.delay;
  const double constant = quality.constant;
  // One format for the three, so that the sum can be followed, down to the errors.
  const double largest =
      std::max({LargestSize(quality.tx), LargestSize(quality.own), LargestSize(quality.total)});
  const int digits = std::clamp(DecimalExponent(largest, kDigits) -
                                    DecimalExponent(quality.largest, kErrorDigits) + kErrorDigits,
                                kDigits, kMostDigits);
  const FigureFormat format(largest, kWidth - 1, digits);
  ReportTable table;
  const std::vector<double> weighted = WeightedDelay(solved);
  const ShownRows shown(weighted, solved.allRows);
  shown.AddTo(table, quality.frequency);
  table.Add("TX", "ns", kWidth, shown.Of(quality.tx), format);
  table.Add("delay of H", "ns", kWidth, shown.Of(quality.own), format);
  table.Add("total", "ns", kWidth, shown.Of(quality.total), format);
  table.Add("error", "ns", kWidth, shown.Of(quality.error),
            {quality.largest, kWidth - 1, kErrorDigits});
  if (problem.delayRipplePower != 0) {
    table.Add("weighted d", "as in F", 10, WithExponents(shown.Of(weighted)));
  }
  text.Heading("GROUP DELAY");
  shown.Write(text);
  table.Write(text);
  text.Line();
  text.Line("  constant T0    " + Rounded(constant, digits) + " ns   (" + ConstantNote(problem) +
            ")");
  text.Line("  ripple         " + Rounded(quality.peakToPeak, 4) + " ns peak to peak, " +
            Rounded(quality.rms, 4) + " ns rms");
  text.Line("  largest error  " + Rounded(quality.largest, 4) + " ns");
}

void ReportSidelobes(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  if (solved.figures.sidelobes.empty()) return;
  std::vector<double> zeros, megahertz, peakMegahertz;
  std::vector<std::string> levels, ends;
  for (const Sidelobe& sidelobe : solved.figures.sidelobes) {
    zeros.push_back(sidelobe.zero);
    megahertz.push_back(sidelobe.zero * problem.freqNorm);
    peakMegahertz.push_back(sidelobe.peak * problem.freqNorm);
    levels.push_back(std::isfinite(sidelobe.decibels) ? Format("%.2f", sidelobe.decibels)
                                                      : "no peak");
    ends.push_back(sidelobe.isEnd ? "(range end)" : "");
  }
  const FigureFormat format(LargestSize(peakMegahertz), 11, 5);
  ReportTable table;
  table.Add("omega-axis zero", "normalised", 16, zeros, {LargestSize(zeros), 11, 7});
  table.Add("zero", "MHz", 11, megahertz, format);
  table.Add("peak above it", "MHz", 20, peakMegahertz, format);
  table.Add("level of |H|", "dB against H(0)", 16, levels);
  table.Add("", "", 12, ends);
  text.Heading(problem.Equalises() ? "SIDELOBES, EQUALISED" : "SIDELOBES");
  table.Write(text);
}

}  // namespace polefit
