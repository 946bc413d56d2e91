#include "platform/file_choice.h"

namespace polefit {

std::string ChooseOtherFile(Host& host, CommonDialog dialog, void (Host::*show)(CommonDialog&)) {
  std::string folder;
  try {
    folder = host.CurrentFolder();
  } catch (const RunTimeError&) {
    // It is gone, so there is nothing to stay in.
  }
  (host.*show)(dialog);
  if (dialog.fileName.empty() || folder.empty()) return dialog.fileName;
  try {
    host.ChangeFolder(folder);
  } catch (const RunTimeError&) {
    // It has gone meanwhile; a save will say so.
  }
  return dialog.fileName;
}

}  // namespace polefit
