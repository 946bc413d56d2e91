#pragma once

#include <complex>
#include <string>
#include <vector>

#include "bench/families/prototypes.h"
#include "record/response_record.h"

namespace polefit::families {

/// What is known of a family problem's answer.
enum class Truth {
  poles,          ///< all poles
  equalised,      ///< all poles, and equal sidelobes
  magnitude,      ///< a fit without error; the poles alone do not tell it
  approximation,  ///< a cost that long runs have not beaten
  noisy,          ///< the cost at the true locations is not passed
};

/// A fitting problem whose answer is known, as a user may type it who knows nothing of the answer:
/// 14 digits of a response, Freq Norm 10 MHz, crude starting values.
struct FamilyProblem {
  std::string family;
  std::string name;
  Truth truth = Truth::poles;
  ResponseRecord record;
  /// Normalised, one of each pair.
  Filter filter;
  /// The least cost known of an approximation, or the cost at the true locations.
  double cost = 0;
};

/// The textbook filters of all families.
std::vector<FamilyProblem> TextbookProblems();
/// Responses that no filter of the order has.
std::vector<FamilyProblem> Approximations();
/// Chebyshev filters of 15 and 20 pole pairs.
std::vector<FamilyProblem> LargeProblems();
/// Some textbook filters with noise of 0.1 % and 1 % on every row.
std::vector<FamilyProblem> NoisyProblems();
/// Random filters of order 3 to 12 with all kinds of zeros, 5 decimals.
std::vector<FamilyProblem> RandomProblems(int count, unsigned seed);

/// The record without starting values.
ResponseRecord WithoutStarts(const ResponseRecord& record);
/// The record with random starting values, the same ones for the same seed.
ResponseRecord WithRandomStarts(const ResponseRecord& record, unsigned seed);

/// The largest distance of a true pole from the found pole next to it, as a part of the true one's
/// size. Found poles stand once for each pair.
double WorstPoleError(const Filter& filter, const std::vector<std::complex<double>>& found);

}  // namespace polefit::families
