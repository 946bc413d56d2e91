#include "platform/linux/folders.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "platform/paths.h"

namespace polefit {

namespace {

bool IsRegular(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

void MakeFoldersTo(const std::string& folder, Readers readers) {
  const mode_t mode = readers == Readers::ownerOnly ? 0700 : 0777;
  for (std::size_t cut = folder.find(kSeparator, 1);; cut = folder.find(kSeparator, cut + 1)) {
    const std::string part = folder.substr(0, cut);
    if (::mkdir(part.c_str(), mode) != 0 && errno != EEXIST && cut == std::string::npos) {
      throw FromSystemError(errno, error_number::kPathNotFound);
    }
    if (cut == std::string::npos) return;
  }
}

void LinkTo(const std::string& target, const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode)) ::unlink(path.c_str());
  if (::symlink(target.c_str(), path.c_str()) == 0 || errno == EEXIST) return;
  throw FromSystemError(errno, error_number::kPathNotFound);
}

std::vector<std::string> RegularFilesIn(const std::string& folder) {
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(folder.c_str()), ::closedir);
  if (listing == nullptr) {
    if (errno == ENOENT || errno == ENOTDIR) return {};
    throw FromSystemError(errno);
  }
  std::vector<std::string> names;
  while (const dirent* const entry = ::readdir(listing.get())) {
    if (IsRegular(JoinPath(folder, entry->d_name))) names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace polefit
