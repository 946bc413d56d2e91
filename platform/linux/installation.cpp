#include "platform/linux/installation.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

#include "platform/linux/user_folders.h"
#include "platform/paths.h"

namespace polefit {

namespace {

/// A package puts it beside the executables in PREFIX/lib/polefit; what users share is then in
/// PREFIX/share/polefit.
constexpr const char* kMark = "for-all-users";

std::string FolderAbove(const std::string& folder) {
  return CutPath(folder).folder.value_or("");
}

}  // namespace

std::string ExecutableFolder() {
  std::array<char, PATH_MAX> buffer{};
  const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
  if (length < 0) throw FromSystemError(errno, error_number::kPathNotFound);
  const std::string executable(buffer.data(), static_cast<std::size_t>(length));
  return CutPath(executable).folder.value_or(executable);
}

std::optional<Installation> SharedInstallationWith(const std::string& programs) {
  if (::access(JoinPath(programs, kMark).c_str(), F_OK) == 0) {
    return Installation{programs, JoinPath(FolderAbove(FolderAbove(programs)), "share/polefit")};
  }
  if (::access(programs.c_str(), W_OK) == 0) return std::nullopt;
  return Installation{programs, FolderAbove(programs)};
}

std::string OwnFolderFor(const std::string& programs) {
  if (!SharedInstallationWith(programs)) return programs;
  return JoinPath(UserDataFolder(), "polefit/cv-Tools/Tessel.hz");
}

}  // namespace polefit
