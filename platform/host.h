#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/line_source.h"
#include "base/run_time_error.h"
#include "platform/command.h"
#include "platform/message_style.h"
#include "platform/registry_types.h"

namespace polefit {

/// The one file dialog of the program. It keeps its settings from use to use.
struct CommonDialog {
  std::string title;
  /// Pairs of description and patterns: "Text Files (*.txt)|*.txt|All|*.*".
  std::string filter;
  /// Counts from 1.
  int filterIndex = 1;
  /// In: the suggestion. Out: the chosen path, or empty when cancelled.
  std::string fileName;
  std::string initialFolder;
  /// When set, a cancelled dialog is error 32755.
  bool cancelIsError = false;
};

/// Thrown by EndProgram so that the stack unwinds to the one place that leaves the process.
struct ProgramEnded {};

/// Everything that the program does to the world outside itself. Texts are UTF-8. A failing
/// operation throws RunTimeError unless it says otherwise.
class Host : public LineSource {
 public:
  /// Shows a message and waits for the button. `style` is taken as it stands: the low four bits
  /// are the buttons, the next four the icon, 256 and 512 move the default button.
  virtual Answer MessageBox(const std::string& text, int style, const std::string& title) = 0;
  /// Ask for a file to open, or to save as; the answer is in `dialog.fileName`.
  virtual void ShowOpen(CommonDialog& dialog) = 0;
  virtual void ShowSave(CommonDialog& dialog) = 0;

  /// The directory look-up: the name of a normal file that `path` names, "" when there is none.
  /// "*" and "?" in the last part make it a pattern.
  virtual std::string LookUpFile(const std::string& path) = 0;
  virtual bool LookUpFolder(const std::string& path) = 0;

  /// The one shared file. Opening a second one is error 55.
  virtual void OpenForReading(const std::string& path) = 0;
  /// Replaces the file at `path`. Its former content stays beside it as `path` & "~" until
  /// CloseFile finds every line written.
  virtual void OpenForWriting(const std::string& path) = 0;
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

  virtual void DeleteFile(const std::string& path) = 0;
  virtual void MakeFolder(const std::string& path) = 0;
  /// The process's current folder, without a trailing separator.
  virtual std::string CurrentFolder() = 0;
  virtual void ChangeFolder(const std::string& path) = 0;
  /// Makes the drive of `path` current, where there are drives.
  virtual void ChangeDrive(const std::string& path) = 0;
  /// The short (8.3) form of an existing folder, or the folder itself where there is none.
  virtual std::string ShortPath(const std::string& folder) = 0;
  /// The folder of the running executable, without a trailing separator.
  virtual std::string OwnFolder() = 0;

  /// A key opened with `access`, or nothing when there is no such key.
  virtual std::optional<RegistryKey> RegOpenKeyExA(std::uint32_t root, const std::string& subKey,
                                                   std::uint32_t access) = 0;
  /// The key, made when missing; nothing when that fails.
  virtual std::optional<CreatedKey> RegCreateKeyExA(std::uint32_t root,
                                                    const std::string& subKey) = 0;
  virtual std::optional<RegistryValue> RegQueryValueExA(RegistryKey key,
                                                        const std::string& name) = 0;
  /// False when the key was not opened for writing or the store cannot be written.
  virtual bool RegSetValueExA(RegistryKey key, const std::string& name,
                              const RegistryValue& value) = 0;
  virtual void RegCloseKey(RegistryKey key) = 0;

  /// Starts a program without waiting; its process id. Error 53, 70, 75 or 76 when it cannot be
  /// started.
  virtual long StartProgram(const Command& command) = 0;
  /// Opens a file with the desktop's program for it.
  virtual void ShellExecuteA(const std::string& path) = 0;
  /// Waits for a started program with no time limit.
  virtual void WaitForSingleObject(long processId) = 0;

  /// The present time in the pattern of strftime, names in the system's language.
  virtual std::string FormatNow(const char* pattern) = 0;
  /// Major version in the lowest byte, minor in the next.
  virtual std::uint32_t GetVersion() = 0;

  /// Closes every window and leaves; throws ProgramEnded.
  [[noreturn]] virtual void EndProgram() = 0;
};

}  // namespace polefit
