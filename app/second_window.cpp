#include "app/second_window.h"

#include <utility>

#include "base/digest.h"

namespace polefit {

WindowClaim ClaimForWindow(Host& host, const std::string& kind, const std::string& path) {
  try {
    const std::string folder = host.RuntimeFolder();
    host.MakeOwnFolders(folder);
    const std::string name = kind + "-" + std::to_string(DigestOf(path)) + ".lock";
    auto lock = host.TakeLock(JoinPath(folder, name), std::chrono::milliseconds(0));
    const bool isTaken = lock == nullptr;
    return {std::move(lock), isTaken};
  } catch (const RunTimeError&) {
    return {};  // the notice is a help, no condition
  }
}

std::unique_ptr<HeldLock> ClaimProgramFolder(Program& program) {
  Host& host = program.host;
  WindowClaim claim =
      ClaimForWindow(host, "window", host.ResolvedPath(PlacesOf(program).LastRun()));
  if (!claim.isTaken) return std::move(claim.lock);
  program.notices.Post({"second window", Urgency::worthKnowing,
                        "Another window works with this program folder; the runs of both leave "
                        "their report and values in the same files."});
  return nullptr;
}

}  // namespace polefit
