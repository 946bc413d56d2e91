#include <csignal>
#include <iostream>
#include <string>
#include <vector>

#include "platform/console_host.h"
#include "solver/run.h"

namespace polefit {

namespace {

/// Counts the signals that ask the program to end. They are blocked and looked for when asked, so
/// that no output is ever cut off in the middle.
class StopSignals {
 public:
  StopSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGTERM);
    sigaddset(&signals_, SIGINT);
    sigprocmask(SIG_BLOCK, &signals_, nullptr);
  }

  int Count() {
    const timespec noTime{};
    while (sigtimedwait(&signals_, nullptr, &noTime) > 0) ++count_;
    return count_;
  }

 private:
  sigset_t signals_{};
  int count_ = 0;
};

Exit Main(const std::vector<std::string>& words) {
  const Request request = ParseCommandLine(words);
  switch (request.action) {
    case Request::Action::help:
      std::cout << HelpText();
      return Exit::converged;
    case Request::Action::version:
      std::cout << "pfit " POLEFIT_VERSION "\n";
      return Exit::converged;
    case Request::Action::usage:
      std::cerr << HelpText().substr(0, HelpText().find('\n')) << '\n';
      return Exit::usage;
    case Request::Action::run:
      break;
  }
  StopSignals signals;
  ConsoleHost host;
  return RunSolver(host, request.files, {std::cout, std::cerr, [&] { return signals.Count(); }});
}

}  // namespace

}  // namespace polefit

int main(int argc, char** argv) {
  return static_cast<int>(polefit::Main({argv + 1, argv + argc}));
}
