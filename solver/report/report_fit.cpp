#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "base/text_format.h"
#include "solver/report/figures.h"
#include "solver/report/report.h"

namespace polefit {

namespace {

/// A thousandth of a decibel is little at every scale.
std::string InDecibels(double value) {
  if (std::isnan(value)) return "-";
  return FigureFormat(1, 7, 4)(value);
}

template <class Rows>
void AddFrequencies(const Rows& rows, ReportTable& table) {
  constexpr int kWidth = 10;
  std::vector<std::string> numbers;
  std::vector<std::string> frequencies;
  for (const auto& row : rows) {
    numbers.push_back(std::to_string(numbers.size() + 1));
    frequencies.push_back(Fitted(row.frequency, 9, kWidth));
  }
  table.Add("row", "", 5, numbers);
  table.Add("frequency", "MHz", kWidth, frequencies);
}

/// The delay errors as F takes them.
std::vector<std::string> WeightedDelay(const SolvedProblem& solved) {
  const DelayFigures& delay = *solved.figures.delay;
  std::vector<std::string> errors;
  for (std::size_t i = 0; i < delay.error.size(); ++i) {
    const double level = solved.problem.rows.delayLevels[static_cast<Eigen::Index>(i)];
    errors.push_back(Format("%.3e", level * delay.error[i]));
  }
  return errors;
}

}  // namespace

void ReportPassband(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const PassbandFigures& rows = solved.figures.passband;
  std::vector<std::string> weighted, decibels;
  for (const double error : rows.weighted) weighted.push_back(Format("%.3e", error));
  std::transform(rows.decibels.begin(), rows.decibels.end(), std::back_inserter(decibels),
                 InDecibels);
  ReportTable table;
  AddFrequencies(problem.passband, table);
  table.Add("Yin", "as typed", 9, rows.yin, {LargestSize(rows.yin), 9, 6, 3});
  table.Add("Yout", "as typed", 9, rows.yout, {LargestSize(rows.yout), 9, 6, 3});
  table.Add("Yin*|H|", "as Yout", 10, rows.obtained, {LargestSize(rows.obtained), 10, 7, 4});
  table.Add("error", "as Yout", 10, rows.error, {LargestSize(rows.error), 9, 4});
  table.Add("error", "dB", 8, decibels);
  table.Add("weighted e", "of Ymax", 11, weighted);
  text.Heading("PASSBAND FIT");
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
  AddFrequencies(problem.delay, table);
  table.Add("TX", "ns", kWidth, quality.tx, format);
  table.Add("delay of H", "ns", kWidth, quality.own, format);
  table.Add("total", "ns", kWidth, quality.total, format);
  table.Add("error", "ns", kWidth, quality.error, {quality.largest, kWidth - 1, kErrorDigits});
  if (problem.delayRipplePower != 0) table.Add("weighted d", "as in F", 10, WeightedDelay(solved));
  text.Heading("GROUP DELAY");
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
