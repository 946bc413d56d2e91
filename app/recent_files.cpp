#include "app/recent_files.h"

#include <algorithm>

#include "platform/places.h"

namespace polefit {

namespace {

constexpr std::size_t kMost = 10;
/// Behind each path; the one character that none can hold.
constexpr char kEnd = '\0';

std::vector<std::string> Paths(Host& host) {
  std::vector<std::string> paths;
  try {
    const std::string list = host.ReadFile(Places::OfState(host).Recent());
    for (std::size_t from = 0; from < list.size() && paths.size() < kMost;) {
      const std::size_t end = std::min(list.find(kEnd, from), list.size());
      paths.push_back(list.substr(from, end - from));
      from = end + 1;
    }
  } catch (const RunTimeError&) {
    paths.clear();  // none so far
  }
  return paths;
}

bool IsThere(Host& host, const std::string& path) {
  try {
    return host.StateOfFile(path).has_value();
  } catch (const RunTimeError&) {
    return false;
  }
}

}  // namespace

std::vector<RecentFile> RecentFiles(Host& host) {
  std::vector<RecentFile> files;
  for (const std::string& path : Paths(host)) files.push_back({path, IsThere(host, path)});
  return files;
}

void NoteRecentFile(Host& host, const std::string& path) {
  std::vector<std::string> paths = Paths(host);
  if (!paths.empty() && paths.front() == path) return;
  std::erase(paths, path);
  paths.insert(paths.begin(), path);
  paths.resize(std::min(paths.size(), kMost));
  std::string list;
  for (const std::string& each : paths) list += each + kEnd;
  try {
    const Places places = Places::OfState(host);
    host.MakeOwnFolders(places.state);
    host.ReplaceFile(places.Recent(), list, Readers::ownerOnly);
  } catch (const RunTimeError&) {
    return;  // a help, no condition
  }
}

}  // namespace polefit
