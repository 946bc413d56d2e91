#include "platform/linux/keeper.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace polefit {

namespace {

/// A line of text that needs no memory of the heap.
class ShortLine {
 public:
  void Add(const char* text) {
    const std::size_t length = std::strlen(text);
    if (used_ + length > bytes_.size()) return;
    std::memcpy(bytes_.data() + used_, text, length);
    used_ += length;
  }
  void Add(int number) {
    std::array<char, 12> digits{};
    std::size_t at = digits.size() - 1;
    do {
      digits[--at] = static_cast<char>('0' + number % 10);
      number /= 10;
    } while (number > 0);
    Add(digits.data() + at);
  }
  const char* Data() const { return bytes_.data(); }
  std::size_t Size() const { return used_; }

 private:
  std::array<char, 64> bytes_{};
  std::size_t used_ = 0;
};

void WriteEnding(const ShortLine& line, const KeeperFiles& files) {
  constexpr unsigned kMode = 0666;
  ::unlink(files.unfinished);
  const int file =
      ::open(files.unfinished, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kMode);
  if (file < 0) return;
  const bool isWritten =
      ::write(file, line.Data(), line.Size()) == static_cast<ssize_t>(line.Size()) &&
      ::fsync(file) == 0;
  ::close(file);
  if (isWritten) {
    std::rename(files.unfinished, files.ending);
  } else {
    ::unlink(files.unfinished);
  }
}

/// Nothing but the null device stays open, so that it holds up no pipe, file or folder.
void LetGoOfEverything() {
  ::prctl(PR_SET_NAME, kKeeperName);
  const int nothing = ::open("/dev/null", O_RDWR);
  for (int standard = 0; standard < 3; ++standard) ::dup2(nothing, standard);
  ::close_range(3, ~0U, 0);
  [[maybe_unused]] const int moved = ::chdir("/");
}

}  // namespace

void BecomeKeeper(int program, const KeeperFiles& files) {
  LetGoOfEverything();
  int status = 0;
  pid_t ended = 0;
  do {
    ended = ::waitpid(program, &status, 0);
  } while (ended < 0 && errno == EINTR);
  if (ended == program) {
    ShortLine line;
    line.Add(program);
    line.Add(WIFSIGNALED(status) ? " signal " : " exit ");
    line.Add(WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status));
    line.Add("\n");
    WriteEnding(line, files);
  }
  ::_exit(0);
}

}  // namespace polefit
