#pragma once

#include <Eigen/Core>
#include <array>
#include <cstddef>
#include <vector>

#include "solver/model/chunk.h"
#include "solver/model/constellation.h"

namespace polefit {

/// First and second derivatives by a factor's one or two parameters.
template <typename T>
struct FactorDerivatives {
  std::array<T, 2> first;
  /// By (1,1) and by (1,2). What a pair adds to ln H is harmonic in its location, so that the
  /// derivative by (2,2) is minus that by (1,1).
  std::array<T, 2> second;
};

/// A factor at its location, prepared for many frequencies.
struct PlacedFactor : Factor {
  PlacedFactor(const Factor& factor, const Eigen::VectorXd& parameters);

  double location;   ///< the real part, or the omega-axis zero
  double imaginary;  ///< of a pair
  double scale;      ///< makes the square of a pole's or a zero's distance 1 at w = 0
};

/// Fills `placed` with all factors.
void Place(const Constellation& constellation, const Eigen::VectorXd& parameters,
           std::vector<PlacedFactor>& placed);

/// Multiplies `zeros` or `poles` by the square of the factor's magnitude at the normalised
/// frequencies `w`.
void MultiplySquare(const PlacedFactor& factor, std::size_t rows, const Chunk& w, Chunk& zeros,
                    Chunk& poles);

/// The derivatives of the logarithm of the factor's magnitude. The second one of an omega-axis zero
/// is that of the magnitude itself, divided by it: so the magnitude of a product stays
/// differentiable where the zero makes it 0.
void DeriveRelative(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                    FactorDerivatives<Chunk>& derivatives);

/// Adds the factor's group delay in normalised seconds.
void AddDelay(const PlacedFactor& factor, std::size_t rows, const Chunk& w, Chunk& delay);

/// The derivatives of the factor's group delay, in normalised seconds.
void DeriveDelay(const PlacedFactor& factor, std::size_t rows, const Chunk& w,
                 FactorDerivatives<Chunk>& derivatives);

/// |H| / gain and the group delay (normalised seconds) at any number of frequencies.
Eigen::ArrayXd Magnitudes(const Constellation& constellation, const Eigen::VectorXd& parameters,
                          const Eigen::ArrayXd& w);
Eigen::ArrayXd Delays(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w);

/// The phase of H in radians: continuous from 0 at w = 0 but for the omega-axis zeros, at each of
/// which it rises by pi.
Eigen::ArrayXd Phases(const Constellation& constellation, const Eigen::VectorXd& parameters,
                      const Eigen::ArrayXd& w);

/// The first two derivatives of ln|H| by w.
struct Slope {
  double first = 0;
  double second = 0;
};

/// A pair, as ln|H| shows it.
struct Resonance {
  double frequency;
  double halfWidth;
};

/// ln|H / gain| as a function of the normalised frequency, prepared for many frequencies at one
/// set of locations.
class LogCurve {
 public:
  LogCurve(const Constellation& constellation, const Eigen::VectorXd& parameters);

  double At(double w) const;
  Eigen::ArrayXd At(const Eigen::ArrayXd& w) const;
  Slope SlopeAt(double w) const;
  /// All pairs: |H| has its bumps and dips near their imaginary parts.
  const std::vector<Resonance>& Resonances() const { return resonances_; }

 private:
  /// A single pole or zero, which adds ln(((w - position)^2 + square) scale) / 2.
  struct Root {
    double position;
    double square;  ///< of the real part
    double scale;
  };
  static constexpr std::size_t kRootsALogarithm = 16;
  template <typename T>
  static T Product(const std::vector<Root>& roots, std::size_t first, const T& w);
  template <typename T>
  T LevelAt(const T& w) const;
  static Slope SumOfSlopes(const std::vector<Root>& roots, double w);

  std::vector<Root> zeros_;
  std::vector<Root> poles_;
  std::vector<Resonance> resonances_;
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
