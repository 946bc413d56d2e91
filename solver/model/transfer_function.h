#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "record/finding.h"
#include "record/response_record.h"
#include "solver/model/constellation.h"

namespace polefit {

struct Problem;

/// The problem that a record states. With any fault in `findings` it cannot be solved or drawn.
std::shared_ptr<const Problem> ReadSharedProblem(const ResponseRecord& record,
                                                 std::vector<Finding>& findings);

/// Its poles, zeros and gain alone, whatever is wrong with the points and the rest.
std::shared_ptr<const Problem> ReadSharedConstellation(const ResponseRecord& record,
                                                       std::vector<Finding>& findings);

/// The passband points beside what H(s) makes of them; an entry a point, in file order.
struct PassbandFit {
  std::vector<double> frequency;  ///< MHz
  std::vector<double> yin;
  std::vector<double> yout;
  std::vector<double> weight;
  std::vector<double> obtained;  ///< Yin |H|
  std::vector<double> error;     ///< obtained - Yout
  std::vector<double> weighted;  ///< the solver's error e, in parts of the largest Yout
  std::vector<double> decibels;  ///< the error in dB; NaN where Yin |H| or Yout is 0
};

/// The delay points in ns; an entry a point, in file order.
struct DelayFit {
  std::vector<double> frequency;  ///< MHz
  std::vector<double> tx;
  std::vector<double> own;    ///< the group delay of H
  std::vector<double> total;  ///< their sum
  std::vector<double> error;  ///< total - T0
};

/// Where a factor of H(s) has its poles or zeros, normalised.
struct Location {
  FactorKind kind;
  /// Counts from 0 among the locations of its kind, in the order of the answers; the omega-axis
  /// zeros in ascending order.
  std::size_t number;
  double real;       ///< left of the omega axis negative
  double imaginary;  ///< not negative; the conjugate belongs to it
  bool onBothSides;  ///< a quad or a doublet: -real too
  bool bringsPole;   ///< a lossless zero: its own pole is at -real
  int multiplicity;  ///< 2: a lossless doublet
  bool isHeld;       ///< an omega-axis zero typed as exactly 1

  bool IsPole() const { return kind == FactorKind::sigmaPole || kind == FactorKind::polePair; }
};

/// H(s) of a problem at one set of locations, with the gain and the delay constant that the solver
/// gives it. Every figure comes from the solver's own evaluation, so that curves and report agree.
/// Without passband points the gain is the typed one and there is no fit.
class TransferFunction {
 public:
  /// At the typed locations, or at others in the order of the problem's parameters. The problem,
  /// which has no fault, must live as long.
  explicit TransferFunction(const Problem& problem);
  TransferFunction(const Problem& problem, std::vector<double> parameters);

  /// Takes the typed gain in place of the best one; cost and rms error stay those of the best.
  void UseTypedGain();

  /// Whether there is a finite error and a positive gain.
  bool IsFinite() const { return isFinite_; }
  bool HasPoints() const;
  bool WantsDelay() const;

  double FreqNorm() const;  ///< MHz
  double LowestLocation() const;
  double LargestLocation() const;
  /// How many poles and zeros H(s) has.
  int PoleCount() const;
  int ZeroCount() const;

  double Gain() const { return gain_; }
  double DelayConstant() const { return delayConstant_; }  ///< T0 in ns
  double Cost() const { return cost_; }                    ///< F
  double RmsError() const { return rmsError_; }            ///< weighted, in parts of Ymax

  /// |H|, and Yin |H| with Yin interpolated between the points: linear in frequency, its logarithm
  /// where it is above 0 at both ends. Outside of the points it is NaN.
  std::vector<double> Magnitudes(const std::vector<double>& megahertz) const;
  std::vector<double> Obtained(const std::vector<double>& megahertz) const;
  /// The group delay of H in ns.
  std::vector<double> GroupDelays(const std::vector<double>& megahertz) const;
  /// The phase of H in degrees, 0 at 0 and without jumps but those of 180 degrees at the omega-axis
  /// zeros.
  std::vector<double> Phases(const std::vector<double>& megahertz) const;
  /// Yin alone, interpolated as above.
  std::vector<double> Inputs(const std::vector<double>& megahertz) const;

  /// The lowest and the highest frequency of all points, in MHz; both 0 where there are none.
  std::pair<double, double> PointRange() const;
  PassbandFit Passband() const;
  DelayFit DelayPoints() const;
  std::vector<Location> Locations() const;

  const Problem& GetProblem() const { return *problem_; }
  const std::vector<double>& Parameters() const { return parameters_; }

 private:
  void Judge();

  const Problem* problem_;
  std::vector<double> parameters_;
  bool isFinite_ = false;
  double gain_ = 1;
  double delayConstant_ = 0;
  double cost_ = 0;
  double rmsError_ = 0;
};

}  // namespace polefit
