#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/console_host.h"
#include "platform/linux/process_start.h"
#include "solver/data_file.h"
#include "solver/json_report.h"
#include "solver/orders.h"
#include "solver/run.h"
#include "solver/summary.h"

namespace polefit {

namespace {

/// Counts the signals that ask the program to end, in a thread of its own, so that no output is cut
/// off in the middle. A program that is stuck in a pipe ends shortly after the second one.
class StopSignals {
 public:
  StopSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGTERM);
    sigaddset(&signals_, SIGINT);
    pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
    watcher_ = std::thread([this] { Watch(); });
  }
  ~StopSignals() {
    isEnding_ = true;
    pthread_kill(watcher_.native_handle(), SIGINT);
    watcher_.join();
  }
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  int Count() const { return count_; }

 private:
  void Watch() {
    int signal = 0;
    while (sigwait(&signals_, &signal) == 0 && !isEnding_) {
      if (++count_ == 1) continue;
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      if (!isEnding_) std::_Exit(static_cast<int>(Exit::stopped));
    }
  }

  sigset_t signals_{};
  std::atomic<int> count_ = 0;
  std::atomic<bool> isEnding_ = false;
  std::thread watcher_;
};

Exit Tell(const std::string& text) {
  std::cout << text << std::flush;
  return Exit::converged;
}

/// The exit code of a run whose result goes to the standard output alone.
Exit Checked(Exit exit) {
  if (std::cout.good() || exit == Exit::usage) return exit;
  std::cerr << "Cannot write the result to the standard output." << std::endl;
  return Exit::unwritable;
}

/// Many files, each with a host of its own: they may run at once.
Exit Summarise(const Request& request, const std::function<int()>& stopRequests) {
  const RunOne run = [&](const RunFiles& files, std::ostream& errors) {
    ConsoleHost host;
    std::ostream nowhere(nullptr);
    return SolveFile(host, files, {nowhere, errors, stopRequests}, request.allRows);
  };
  return RunSummary(request, run, stopRequests, std::cout, std::cerr);
}

/// Tells why orders cannot be tried.
Exit Refuse(const Failure& failure, bool asJson) {
  if (asJson) std::cout << OutcomeAsJson({failure.exit, failure.result, failure.findings, 0, {}});
  std::cerr << ForTerminal(FaultTexts(failure.findings).front()) << std::endl;
  return failure.exit;
}

Exit ShowOrders(Host& host, const Request& request, const std::function<int()>& stopRequests) {
  ResponseRecord record;
  if (const auto failure = ReadDataFile(host, request.files.front().InputPath(), record)) {
    return Refuse(*failure, request.json);
  }
  const auto isStopped = [&] { return stopRequests() > 0; };
  const OrderTable table = TryOrders(record, request.fewestPoles, request.mostPoles, isStopped);
  if (table.fits.empty() && HasFault(table.findings)) {
    return Refuse(Refusal(table.findings), request.json);
  }
  std::cout << (request.json ? OrdersAsJson(table) : OrdersAsText(table)) << std::flush;
  return isStopped() ? Exit::stopped : Exit::converged;
}

Exit Main(const std::vector<std::string>& words) {
  ConsoleHost host;
  const Request request = ParseCommandLine(words, host);
  using enum Request::Action;
  if (request.action == help) return Checked(Tell(HelpText()));
  if (request.action == version) return Checked(Tell("pfit " POLEFIT_VERSION "\n"));
  if (request.action == usage) {
    std::cerr << HelpText().substr(0, HelpText().find('\n')) << '\n';
    return Exit::usage;
  }
  // A reader of the progress who leaves does not end the run.
  std::signal(SIGPIPE, SIG_IGN);
  StopSignals signals;
  const auto stopRequests = [&] { return signals.Count(); };
  if (request.action == summary) return Checked(Summarise(request, stopRequests));
  if (request.action == orders) return Checked(ShowOrders(host, request, stopRequests));
  std::ostream nowhere(nullptr);
  std::ostream& progress = request.json ? nowhere : std::cout;
  const RunOutcome outcome =
      SolveFile(host, request.files.front(), {progress, std::cerr, stopRequests}, request.allRows);
  std::cout << (request.json ? OutcomeAsJson(outcome) : ClosingLines(outcome)) << std::flush;
  return request.json ? Checked(outcome.exit) : outcome.exit;
}

}  // namespace

}  // namespace polefit

int main(int argc, char** argv) {
  polefit::PrepareProcess();
  return static_cast<int>(polefit::Main({argv + 1, argv + argc}));
}
