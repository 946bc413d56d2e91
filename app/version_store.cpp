#include "app/version_store.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <map>
#include <set>

#include "base/digest.h"
#include "platform/places.h"

namespace polefit {

namespace {

constexpr std::int64_t kDay = 86400;  // in seconds
constexpr const char* kPathSuffix = ".path";

/// What follows line 1; all of it when there is no more than that.
std::string_view Content(std::string_view bytes) {
  const std::size_t end = bytes.find('\n');
  return end == std::string_view::npos || end + 1 == bytes.size() ? bytes : bytes.substr(end + 1);
}

std::string KeyOf(const std::string& path) {
  std::array<char, 17> text{};
  std::snprintf(text.data(), text.size(), "%016llx",
                static_cast<unsigned long long>(DigestOf(path)));
  return text.data();
}

/// Cuts the next field off a name; nothing when it is no number.
std::optional<std::int64_t> TakeNumber(std::string_view& name) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end == name.data() + name.size() || *end != '-') return std::nullopt;
  name.remove_prefix(static_cast<std::size_t>(end - name.data()) + 1);
  return number;
}

/// "KEY-kept-number-written-kind"; nothing for any other file.
std::optional<Version> ParseName(const std::string& fileName) {
  constexpr std::size_t kKeyLength = 16;
  if (fileName.size() <= kKeyLength || fileName[kKeyLength] != '-') return std::nullopt;
  std::string_view rest = std::string_view(fileName).substr(kKeyLength + 1);
  const auto kept = TakeNumber(rest);
  const auto number = kept ? TakeNumber(rest) : std::nullopt;
  const auto written = number ? TakeNumber(rest) : std::nullopt;
  if (!written || (rest != "s" && rest != "f" && rest != "u")) return std::nullopt;
  return Version{fileName, fileName.substr(0, kKeyLength),   *kept, *number,
                 *written, static_cast<VersionKind>(rest[0])};
}

std::string NameOf(const Version& version) {
  return version.key + "-" + std::to_string(version.kept) + "-" + std::to_string(version.number) +
         "-" + std::to_string(version.written) + "-" + static_cast<char>(version.kind);
}

bool IsNewer(const Version& a, const Version& b) {
  return a.kept != b.kept ? a.kept > b.kept : a.number > b.number;
}

/// Sorts out which saved versions of one file stay; they come the newest first.
class SavedVersions {
 public:
  bool Stays(const Version& version, std::int64_t now) {
    constexpr int kAlways = 20;
    constexpr std::int64_t kDays = 30;
    const bool isNewestOfDay = days_.insert(version.kept / kDay).second;
    return ++count_ <= kAlways || (isNewestOfDay && now - version.kept <= kDays * kDay);
  }

 private:
  int count_ = 0;
  std::set<std::int64_t> days_;
};

bool StaysFor(const Version& version, std::int64_t days, std::int64_t now) {
  return now - version.kept <= days * kDay;
}

}  // namespace

std::vector<Version> Expired(std::vector<Version> versions, std::int64_t now) {
  constexpr std::int64_t kForeignDays = 90;
  constexpr std::int64_t kUnsavedDays = 30;
  constexpr std::uint64_t kMostBytes = 200'000'000;
  std::ranges::sort(versions, IsNewer);
  std::map<std::string, SavedVersions> saved;
  std::vector<Version> expired;
  std::uint64_t bytes = 0;
  bool isNewest = true;
  for (const Version& version : versions) {
    bool stays = false;
    if (version.kind == VersionKind::foreign) stays = StaysFor(version, kForeignDays, now);
    if (version.kind == VersionKind::unsaved) stays = StaysFor(version, kUnsavedDays, now);
    if (version.kind == VersionKind::saved) stays = saved[version.key].Stays(version, now);
    if (stays) bytes += version.size;
    if (!isNewest && (!stays || bytes > kMostBytes)) expired.push_back(version);
    isNewest = false;
  }
  return expired;
}

std::uint64_t ContentDigest(std::string_view bytes) {
  return DigestOf(Content(bytes));
}

std::int64_t Now(Host& host) {
  const std::string text = host.FormatNow("%s");
  std::int64_t seconds = 0;
  std::from_chars(text.data(), text.data() + text.size(), seconds);
  return seconds;
}

VersionStore::VersionStore(Host& host) : host_(host), folder_(Places::OfState(host).Versions()) {}

std::string VersionStore::PathOf(const std::string& fileName) const {
  return JoinPath(folder_, fileName);
}

Version VersionStore::Keep(const std::string& path, std::string_view bytes, std::int64_t written,
                           VersionKind kind) {
  const std::vector<Version> former = Of(path);
  if (const auto equal = EqualTo(former, bytes, kind)) return *equal;
  Version version{{}, KeyOf(path), Now(host_), 1, written, kind, bytes.size()};
  for (const Version& other : former) {
    if (other.kept == version.kept) version.number = std::max(version.number, other.number + 1);
  }
  version.fileName = NameOf(version);
  host_.MakeOwnFolders(folder_);
  const std::string pathFile = PathOf(version.key + kPathSuffix);
  if (!host_.StateOfFile(pathFile)) host_.ReplaceFile(pathFile, path, Readers::ownerOnly);
  host_.ReplaceFile(PathOf(version.fileName), bytes, Readers::ownerOnly);
  DropExpired();
  return version;
}

/// The newest version of this kind, when it says the same.
std::optional<Version> VersionStore::EqualTo(const std::vector<Version>& versions,
                                             std::string_view bytes, VersionKind kind) {
  const auto newest = std::ranges::find(versions, kind, &Version::kind);
  if (newest == versions.end() || Content(BytesOf(*newest)) != Content(bytes)) return std::nullopt;
  return *newest;
}

std::vector<Version> VersionStore::All() {
  std::vector<Version> versions;
  for (const std::string& name : host_.FilesIn(folder_)) {
    if (auto version = ParseName(name)) versions.push_back(std::move(*version));
  }
  std::ranges::sort(versions, IsNewer);
  return versions;
}

void VersionStore::DropExpired() {
  std::vector<Version> versions = All();
  for (Version& version : versions) {
    const auto state = host_.StateOfFile(PathOf(version.fileName));
    version.size = state ? state->size : 0;
  }
  for (const Version& version : Expired(std::move(versions), Now(host_))) Remove(version);
}

std::vector<Version> VersionStore::Of(const std::string& path) {
  std::vector<Version> versions = All();
  std::erase_if(versions,
                [key = KeyOf(path)](const Version& version) { return version.key != key; });
  return versions;
}

std::vector<std::string> VersionStore::Paths() {
  std::set<std::string> keys;
  for (const Version& version : All()) keys.insert(version.key);
  std::vector<std::string> paths;
  for (const std::string& key : keys) {
    if (host_.StateOfFile(PathOf(key + kPathSuffix))) {
      paths.push_back(host_.ReadFile(PathOf(key + kPathSuffix)));
    }
  }
  std::ranges::sort(paths);
  return paths;
}

std::string VersionStore::BytesOf(const Version& version) {
  return host_.ReadFile(PathOf(version.fileName));
}

void VersionStore::Remove(const Version& version) {
  host_.DeleteFile(PathOf(version.fileName));
}

}  // namespace polefit
