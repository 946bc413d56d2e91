#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace polefit {

inline constexpr char kSeparator = '/';

/// The folder, a separator and the name.
std::string JoinPath(std::string_view folder, std::string_view name);

/// A path in two parts.
struct PathParts {
  /// What stands before the last separator: "" for a file at the root, which JoinPath puts together
  /// again. Nothing when the path has no separator.
  std::optional<std::string> folder;
  std::string name;
};

/// Cuts a path at the last of any of these separators.
PathParts CutPath(std::string_view path, std::string_view separators = "/");

/// The folder that a path names its file in, as the system takes it and JoinPath goes on from it:
/// "." for a bare name, "/." for the root.
std::string FolderOf(std::string_view path);

/// The file name of a path; `folder` becomes what stands before it, without a trailing separator
/// ("" for a file at the root, which JoinPath puts together again), or the process's current folder
/// when the path has no separator. A path is cut at the last of either separator, so that files
/// made elsewhere read alike.
std::string SplitPath(Host& host, const std::string& path, std::string& folder);

/// The path with the process's current folder before it, unless it is a whole one.
std::string WholePath(Host& host, const std::string& path);

/// The files that the program works on. Folders have no trailing separator.
struct Files {
  std::string currentFileName;
  std::string currentFolder;
  std::string lastUsedName;
  std::string lastUsedFolder;

  std::string CurrentPath() const { return JoinPath(currentFolder, currentFileName); }

  bool operator==(const Files&) const = default;
};

/// Makes the file at `path` the current file and the last-used one.
void SetCurrentFile(Host& host, Files& files, const std::string& path);

/// A path as the solver's command line takes it: in lower case where file names are case-blind,
/// which they are where the separator is a backslash.
std::string CommandLinePath(const std::string& path, char separator = kSeparator);

}  // namespace polefit
