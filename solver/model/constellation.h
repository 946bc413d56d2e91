#pragma once

#include <cstddef>
#include <vector>

namespace polefit {

/// What a factor of H(s) stands for.
enum class FactorKind { sigmaPole, polePair, sigmaZero, omegaZero, zeroPair, zeroQuad };

/// Whether its location has a real and an imaginary part.
constexpr bool IsPair(FactorKind kind) {
  return kind == FactorKind::polePair || kind == FactorKind::zeroPair ||
         kind == FactorKind::zeroQuad;
}

/// "sigma pole", "zero quad": as files and diagrams have it.
const char* ShortName(FactorKind kind);

/// The answers that the locations of a kind stand in: of a pair the real parts, then the imaginary
/// ones. The quads stand behind the zero pairs.
std::vector<int> SlotsOf(FactorKind kind);

/// One factor of H(s) / H(0). Locations are normalised magnitudes; every factor is 1 at s = 0.
///
/// With z = |location| + jw (a pair: z1 and z2, c = |location|^2) a factor on the sigma axis adds
/// `logCount` * ln|z / location| to ln|H| and `delayCount` * Re(1/z) to the group delay, a pair
/// `logCount` * ln|z1 z2 / c| and `delayCount` * Re(1/z1 + 1/z2). The sides of the omega axis thus
/// differ by the sign of `delayCount` alone. An omega-axis zero multiplies by |1 - (w/z)^2|.
struct Factor {
  FactorKind kind;
  /// Index of its location in the parameters: the real part, with a pair's imaginary part right
  /// behind it, or the omega-axis zero.
  int parameter;
  int logCount;
  int delayCount;

  bool IsPair() const { return polefit::IsPair(kind); }
  std::size_t Parts() const { return IsPair() ? 2 : 1; }
  /// The index of part 0 (real, or omega-axis zero) or 1 (imaginary).
  std::size_t Parameter(std::size_t part) const {
    return static_cast<std::size_t>(parameter) + part;
  }
};

/// The factors of H(s) and who moves their locations. The parameters are one vector: first ORCA's
/// variables, then the omega-axis zeros that LYNX equalises (ascending), then those that are held.
struct Constellation {
  std::vector<Factor> factors;
  int orcaCount = 0;
  int lynxCount = 0;
  int heldCount = 0;

  /// How many parameters are moved by one of the solvers.
  int MovedCount() const { return orcaCount + lynxCount; }
  int ParameterCount() const { return MovedCount() + heldCount; }
  /// Whether ORCA moves the factor's location.
  bool IsOrcas(const Factor& factor) const { return factor.parameter < orcaCount; }
};

}  // namespace polefit
