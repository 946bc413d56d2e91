#pragma once

#include "platform/linux/linux_host.h"

namespace polefit {

/// A Host without windows: messages go to standard error, questions are answered with Cancel or
/// No, dialogs are cancelled, and nothing is started.
class ConsoleHost : public LinuxHost {
 public:
  using LinuxHost::LinuxHost;

  /// "." when the folder is gone: a whole path needs none.
  std::string CurrentFolder() override;
  Reply MessageBox(const std::string& text, int style, const std::string& title) override;
  std::size_t Ask(const Choice& choice) override;
  void ShowOpen(CommonDialog& dialog) override;
  void ShowSave(CommonDialog& dialog) override;
  long StartProgram(const Command& command) override;
  void ShellExecuteA(const std::string& path) override;
  void WaitForSingleObject(long processId) override;
  [[noreturn]] void EndProgram() override;
};

}  // namespace polefit
