#include "platform/file_checks.h"

#include "platform/error_template.h"

namespace polefit {

bool FileExists(Host& host, const std::string& path) {
  bool found = false;
  RunStep(host, {"FileExists", path}, [&] { found = !host.LookUpFile(path).empty(); });
  return found;
}

bool dirExists(Host& host, const std::string& folder) {
  bool found = false;
  RunStep(host, {"dirExists", folder}, [&] { found = host.LookUpFolder(folder); });
  return found;
}

void RemoveFile(FileSystem& files, const std::string& path) {
  try {
    files.DeleteFile(path);
  } catch (const RunTimeError& error) {
    if (error.number != error_number::kFileNotFound) throw;
  }
}

}  // namespace polefit
