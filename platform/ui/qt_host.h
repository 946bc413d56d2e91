#pragma once

#include "platform/linux/linux_host.h"

namespace polefit {

/// The Host with windows. Commands meant for the platform that the program was first written for
/// become what this desktop does instead: the registry script an autostart entry, the copy one of
/// our own, the editor and the mail client the desktop's. Running the solver is left to who knows
/// of runs.
class QtHost : public LinuxHost {
 public:
  QtHost();

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
