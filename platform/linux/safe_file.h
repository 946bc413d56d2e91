#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/linux/descriptor.h"

namespace polefit {

/// The one way that a file is written. What it replaces stays whole, under its own name or beside
/// it, until the new content is complete and on the disk. Links are replaced, never followed; a
/// device or a pipe is written as it stands. Failures throw RunTimeError.
///
/// Saving::aside: the former file is put aside as `path` & "~" (one more "~" while that name is
/// taken) and goes at the end. A save that failed leaves the new content in part and the former one
/// whole. The next one to this path writes over the torn file only while that is still the one
/// which this object made and the former one is still where it was put.
///
/// Saving::whole: the content grows under `path` & ".new" and gets its name at the end. A save that
/// failed leaves `path` as it was and nothing beside it.
class SafeFile {
 public:
  SafeFile() = default;
  ~SafeFile() { Abandon(); }
  SafeFile(const SafeFile&) = delete;
  SafeFile& operator=(const SafeFile&) = delete;

  /// The file gets the permission bits of the one that it replaces before anything is written.
  void Open(const std::string& path, Saving way, Readers readers = Readers::usual);
  /// Writes all of it. After a failure nothing more is written.
  void Write(std::string_view bytes);
  /// Completes the file: when it returns, the content is on the disk under its name.
  void Close();
  /// Ends a save that failed.
  void Abandon();

  bool IsOpen() const { return output_.IsOpen(); }

 private:
  /// One file, whatever it is called.
  struct Identity {
    dev_t device = 0;
    ino_t number = 0;

    bool operator==(const Identity&) const = default;
  };
  /// What a save that is not complete has on the disk.
  struct Unfinished {
    std::string path;
    Identity made;
    /// Where the former file lies, or empty.
    std::string aside;
    Identity former;
  };

  static std::optional<Identity> IdentityAt(const std::string& path);
  bool ContinuesTornFile(const std::string& path, Saving way);
  bool OpenDevice(const std::string& path);
  void TakeFormer(const std::string& path);
  void Create(Readers readers);
  void SetFormerMode();
  void OpenTorn();
  void FinishAside();
  void FinishWhole();
  void Discard();

  Descriptor output_;
  Saving way_ = Saving::aside;
  std::string target_;
  Unfinished unfinished_;
  /// The permission bits of the file that is replaced.
  std::optional<mode_t> formerMode_;
  bool isDevice_ = false;
  /// Why nothing more is written.
  std::optional<RunTimeError> failure_;
};

/// Writes a whole file as Saving::whole does.
void ReplaceFileSafely(const std::string& path, std::string_view bytes, Readers readers);

/// Renames a file that is complete, and lets the disk have its new name. Throws RunTimeError.
void MoveFileSafely(const std::string& from, const std::string& to);

}  // namespace polefit
