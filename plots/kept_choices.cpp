#include "plots/kept_choices.h"

#include <sstream>

#include "platform/host.h"

namespace polefit {

namespace {

/// One line of numbers.
constexpr const char* kChoices = "curves";

}  // namespace

KeptChoices ReadChoices(Host& host) {
  KeptChoices kept;
  std::istringstream line(host.UserSetting(kChoices));
  line >> kept.isLinear >> kept.isLogFrequency >> kept.showsPlainMagnitude >> kept.lower >>
      kept.isShown >> kept.width >> kept.isLeft >> kept.isFloating >> kept.prefersLower;
  const bool isKind = kept.lower >= -1 && kept.lower <= static_cast<int>(DiagramKind::step);
  if (!isKind) kept.lower = -1;
  return kept;
}

void KeepChoices(Host& host, const KeptChoices& choices) {
  if (choices == ReadChoices(host)) return;
  std::ostringstream line;
  line << choices.isLinear << ' ' << choices.isLogFrequency << ' ' << choices.showsPlainMagnitude
       << ' ' << choices.lower << ' ' << choices.isShown << ' ' << choices.width << ' '
       << choices.isLeft << ' ' << choices.isFloating << ' ' << choices.prefersLower;
  host.KeepUserSetting(kChoices, line.str());
}

}  // namespace polefit
