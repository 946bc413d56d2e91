#pragma once

#include "platform/ui/qt_host.h"
#include "runs/run_history.h"
#include "runs/run_watch.h"

namespace polefit {

/// The program's own Host: the desktop's, which leaves the solver's start to the watch on runs.
/// What the run before has left is kept first.
class ProgramHost : public QtHost {
 public:
  RunWatch& Runs() { return runs_; }
  RunHistory& History() { return history_; }

  long StartProgram(const Command& command) override {
    if (command.kind != CommandKind::runSolver) return QtHost::StartProgram(command);
    Places places;
    places.program = command.object;
    history_.KeepLast(places);
    const long process = runs_.Start(command);
    history_.KeepInput(*runs_.Run());
    return process;
  }

 private:
  RunWatch runs_{*this};
  RunHistory history_{*this};
};

}  // namespace polefit
