#pragma once

#include <memory>
#include <optional>
#include <string>

#include "form/state.h"

namespace polefit {

/// The file of the data between the commands: what other programs and other windows do to it. It
/// only posts notices.
class CurrentFile final {
 public:
  explicit CurrentFile(Program& program) : program_(program) {}

  /// After a command the data may be in another file. It is claimed for this window; when another
  /// one has it, a notice says so once. The result is its path, "" for data in no file.
  std::string Follow();

  /// Another program may have written the file: what differs there from line 2 on waits for a
  /// decision.
  void Look();

 private:
  void Claim();
  void PostChange(std::uint64_t digest);

  Program& program_;
  std::string path_;
  std::unique_ptr<HeldLock> lock_;
  /// The file as it was last looked at.
  std::optional<FileState> seen_;
};

}  // namespace polefit
