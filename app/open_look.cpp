#include "app/open_look.h"

#include "exchange/read/source_file.h"
#include "platform/paths.h"
#include "responsefile/file_look.h"

namespace polefit {

namespace {

bool HasOnlyPoints(const std::string& path, const std::string& bytes) {
  if (LookAt(bytes).hasFlags) return false;
  const SourceFile source = ReadSourceBytes(path, bytes);
  return source.table.fault.empty() && source.table.Rows() >= 2;
}

}  // namespace

std::optional<Choice> DoubtAbout(Host& host, const std::string& path, const PointsImport& import) {
  try {
    const std::string bytes = host.ReadFile(path);
    if (LookAt(bytes).isResponseFile) return std::nullopt;
    Choice choice{"'" + CutPath(path).name + "' does not look like a Response Input File.",
                  {"Open All the Same", "Cancel"}};
    if (import && HasOnlyPoints(path, bytes)) {
      choice.buttons.insert(choice.buttons.begin() + kImportItsPoints, "Import Its Points ...");
    }
    return choice;
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

bool HoldsOnlyPoints(Host& host, const std::string& path) {
  try {
    return HasOnlyPoints(path, host.ReadFile(path));
  } catch (const RunTimeError&) {
    return false;  // opening it will tell
  }
}

}  // namespace polefit
