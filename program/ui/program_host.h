#pragma once

#include "platform/ui/qt_host.h"
#include "runs/run_watch.h"

namespace polefit {

/// The program's own Host: the desktop's, which leaves the solver's start to the watch on runs.
class ProgramHost : public QtHost {
 public:
  RunWatch& Runs() { return runs_; }

  long StartProgram(const Command& command) override {
    const bool isRun = command.kind == CommandKind::runSolver;
    return isRun ? runs_.Start(command) : QtHost::StartProgram(command);
  }

 private:
  RunWatch runs_{*this};
};

}  // namespace polefit
