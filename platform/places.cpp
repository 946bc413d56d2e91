#include "platform/places.h"

namespace polefit {

Places Places::Below(const std::string& base) {
  const std::string program = JoinPath(base, "Tessel.hz");
  return {base, program, {}, {}, program, base};
}

Places Places::Of(Host& host, const std::string& base, const std::string& program) {
  const Installation files = host.SharedInstallation().value_or(Installation{program, base});
  return {base,           program,      host.ConfigurationFolder(), host.StateFolder(),
          files.programs, files.shipped};
}

Places Places::OfState(Host& host) {
  return {{}, {}, {}, host.StateFolder()};
}

}  // namespace polefit
