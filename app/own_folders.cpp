#include "app/own_folders.h"

namespace polefit {

namespace {

/// What the user has made of a file stays as it is.
void CopyWhatIsMissing(Host& host, const std::string& from, const std::string& to) {
  if (host.LookUpFile(to).empty()) host.ReplaceFile(to, host.ReadFile(from));
}

/// Makes the folders; `path` is always what is being made.
void MakeFolders(Host& host, const Places& places, std::string& path) {
  const Places shipped = places.Shipped();
  path = places.User();
  host.MakeOwnFolders(path);
  path = places.StartFile();
  CopyWhatIsMissing(host, shipped.StartFile(), path);
  path = places.Manual();
  host.MakeLink(shipped.Manual(), path);
  for (const std::string& example : host.FilesIn(places.Examples())) {
    path = JoinPath(places.User(), example);
    CopyWhatIsMissing(host, JoinPath(places.Examples(), example), path);
  }
}

}  // namespace

void PrepareOwnFolders(Program& program) {
  Host& host = program.host;
  if (!host.SharedInstallation()) return;
  std::string path;
  try {
    MakeFolders(host, PlacesOf(program), path);
  } catch (const RunTimeError& error) {
    host.MessageBox("Polefit cannot make '" + path + "' for you: " + error.description + ".",
                    message_style::kExclamation, "Polefit");
  }
}

}  // namespace polefit
