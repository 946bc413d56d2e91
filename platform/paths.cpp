#include "platform/paths.h"

#include "base/text.h"

namespace polefit {

std::string JoinPath(std::string_view folder, std::string_view name) {
  std::string path(folder);
  path += kSeparator;
  path += name;
  return path;
}

PathParts CutPath(std::string_view path, std::string_view separators) {
  const std::size_t cut = path.find_last_of(separators);
  if (cut == std::string_view::npos) return {std::nullopt, std::string(path)};
  return {std::string(path.substr(0, cut)), std::string(path.substr(cut + 1))};
}

std::string FolderOf(std::string_view path) {
  const std::string folder = CutPath(path).folder.value_or(".");
  return folder.empty() ? "/." : folder;
}

std::string SplitPath(Host& host, const std::string& path, std::string& folder) {
  PathParts parts = CutPath(path, "/\\");
  folder = parts.folder ? *parts.folder : host.CurrentFolder();
  return parts.name;
}

std::string WholePath(Host& host, const std::string& path) {
  return path.starts_with(kSeparator) ? path : JoinPath(host.CurrentFolder(), path);
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
