#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// What a former version was, which decides how long it stays: 30 days for what was typed and not
/// saved; 90 days for a file of something else; the last 20, and one a day for 30 days, of the
/// rest.
enum class VersionKind : char { saved = 's', foreign = 'f', unsaved = 'u' };

/// A former version of a file. Times are in seconds since 1970.
struct Version {
  /// In the folder of versions.
  std::string fileName;
  /// The same for all versions of one path.
  std::string key;
  std::int64_t kept = 0;
  /// Tells versions kept in the same second apart.
  std::int64_t number = 1;
  /// When this content was written.
  std::int64_t written = 0;
  VersionKind kind = VersionKind::saved;
  std::uint64_t size = 0;
};

/// The versions that have had their time, and beyond 200 MB in all the oldest ones. The newest of
/// all stays.
std::vector<Version> Expired(std::vector<Version> versions, std::int64_t now);

/// Tells contents apart that differ from line 2 on: line 1 holds the time of writing.
std::uint64_t ContentDigest(std::string_view bytes);

/// Seconds since 1970 by the host's clock.
std::int64_t Now(Host& host);

/// The former versions of the user's files, in the folder of what the program remembers for the
/// user, readable by that user only. A path stands for its file with the folder resolved. Failures
/// throw RunTimeError.
class VersionStore {
 public:
  explicit VersionStore(Host& host);

  /// Keeps `bytes` as a version of the file at `path` unless they equal the newest one kept, and
  /// drops what has had its time. The version that holds them.
  Version Keep(const std::string& path, std::string_view bytes, std::int64_t written,
               VersionKind kind);
  /// The newest first.
  std::vector<Version> Of(const std::string& path);
  /// The paths that have versions, in alphabetical order.
  std::vector<std::string> Paths();
  std::string BytesOf(const Version& version);
  void Remove(const Version& version);

 private:
  std::string PathOf(const std::string& fileName) const;
  std::vector<Version> All();
  std::optional<Version> EqualTo(const std::vector<Version>& versions, std::string_view bytes,
                                 VersionKind kind);
  void DropExpired();

  Host& host_;
  std::string folder_;
};

}  // namespace polefit
