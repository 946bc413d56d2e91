#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_source.h"
#include "base/run_time_error.h"

namespace polefit {

/// What becomes of the file that a save replaces. `aside`, for the user's data: it stays beside the
/// new one as `path` & "~" until that is complete; a save that fails leaves both. `whole`, for all
/// else: it stays under its name until the new one is complete and takes its place at once.
enum class Saving { aside, whole };

/// Who may read a file that is made: those whom the system lets, or its owner only.
enum class Readers { usual, ownerOnly };

/// A larger file, or one with a longer line, is refused with error 7.
inline constexpr std::size_t kLargestFile = 64U << 20U;
inline constexpr std::size_t kLongestLine = 1U << 20U;

/// What is known of a file without reading it.
struct FileState {
  std::uint64_t size = 0;
  /// When it was written last, in nanoseconds since 1970 by the clock of its own file system.
  std::int64_t modified = 0;
  /// Whether it belongs to the user who runs this program.
  bool isOwn = false;
  /// Whether the name is a link to it.
  bool isLink = false;
};

/// Where the files lie that users share. Folders have no trailing separator.
struct Installation {
  /// The folder of the executables.
  std::string programs;
  /// The base folder as it was shipped.
  std::string shipped;
};

/// A lock that is held as long as this lives, and no longer than the process.
class HeldLock {
 public:
  HeldLock() = default;
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;
  virtual ~HeldLock() = default;
};

/// Files and folders. Texts are UTF-8. A failing operation throws RunTimeError unless it says
/// otherwise. Only regular files are read: what is none is error 75, and nothing waits for it.
class FileSystem : public LineSource {
 public:
  /// The directory look-up: the name of a normal file that `path` names, "" when there is none.
  /// "*" and "?" in the last part make it a pattern.
  virtual std::string LookUpFile(const std::string& path) = 0;
  virtual bool LookUpFolder(const std::string& path) = 0;

  /// The one shared file. Opening a second one is error 55.
  virtual void OpenForReading(const std::string& path) = 0;
  /// Replaces the file at `path`; what was there goes when CloseFile finds every line written.
  virtual void OpenForWriting(const std::string& path, Saving way = Saving::aside) = 0;
  /// The next line of the shared file.
  std::string_view ReadLine() override = 0;
  /// How many lines ReadLine has given of this file.
  virtual int LinesRead() const = 0;
  /// Writes the line and CR LF as Windows-1252.
  virtual void WriteLine(std::string_view line) = 0;
  /// Closes the shared file if it is open. After writing, the number of characters that the code
  /// page lacks and that stand as "?" in the file.
  virtual int CloseFile() = 0;
  /// Closes the shared file as it stands after an error; the former content stays beside it.
  virtual void AbandonFile() = 0;

  /// The bytes of a whole file.
  virtual std::string ReadFile(const std::string& path) = 0;
  /// At most `most` bytes of a file of any size, from `offset` on.
  virtual std::string ReadFilePart(const std::string& path, std::uint64_t offset,
                                   std::size_t most) = 0;
  /// Writes a whole file, as Saving::whole does.
  virtual void ReplaceFile(const std::string& path, std::string_view bytes,
                           Readers readers = Readers::usual) = 0;
  /// Gives a file that is complete another name in its folder, in place of what has that name.
  virtual void MoveFile(const std::string& from, const std::string& to) = 0;
  virtual void DeleteFile(const std::string& path) = 0;
  /// Nothing when no regular file is there.
  virtual std::optional<FileState> StateOfFile(const std::string& path) = 0;
  /// The names of the regular files in a folder, in byte order; none when there is no such folder.
  virtual std::vector<std::string> FilesIn(const std::string& folder) = 0;

  /// The lock on a folder, or on a file of that name, which is made and goes with the lock; null
  /// when another holds it for as long as `patience`.
  virtual std::unique_ptr<HeldLock> TakeLock(const std::string& path,
                                             std::chrono::milliseconds patience) = 0;

  virtual void MakeFolder(const std::string& path) = 0;
  /// Makes a folder and those that it lies in, for the user alone, where they are missing.
  virtual void MakeOwnFolders(const std::string& path) = 0;
  /// The process's current folder, without a trailing separator.
  virtual std::string CurrentFolder() = 0;
  /// A whole path with no link and no dot left in its folder. The name itself stays: a save
  /// replaces a link. The path as it stands where its folder is not there.
  virtual std::string ResolvedPath(const std::string& path) = 0;
  virtual void ChangeFolder(const std::string& path) = 0;
  /// Makes the drive of `path` current, where there are drives.
  virtual void ChangeDrive(const std::string& path) = 0;
  /// The short (8.3) form of an existing folder, or the folder itself where there is none.
  virtual std::string ShortPath(const std::string& folder) = 0;

  /// Makes `path` a link to `target`, in place of another link; a file of that name stays.
  virtual void MakeLink(const std::string& target, const std::string& path) = 0;

  /// The program's own folder, without a trailing separator: that of the running executable, or
  /// one in the user's own folders, which need not exist, when users share the installation.
  virtual std::string OwnFolder() = 0;
  /// The installation when users share it; nothing when all is in the program's own folder.
  virtual std::optional<Installation> SharedInstallation() = 0;
  /// Where the user's settings of this program lie, and what it remembers for the user. Neither
  /// need exist.
  virtual std::string ConfigurationFolder() = 0;
  virtual std::string StateFolder() = 0;
  /// Where what lasts as long as the user's session lies, such as the claim on a file. It need not
  /// exist either.
  virtual std::string RuntimeFolder() = 0;
};

}  // namespace polefit
