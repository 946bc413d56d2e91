#include "platform/linux/restart_entry.h"

#include <filesystem>
#include <fstream>

#include "base/run_time_error.h"
#include "platform/linux/desktop_program.h"
#include "platform/paths.h"

namespace polefit {

std::string AutostartEntryPath() {
  return JoinPath(JoinPath(ConfigurationFolder(), "autostart"), "polefit-restart.desktop");
}

void WriteAutostartEntry(const std::string& program) {
  const std::string path = AutostartEntryPath();
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
  // The shell removes the entry first, so that it runs once even when the program is gone.
  const std::string exec =
      ExecLine({"/bin/sh", "-c", R"(rm -f -- "$0"; exec "$1")", path, program});
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << "[Desktop Entry]\nType=Application\nName=Polefit\nIcon=polefit\nExec=" << exec << '\n';
  file.close();
  if (!file) throw MakeRunTimeError(error_number::kPathFileAccessError);
}

void WithdrawAutostartEntry() {
  std::error_code error;
  std::filesystem::remove(AutostartEntryPath(), error);
}

}  // namespace polefit
