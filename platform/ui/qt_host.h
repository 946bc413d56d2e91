#pragma once

#include <functional>

#include "platform/linux/linux_host.h"

namespace polefit {

/// The Host of the program with windows. Commands meant for the platform that the program was
/// first written for become what this desktop does instead: the solver's start goes to the
/// function given here, "regedit" makes the autostart entry, "COMMAND.COM" a copy, Notepad the
/// user's text editor, the mail client the desktop's own.
class QtHost : public LinuxHost {
 public:
  /// Starts the solver with these arguments; its process id.
  using SolverStart = std::function<long(const Command&)>;

  void SetSolverStart(SolverStart start) { startSolver_ = std::move(start); }

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  std::size_t Ask(const Choice& choice) override;
  void ShowOpen(CommonDialog& dialog) override;
  void ShowSave(CommonDialog& dialog) override;
  long StartProgram(const Command& command) override;
  void ShellExecuteA(const std::string& path) override;
  void WaitForSingleObject(long processId) override;
  [[noreturn]] void EndProgram() override;

 private:
  SolverStart startSolver_;
};

}  // namespace polefit
