#include "platform/paths.h"

#include "base/text.h"

namespace polefit {

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  path += kSeparator;
  path += name;
  return path;
}

std::string SplitPath(Host& host, const std::string& path, std::string& folder) {
  const std::size_t cut = path.find_last_of("/\\");
  if (cut == std::string::npos) {
    folder = host.CurrentFolder();
    return path;
  }
  std::string name = path.substr(cut + 1);
  folder = path.substr(0, cut);
  return name;
}

void SetCurrentFile(Host& host, Files& files, const std::string& path) {
  files.currentFileName = SplitPath(host, path, files.currentFolder);
  files.lastUsedName = files.currentFileName;
  files.lastUsedFolder = files.currentFolder;
}

std::string CommandLinePath(const std::string& path, char separator) {
  return separator == '\\' ? LowerCase(path) : path;
}

}  // namespace polefit
