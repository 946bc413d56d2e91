#include "solver/model/constellation.h"

#include "record/response_record.h"

namespace polefit {

const char* ShortName(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return "sigma pole";
    case FactorKind::polePair:
      return "pole pair";
    case FactorKind::sigmaZero:
      return "sigma zero";
    case FactorKind::omegaZero:
      return "omega zero";
    case FactorKind::zeroPair:
      return "zero pair";
    case FactorKind::zeroQuad:
      break;
  }
  return "zero quad";
}

std::vector<int> SlotsOf(FactorKind kind) {
  switch (kind) {
    case FactorKind::sigmaPole:
      return {slot::kSigmaPoles};
    case FactorKind::polePair:
      return {slot::kPoleReal, slot::kPoleImag};
    case FactorKind::sigmaZero:
      return {slot::kSigmaZero};
    case FactorKind::omegaZero:
      return {slot::kYzero};
    case FactorKind::zeroPair:
    case FactorKind::zeroQuad:
      break;
  }
  return {slot::kZreal, slot::kZimag};
}

}  // namespace polefit
