#include "demos/introduction.h"

#include "platform/file_checks.h"
#include "platform/places.h"

namespace polefit {

bool WantsIntroduction(Program& program) {
  Host& host = program.host;
  program.files.currentFolder = "null";
  const std::string ownFolder = host.OwnFolder();
  // The user's own is made when there is something to put into it.
  if (!host.LookUpFolder(ownFolder)) return true;
  host.ChangeDrive(ownFolder);
  host.ChangeFolder(ownFolder);
  return !FileExists(host, Places::kSettingsName);
}

}  // namespace polefit
