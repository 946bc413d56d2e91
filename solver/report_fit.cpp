#include <algorithm>
#include <cmath>

#include "solver/last_run.h"
#include "solver/model.h"
#include "solver/report.h"
#include "solver/text_format.h"
#include "solver/wren.h"

namespace polefit {

namespace {

constexpr double kDecibelsPerNeper = 8.685889638065037;

/// At an omega-axis zero |H| is kept off 0 by so little that it would show as 1e-100.
double NotTiny(double value) {
  return std::abs(value) < 1e-90 ? 0 : value;
}

/// The largest of some errors, and where.
struct Extreme {
  double size = 0;
  double frequency = 0;
  void Take(double value, double at) {
    if (std::abs(value) > size) *this = {std::abs(value), at};
  }
};

/// The errors of the passband rows, gathered while the table is written.
class PassbandTable {
 public:
  explicit PassbandTable(const SolvedProblem& solved)
      : problem_(solved.problem),
        fit_(solved.summary.best.fit),
        magnitudes_(Magnitudes(problem_.constellation, solved.summary.best.parameters,
                               problem_.rows.frequencies)) {}

  void Write(ReportText& text) {
    text.Line(" row   frequency      Yin       Yout    Yin*|H|      error    error    weighted");
    text.Line("             MHz                                                 dB       error");
    for (std::size_t i = 0; i < problem_.passband.size(); ++i) WriteRow(i, text);
    const auto rows = static_cast<double>(problem_.passband.size());
    text.Line();
    text.Line(Format("  rms error      %.4e   weighted %.4e", std::sqrt(plainSquares_ / rows),
                     std::sqrt(fit_.meanSquare)));
    text.Line(Format("  largest error  %.4e   at %g MHz", plain_.size, plain_.frequency));
    text.Line(Format("      weighted   %.4e   at %g MHz", weighted_.size, weighted_.frequency));
    text.Line(
        Format("      in dB      %.3f dB       at %g MHz", decibels_.size, decibels_.frequency));
  }

 private:
  void WriteRow(std::size_t index, ReportText& text) {
    const PassbandPoint& point = problem_.passband[index];
    const auto i = static_cast<Eigen::Index>(index);
    const double obtained = fit_.gain * point.yin * magnitudes_[i];
    const double error = obtained - point.yout;
    const double weighted =
        NotTiny(fit_.gain * problem_.rows.inputs[i] * magnitudes_[i] - problem_.rows.targets[i]);
    plainSquares_ += error * error;
    plain_.Take(error, point.frequency);
    weighted_.Take(weighted, point.frequency);
    std::string inDecibels = "-";
    if (obtained > 0 && point.yout > 0) {
      const double decibels = kDecibelsPerNeper * std::log(obtained / point.yout);
      decibels_.Take(decibels, point.frequency);
      inDecibels = Format("%.3f", decibels);
    }
    text.Line(Format("%4zu %11.6g %9.5f %9.5f %10.6f %10.6f %8s %11.3e", index + 1, point.frequency,
                     point.yin, point.yout, obtained, error, inDecibels.c_str(), weighted));
  }

  const Problem& problem_;
  const Fit& fit_;
  Eigen::ArrayXd magnitudes_;
  double plainSquares_ = 0;
  Extreme plain_;
  Extreme weighted_;
  Extreme decibels_;
};

/// The sidelobe peak behind each omega-axis zero; without one where two zeros coincide.
std::vector<Peak> FindSidelobes(const Problem& problem, const Point& point,
                                const std::vector<double>& zeros) {
  if (!point.peaks.empty()) return point.peaks;
  Listener nobody;
  const LogCurve curve(problem.constellation, point.parameters);
  std::vector<Peak> peaks;
  for (std::size_t i = 0; i < zeros.size(); ++i) {
    const bool isLast = i + 1 == zeros.size();
    const double to = isLast ? std::max(problem.largest, 10 * zeros[i]) : zeros[i + 1];
    if (to > zeros[i]) {
      peaks.push_back(FindPeak(curve, {zeros[i], to, isLast}, problem.options, nobody));
    } else {
      peaks.push_back({zeros[i], -std::numeric_limits<double>::infinity(), false});
    }
  }
  return peaks;
}

}  // namespace

void ReportPassband(const SolvedProblem& solved, ReportText& text) {
  text.Heading("PASSBAND FIT");
  PassbandTable(solved).Write(text);
}

void ReportDelay(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const double constant = solved.summary.best.fit.delayConstant;
  const DelayQuality quality = JudgeDelay(problem, solved.summary.best);
  text.Heading("GROUP DELAY");
  text.Line(" row   frequency          TX  delay of H       total       error");
  text.Line("             MHz          ns          ns          ns          ns");
  for (std::size_t i = 0; i < problem.delay.size(); ++i) {
    const DelayPoint& point = problem.delay[i];
    text.Line(Format("%4zu %11.6g %11.3f %11.3f %11.3f %11.3f", i + 1, point.frequency, point.tx,
                     quality.total[i] - point.tx, quality.total[i], quality.total[i] - constant));
  }
  text.Line();
  text.Line(Format("  constant T0    %.3f ns   (%s)", constant,
                   problem.rows.wantedDelay > 0 ? "Tmin, question 1a" : "free, the best fit"));
  text.Line(Format("  ripple         %.3f ns peak to peak, %.3f ns rms, largest error %.3f ns",
                   quality.peakToPeak, quality.rms, quality.largest));
}

void ReportSidelobes(const SolvedProblem& solved, ReportText& text) {
  const Problem& problem = solved.problem;
  const Point& best = solved.summary.best;
  std::vector<double> zeros;
  for (const std::size_t index : SortedFactors(problem, best, FactorKind::omegaZero)) {
    zeros.push_back(best.parameters[problem.constellation.factors[index].parameter]);
  }
  if (zeros.empty()) return;
  const std::vector<Peak> peaks = FindSidelobes(problem, best, zeros);
  text.Heading(problem.Equalises() ? "SIDELOBES, EQUALISED" : "SIDELOBES");
  text.Line(" omega-axis zero        zero       peak behind it      level of |H|");
  text.Line("      normalised         MHz                  MHz  dB against H(0)");
  for (std::size_t i = 0; i < zeros.size(); ++i) {
    const std::string level = std::isfinite(peaks[i].level)
                                  ? Format("%.2f", kDecibelsPerNeper * peaks[i].level)
                                  : std::string("no peak");
    text.Line(Format("%16.6f %11.5g %20.5g %16s%s", zeros[i], zeros[i] * problem.freqNorm,
                     peaks[i].frequency * problem.freqNorm, level.c_str(),
                     peaks[i].isEnd ? "  (range end)" : ""));
  }
}

}  // namespace polefit
