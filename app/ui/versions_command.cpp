#include "app/ui/versions_command.h"

#include <algorithm>

#include "app/former_versions.h"
#include "app/ui/versions_dialog.h"

namespace polefit {

void ChooseFormerVersion(Program& program, QWidget* parent) {
  const std::string current = program.host.ResolvedPath(program.files.CurrentPath());
  std::vector<std::string> paths = VersionStore(program.host).Paths();
  if (paths.empty()) paths.push_back(current);
  const auto lister = [&host = program.host](const std::string& path) {
    return ListVersions(host, path);
  };
  VersionsDialog dialog(paths, current, lister, parent);
  dialog.exec();
  if (dialog.WishedFor() == VersionsDialog::Wish::putBack) {
    PutVersionBack(program, dialog.Path(), dialog.Line().version);
  } else if (dialog.WishedFor() == VersionsDialog::Wish::openAsNew) {
    OpenVersionAsNew(program, dialog.Line().version);
  }
}

}  // namespace polefit
