#include "platform/linux/process_start.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

namespace polefit {

void PrepareProcess() {
  // A closed one stays one that cannot be written: what goes there must not seem to arrive.
  for (int opened = 0; opened >= 0 && opened <= STDERR_FILENO;) {
    opened = ::open("/dev/null", O_RDONLY);
    if (opened > STDERR_FILENO) ::close(opened);
  }
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace polefit
