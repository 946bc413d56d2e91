#include "platform/ui/termination.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace polefit {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

/// A handler may do next to nothing; it hands the signal to the event loop through this pipe.
std::array<int, 2> ends = {-1, -1};

void HandOver(int /*signal*/) {
  const int formerError = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(ends[1], &byte, 1);
  errno = formerError;
}

}  // namespace

Termination::Termination(std::function<void()> asked) : asked_(std::move(asked)) {
  if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
  notifier_ = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, &Termination::Take);
  for (const int signal : kSignals) std::signal(signal, HandOver);
}

Termination::~Termination() {
  if (notifier_ == nullptr) return;
  for (const int signal : kSignals) std::signal(signal, SIG_DFL);
  delete notifier_;
  for (int& end : ends) ::close(std::exchange(end, -1));
}

void Termination::Take() {
  std::array<char, 16> bytes{};
  [[maybe_unused]] const ssize_t length = ::read(ends[0], bytes.data(), bytes.size());
  asked_();
}

}  // namespace polefit
