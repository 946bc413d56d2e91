#include "app/open_look.h"

#include "platform/paths.h"
#include "responsefile/file_look.h"

namespace polefit {

std::optional<Choice> DoubtAbout(Host& host, const std::string& path) {
  try {
    if (LookAt(host.ReadFile(path)).isResponseFile) return std::nullopt;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
  const std::string name = CutPath(path).name;
  return Choice{"'" + name + "' does not look like a Response Input File.",
                {"Open All the Same", "Cancel"}};
}

}  // namespace polefit
