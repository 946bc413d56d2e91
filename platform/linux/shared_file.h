#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/safe_file.h"

namespace polefit {

/// The program's one shared file: Windows-1252 lines in, Windows-1252 lines out.
/// Failures throw RunTimeError.
class SharedFile {
 public:
  SharedFile() = default;
  SharedFile(const SharedFile&) = delete;
  SharedFile& operator=(const SharedFile&) = delete;

  void OpenForReading(const std::string& path);
  void OpenForWriting(const std::string& path, Saving way = Saving::aside);
  std::string_view ReadLine();
  void WriteLine(std::string_view line);
  int Close();
  void Abandon();
  int LinesRead() const { return linesRead_; }

 private:
  void RequireClosed() const;
  std::string_view TakeLine();
  bool FillInput();
  void Flush();

  Descriptor input_;
  /// What was read of the file; lines are taken from `inputAt_` on.
  std::string inputBuffer_;
  std::size_t inputAt_ = 0;
  std::size_t bytesRead_ = 0;
  std::string line_;
  int linesRead_ = 0;

  SafeFile output_;
  /// Lines as UTF-8, and the same as they go out.
  std::string pending_;
  std::string bytes_;
  int replacedCharacters_ = 0;
};

}  // namespace polefit
