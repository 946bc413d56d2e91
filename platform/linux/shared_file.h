#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace polefit {

/// The program's one shared file: Windows-1252 lines in, Windows-1252 lines out.
/// Failures throw RunTimeError.
class SharedFile {
 public:
  SharedFile() = default;
  ~SharedFile();
  SharedFile(const SharedFile&) = delete;
  SharedFile& operator=(const SharedFile&) = delete;

  void OpenForReading(const std::string& path);
  /// The former content is moved to `path` & "~" (one more "~" while that name is taken), never
  /// through a link, and is removed by Close. After a save that failed, the next one to the same
  /// path writes over the torn file and keeps to the former content of the first.
  void OpenForWriting(const std::string& path);
  std::string_view ReadLine();
  void WriteLine(std::string_view line);
  int Close();
  void Abandon();
  int LinesRead() const { return linesRead_; }

 private:
  void RequireClosed() const;
  bool FillInput();
  std::string_view TakeLine();
  void SetFormerAside();
  void CreateTarget();
  void Flush();
  void FinishWriting();
  void CloseDescriptors();

  int input_ = -1;
  /// What was read of the file; lines are taken from `inputAt_` on.
  std::string inputBuffer_;
  std::size_t inputAt_ = 0;
  std::string line_;
  int linesRead_ = 0;

  int output_ = -1;
  std::string target_;
  /// Lines as UTF-8, and the same as they go out.
  std::string pending_;
  std::string bytes_;
  /// Where the former content lies, or empty.
  std::string former_;
  /// The permissions of the former file, when it was one.
  std::optional<unsigned> formerMode_;
  /// A line of the present save could not be written.
  bool failed_ = false;
  int replacedCharacters_ = 0;
};

}  // namespace polefit
