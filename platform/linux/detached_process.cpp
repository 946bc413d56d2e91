#include "platform/linux/detached_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

#include "base/run_time_error.h"

namespace polefit {

namespace {

/// What the new process tells of itself: its id, then an errno value if the program did not start.
struct Message {
  int isError = 0;
  int value = 0;
};

void Tell(int pipe, const Message& message) {
  // Nobody can be told of a failure to tell.
  [[maybe_unused]] const ssize_t written = ::write(pipe, &message, sizeof message);
}

/// From here to the exec only calls that are safe after a fork in a threaded program.
[[noreturn]] void BecomeProgram(char* const* words, int output, int pipe) {
  ::setpgid(0, 0);
  Tell(pipe, {0, ::getpid()});
  const int nothing = ::open("/dev/null", O_RDWR);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(output >= 0 ? output : nothing, STDOUT_FILENO);
  ::dup2(output >= 0 ? output : nothing, STDERR_FILENO);
  // A path is not searched for, and a text file at it is not handed to the shell.
  if (std::strchr(words[0], '/') != nullptr) {
    ::execv(words[0], words);
  } else {
    ::execvp(words[0], words);
  }
  Tell(pipe, {1, errno});
  ::_exit(127);
}

/// The second fork leaves the program with no parent here, so that nothing waits for it.
void ForkTwice(char* const* words, int output, int pipe) {
  const pid_t middle = ::fork();
  if (middle < 0) throw FromSystemError(errno);
  if (middle == 0) {
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0) BecomeProgram(words, output, pipe);
    if (program < 0) Tell(pipe, {1, errno});
    ::_exit(0);
  }
  ::waitpid(middle, nullptr, 0);
}

RunTimeError NamingProgram(int systemError, const std::string& program) {
  RunTimeError error = FromSystemError(systemError);
  error.description += ": " + program;
  return error;
}

/// The id that the new process told, once the pipe's end says that the program has started.
long ReadId(int pipe, const std::string& program) {
  long id = 0;
  for (Message message; ::read(pipe, &message, sizeof message) == sizeof message;) {
    if (message.isError != 0) throw NamingProgram(message.value, program);
    id = message.value;
  }
  return id;
}

/// A file descriptor that closes itself.
struct Descriptor {
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  void Close() {
    if (number >= 0) ::close(number);
    number = -1;
  }

  int number;
};

int OpenOutput(const std::string& path) {
  if (path.empty()) return -1;
  const int output = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (output < 0) throw NamingProgram(errno, path);
  return output;
}

}  // namespace

long StartDetached(const std::vector<std::string>& words, const std::string& outputPath) {
  std::vector<std::string> copies = words;
  std::vector<char*> arguments;
  arguments.reserve(copies.size() + 1);
  for (std::string& word : copies) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const Descriptor output(OpenOutput(outputPath));
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw FromSystemError(errno);
  const Descriptor readEnd(ends[0]);
  Descriptor writeEnd(ends[1]);
  ForkTwice(arguments.data(), output.number, writeEnd.number);
  writeEnd.Close();
  return ReadId(readEnd.number, words.front());
}

std::optional<std::uint64_t> StartOfProcess(long processId) {
  std::ifstream file("/proc/" + std::to_string(processId) + "/stat");
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::size_t name = text.rfind(')');  // the program's own name may hold any character
  if (name == std::string::npos) return std::nullopt;
  std::istringstream fields(text.substr(name + 1));
  std::string field;
  fields >> field;
  const bool ended = field == "Z" || field == "X";
  constexpr int kFieldsBeforeStart = 18;
  for (int i = 0; i < kFieldsBeforeStart; ++i) fields >> field;
  std::uint64_t start = 0;
  if (ended || !(fields >> start)) return std::nullopt;
  return start;
}

void WaitForEnd(long processId) {
  using std::chrono_literals::operator""ms;
  while (StartOfProcess(processId)) std::this_thread::sleep_for(50ms);
}

void EndGroup(long processGroup, bool atOnce) {
  if (processGroup > 1) ::kill(static_cast<pid_t>(-processGroup), atOnce ? SIGKILL : SIGTERM);
}

}  // namespace polefit
