#pragma once

#include <complex>
#include <optional>
#include <string>
#include <vector>

#include "record/response_record.h"
#include "solver/model/constellation.h"

namespace polefit {

/// A pole or zero, or a conjugate pair of them, normalised by Freq Norm.
struct ResultLocation {
  FactorKind kind;  ///< of the factor that it comes from
  bool isPole;      ///< a lossless sigma zero has poles too
  bool isPair;      ///< its conjugate is there as well
  double real;      ///< left of the omega axis negative
  double imaginary;

  std::complex<double> Upper() const { return {real, imaginary}; }
};

/// A passband point beside what the filter makes of it.
struct ResultRow {
  double frequency;  ///< MHz
  double yin;
  double wanted;
  double obtained;  ///< Yin |H|
  double decibels;  ///< the error in dB; NaN where Yin |H| or Yout is 0
  double delay;     ///< of H alone, ns
};

/// H(s) as the answers of a record hold it:
///   H(s) = gain * product of (1 - s/zero) / product of (1 - s/pole).
struct FilterResult {
  double freqNorm = 1;  ///< MHz
  double gain = 1;      ///< H(0)
  /// In the order of the answers. A lossless zero is followed by its pole.
  std::vector<ResultLocation> locations;

  std::vector<ResultRow> rows;
  /// What keeps the points from being used; `rows` is then empty.
  std::vector<std::string> pointFaults;
  /// The rms error at these points with this gain, in parts of the largest Yout, weighted where
  /// the answers want that.
  std::optional<double> rms;
  bool isWeighted = false;

  /// What stands at the head of an export.
  std::string file;
  std::string date;

  /// The angular frequency (rad/s) that is 1 when normalised.
  double AngularUnit() const;
};

/// Takes poles, zeros and gain from the answers; whatever keeps them from being an H(s) goes to
/// `faults`, in the solver's words.
FilterResult ReadFilterResult(const ResponseRecord& record, std::vector<std::string>& faults);

/// All poles, or all zeros, one by one; conjugates side by side, the upper one first.
std::vector<std::complex<double>> PolesOf(const FilterResult& result);
std::vector<std::complex<double>> ZerosOf(const FilterResult& result);

/// H(j w) at a normalised frequency.
std::complex<double> ResponseAt(const FilterResult& result, double w);

/// K of H(s) = K product of (s - zero) / product of (s - pole), s in rad/s; infinite or 0 where no
/// number holds it.
double ConstantInRadians(const FilterResult& result);

/// The name of a location's kind as users meet it: "zero quad".
const char* KindName(const ResultLocation& location);

/// |location| / (2 |real part|) of a pair off the omega axis.
std::optional<double> PairQuality(const ResultLocation& location);

}  // namespace polefit
