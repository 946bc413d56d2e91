#include "platform/linux/restart_entry.h"

#include <unistd.h>

#include "base/run_time_error.h"
#include "platform/linux/desktop_program.h"
#include "platform/linux/folders.h"
#include "platform/linux/safe_file.h"
#include "platform/linux/user_folders.h"
#include "platform/paths.h"

namespace polefit {

std::string AutostartEntryPath() {
  return JoinPath(JoinPath(UserConfigurationFolder(), "autostart"), "polefit-restart.desktop");
}

void WriteAutostartEntry(const std::string& program) {
  const std::string path = AutostartEntryPath();
  MakeFoldersTo(FolderOf(path), Readers::ownerOnly);
  // The shell removes the entry first, so that it runs once even when the program is gone.
  const std::string exec =
      ExecLine({"/bin/sh", "-c", R"(rm -f -- "$0"; exec "$1")", path, program});
  ReplaceFileSafely(
      path, "[Desktop Entry]\nType=Application\nName=Polefit\nIcon=polefit\nExec=" + exec + '\n',
      Readers::usual);
}

void WithdrawAutostartEntry() {
  ::unlink(AutostartEntryPath().c_str());
}

}  // namespace polefit
