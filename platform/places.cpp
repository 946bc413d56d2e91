#include "platform/places.h"

namespace polefit {

Places Places::Below(const std::string& base) {
  return {base, JoinPath(base, "Tessel.hz"), {}, {}};
}

}  // namespace polefit
