#include "app/version_list.h"

#include <algorithm>

#include "app/recovery_copy.h"
#include "responsefile/file_look.h"

namespace polefit {

namespace {

std::string PointsText(int points) {
  return std::to_string(points) + (points == 1 ? " point" : " points");
}

VersionLine DescribeUnsaved(const Version& version, const std::string& bytes) {
  VersionLine line{version, "not saved", {}, false};
  const auto copy = ReadRecovery(bytes);
  line.canOpen = copy.has_value();
  if (!copy) return line;
  const ResponseRecord& typed = copy->cells.typed;
  line.content += ", " + PointsText(typed.nFreqPoints + typed.nDelayPoints);
  line.firstLine = copy->cells.files.currentFileName;
  return line;
}

VersionLine DescribeSaved(const Version& version, const std::string& bytes) {
  const FileLook look = LookAt(bytes);
  VersionLine line{version, PointsText(look.points), look.firstLine, true, look.isResponseFile};
  if (!look.isResponseFile) line.content = "no whole Response Input File";
  std::ranges::replace(line.firstLine, '\t', ' ');
  return line;
}

VersionLine Describe(Host& host, const Version& version) {
  try {
    const std::string bytes = VersionStore(host).BytesOf(version);
    return version.kind == VersionKind::unsaved ? DescribeUnsaved(version, bytes)
                                                : DescribeSaved(version, bytes);
  } catch (const RunTimeError& error) {
    return {version, InWords(error), {}, false, false};
  }
}

}  // namespace

std::vector<VersionLine> ListVersions(Host& host, const std::string& path) {
  std::vector<VersionLine> lines;
  for (const Version& version : VersionStore(host).Of(path)) {
    lines.push_back(Describe(host, version));
  }
  return lines;
}

}  // namespace polefit
