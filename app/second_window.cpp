#include "app/second_window.h"

#include "base/digest.h"

namespace polefit {

std::unique_ptr<HeldLock> ClaimProgramFolder(Program& program) {
  Host& host = program.host;
  const Places places = PlacesOf(program);
  try {
    host.MakeOwnFolders(places.state);
    const std::uint64_t folder = DigestOf(host.ResolvedPath(places.LastRun()));
    auto lock = host.TakeLock(JoinPath(places.state, "window-" + std::to_string(folder) + ".lock"),
                              std::chrono::milliseconds(0));
    if (lock != nullptr) return lock;
  } catch (const RunTimeError&) {
    return nullptr;  // the notice is a help, no condition
  }
  program.notices.Post({"second window", Urgency::worthKnowing,
                        "Another window works with this program folder; the runs of both leave "
                        "their report and values in the same files."});
  return nullptr;
}

}  // namespace polefit
