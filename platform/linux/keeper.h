#pragma once

namespace polefit {

/// The name under which the system lists a keeper.
inline constexpr const char* kKeeperName = "polefit-keeper";

/// Where a keeper puts how its program ended: the file, and what it is called until it is whole.
struct KeeperFiles {
  const char* ending = nullptr;
  const char* unfinished = nullptr;
};

/// Makes this process, a fresh child, the keeper of `program`, its own child: it closes all that it
/// holds, waits, writes how the program ended, and ends. It only makes calls that are safe after a
/// fork in a program with threads.
[[noreturn]] void BecomeKeeper(int program, const KeeperFiles& files);

}  // namespace polefit
