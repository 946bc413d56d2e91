#pragma once

#include <Eigen/Core>
#include <array>
#include <vector>

#include "solver/constellation.h"

namespace polefit {

/// The data are worked through in blocks of this many rows, which stay in the first-level cache.
inline constexpr int kBlockRows = 64;

/// One number a row of a block. Never on the heap.
using Rows = Eigen::Array<double, Eigen::Dynamic, 1, Eigen::ColMajor, kBlockRows, 1>;

/// First and second derivatives by a factor's one or two parameters.
template <class T>
struct FactorDerivatives {
  std::array<T, 2> first;
  /// By (1,1), (1,2), (2,2).
  std::array<T, 3> second;
};

/// Multiplies `magnitude` by the factor's magnitude at the normalised frequencies `w`.
void MultiplyMagnitude(const Factor& factor, const Eigen::VectorXd& parameters, const Rows& w,
                       Rows& magnitude);

/// The derivatives of the factor's magnitude divided by that magnitude. So the magnitude of a
/// product stays differentiable where an omega-axis zero makes it 0.
FactorDerivatives<Rows> RelativeDerivatives(const Factor& factor, const Eigen::VectorXd& parameters,
                                            const Rows& w);

/// Adds the factor's group delay in normalised seconds.
void AddDelay(const Factor& factor, const Eigen::VectorXd& parameters, const Rows& w, Rows& delay);

FactorDerivatives<Rows> DelayDerivatives(const Factor& factor, const Eigen::VectorXd& parameters,
                                         const Rows& w);

/// |H| / gain and the group delay (normalised seconds) at any number of frequencies.
Eigen::ArrayXd Magnitudes(const Constellation& constellation, const Eigen::VectorXd& parameters,
                          const Eigen::ArrayXd& w);
Eigen::ArrayXd Delays(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w);

/// The first two derivatives of ln|H| by w.
struct Slope {
  double first = 0;
  double second = 0;
};

/// ln|H / gain| as a function of the normalised frequency, prepared for many frequencies at one
/// set of locations.
class LogCurve {
 public:
  LogCurve(const Constellation& constellation, const Eigen::VectorXd& parameters);

  double At(double w) const;
  Slope SlopeAt(double w) const;
  /// The imaginary parts of all pairs: where |H| has its bumps and dips.
  const std::vector<double>& Resonances() const { return resonances_; }

 private:
  struct Term {
    FactorKind kind;
    int count;
    double real;  ///< or the omega-axis zero
    double imaginary;
    double scale;  ///< makes the squared magnitude 1 at w = 0
  };
  static double SquaredMagnitude(const Term& term, double w);

  std::vector<Term> terms_;
  std::vector<double> resonances_;
};

/// The derivatives of ln|H| at one frequency by the moved parameters, and by them and w.
struct LogDerivatives {
  Eigen::VectorXd first;
  Eigen::MatrixXd second;
  Eigen::VectorXd mixed;
};
void DeriveLogMagnitude(const Constellation& constellation, const Eigen::VectorXd& parameters,
                        double w, LogDerivatives& derivatives);

}  // namespace polefit
