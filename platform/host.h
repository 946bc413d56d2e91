#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "platform/command.h"
#include "platform/file_system.h"
#include "platform/message_style.h"
#include "platform/processes.h"
#include "platform/registry_types.h"

namespace polefit {

/// A question with buttons of its own. The first one goes on, the last one declines.
struct Choice {
  std::string sentence;
  std::vector<std::string> buttons;
};

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
  /// Looks at a path before the dialog takes it. What it asks stands over the dialog: its last
  /// button leads back there, any other closes it with the path, and its index is `pressed`.
  std::function<std::optional<Choice>(const std::string& path)> judge = {};
  std::size_t pressed = 0;
};

/// Thrown by EndProgram so that the stack unwinds to the one place that leaves the process.
struct ProgramEnded {};

/// Everything that the program does to the world outside itself. Texts are UTF-8. A failing
/// operation throws RunTimeError unless it says otherwise.
class Host : public FileSystem, public Processes {
 public:
  /// Shows a message and waits for the button. `style` is taken as it stands: the low four bits
  /// are the buttons, the next four the icon, 256 and 512 move the default button.
  virtual Reply MessageBox(const std::string& text, int style, const std::string& title) = 0;
  /// Asks with the choice's own buttons and waits; the index of the one pressed. Escape and the
  /// close box decline.
  virtual std::size_t Ask(const Choice& choice) = 0;
  /// Ask for a file to open, or to save as; the answer is in `dialog.fileName`.
  virtual void ShowOpen(CommonDialog& dialog) = 0;
  virtual void ShowSave(CommonDialog& dialog) = 0;

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

  /// What the program keeps for the user from one time to the next, bytes under a name; "" for what
  /// was never kept. Failures are silent.
  virtual std::string UserSetting(const std::string& name) = 0;
  virtual void KeepUserSetting(const std::string& name, const std::string& bytes) = 0;

  /// Carries a command out without waiting; the process id, 0 where no process was needed. Error
  /// 53, 70, 75 or 76 when it cannot be started.
  virtual long StartProgram(const Command& command) = 0;
  /// Opens a file with the desktop's program for it.
  virtual void ShellExecuteA(const std::string& path) = 0;
  /// Waits for a started program with no time limit.
  virtual void WaitForSingleObject(long processId) = 0;

  /// Takes back what lets the program come back at the next log-on, if it is there.
  virtual void WithdrawRestart() = 0;

  /// The present time in milliseconds since 1970.
  virtual std::int64_t MillisecondsNow() = 0;
  /// The present time in the pattern of strftime, names in the system's language.
  virtual std::string FormatNow(const char* pattern) = 0;
  /// Major version in the lowest byte, minor in the next.
  virtual std::uint32_t GetVersion() = 0;

  /// Closes every window and leaves; throws ProgramEnded.
  [[noreturn]] virtual void EndProgram() = 0;
};

}  // namespace polefit
