#include "platform/linux/detached_process.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <thread>

#include "base/run_time_error.h"
#include "platform/linux/descriptor.h"
#include "platform/linux/file_reading.h"
#include "platform/linux/keeper.h"

namespace polefit {

namespace {

/// What the new process tells of itself: its id, then an errno value if the program did not start.
struct Message {
  int isError = 0;
  int value = 0;
};

/// All that the processes between this one and the program need; made before the forks, after which
/// nothing may be made.
struct Forked {
  char* const* words = nullptr;
  int output = -1;
  int pipe = -1;
  KeeperFiles files;
};

void Tell(int pipe, const Message& message) {
  // Nobody can be told of a failure to tell.
  [[maybe_unused]] const ssize_t written = ::write(pipe, &message, sizeof message);
}

/// A program begins with the signals as the system has them, not as this program wants them.
void ResetSignals() {
  for (const int signal : {SIGPIPE, SIGXFSZ, SIGCHLD, SIGTERM, SIGINT, SIGHUP}) {
    ::signal(signal, SIG_DFL);
  }
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// From here to the exec only calls that are safe after a fork in a threaded program.
[[noreturn]] void BecomeProgram(const Forked& forked) {
  ::setpgid(0, 0);
  Tell(forked.pipe, {0, ::getpid()});
  const int nothing = ::open("/dev/null", O_RDWR);
  ::dup2(nothing, STDIN_FILENO);
  ::dup2(forked.output >= 0 ? forked.output : nothing, STDOUT_FILENO);
  ::dup2(forked.output >= 0 ? forked.output : nothing, STDERR_FILENO);
  ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
  // A path is not searched for, and a text file at it is not handed to the shell.
  if (std::strchr(forked.words[0], '/') != nullptr) {
    ::execv(forked.words[0], forked.words);
  } else {
    ::execvp(forked.words[0], forked.words);
  }
  Tell(forked.pipe, {1, errno});
  ::_exit(127);
}

/// The process between: with a file for the ending it stays as the program's keeper, else it goes.
[[noreturn]] void BecomeMiddle(const Forked& forked) {
  ::setsid();
  ResetSignals();
  const pid_t program = ::fork();
  if (program == 0) BecomeProgram(forked);
  if (program < 0) Tell(forked.pipe, {1, errno});
  if (program > 0 && forked.files.ending != nullptr) BecomeKeeper(program, forked.files);
  ::_exit(0);
}

/// The first child ends at once, so that this program is nobody's parent and waits for nobody.
void Fork(const Forked& forked) {
  const pid_t first = ::fork();
  if (first < 0) throw FromSystemError(errno);
  if (first == 0) {
    const pid_t middle = ::fork();
    if (middle == 0) BecomeMiddle(forked);
    if (middle < 0) Tell(forked.pipe, {1, errno});
    ::_exit(0);
  }
  while (::waitpid(first, nullptr, 0) < 0 && errno == EINTR) {
  }
}

RunTimeError NamingProgram(int systemError, const std::string& program) {
  RunTimeError error = FromSystemError(systemError);
  error.path = program;
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

/// The program's output in a new file beside its place, which it takes once the program is on.
class Output {
 public:
  explicit Output(const std::string& path) : path_(path), fresh_(path + ".new") {
    constexpr mode_t kMode = 0666;
    if (path_.empty()) return;
    ::unlink(fresh_.c_str());
    file_ = Descriptor(::open(
        fresh_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_APPEND | O_CLOEXEC, kMode));
    if (!file_.IsOpen()) throw NamingProgram(errno, fresh_);
  }
  ~Output() {
    if (file_.IsOpen() && !isPlaced_) ::unlink(fresh_.c_str());
  }
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  int Number() const { return file_.Number(); }
  void Place() {
    if (!file_.IsOpen()) return;
    if (std::rename(fresh_.c_str(), path_.c_str()) != 0) throw NamingProgram(errno, path_);
    isPlaced_ = true;
  }

 private:
  std::string path_;
  std::string fresh_;
  Descriptor file_;
  bool isPlaced_ = false;
};

/// The fields of /proc/ID/stat behind the program's name, which may hold any character.
std::vector<std::string> StatusFields(long processId) {
  std::string text;
  try {
    text = WholeFile("/proc/" + std::to_string(processId) + "/stat");
  } catch (const RunTimeError&) {
    return {};
  }
  const std::size_t name = text.rfind(')');
  std::istringstream fields(name == std::string::npos ? "" : text.substr(name + 1));
  std::vector<std::string> list;
  for (std::string field; fields >> field;) list.push_back(field);
  return list;
}

bool IsKeeper(const std::string& processId) {
  try {
    return WholeFile("/proc/" + processId + "/comm") == std::string(kKeeperName) + '\n';
  } catch (const RunTimeError&) {
    return false;
  }
}

std::vector<std::string> WordsOf(const std::string& folder) {
  std::vector<std::string> words;
  std::istringstream line(WholeFile(folder + "/cmdline"));
  for (std::string word; std::getline(line, word, '\0');) words.push_back(word);
  return words;
}

bool IsOwn(const std::string& folder) {
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && status.st_uid == ::geteuid();
}

}  // namespace

ProcessName StartDetached(const ProcessStart& start) {
  std::vector<std::string> copies = start.words;
  std::vector<char*> words;
  words.reserve(copies.size() + 1);
  for (std::string& word : copies) words.push_back(word.data());
  words.push_back(nullptr);
  const std::string unfinished = start.ending + ".new";
  Output output(start.output);
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw FromSystemError(errno);
  const Descriptor readEnd(ends[0]);
  Descriptor writeEnd(ends[1]);
  const KeeperFiles files{start.ending.empty() ? nullptr : start.ending.c_str(),
                          unfinished.c_str()};
  Fork({words.data(), output.Number(), writeEnd.Number(), files});
  writeEnd.Close();
  const long id = ReadId(readEnd.Number(), start.words.front());
  try {
    output.Place();
  } catch (const RunTimeError&) {
    EndProcessGroup(id, true);
    throw;
  }
  const std::optional<ProcessState> state = LookAtProcess(id);
  return {id, state ? state->start : 0};
}

std::optional<ProcessState> LookAtProcess(long processId) {
  constexpr std::size_t kState = 0;
  constexpr std::size_t kParent = 1;
  constexpr std::size_t kStart = 19;
  const std::vector<std::string> fields = StatusFields(processId);
  const bool isOver = fields.size() <= kStart || fields[kState] == "Z" || fields[kState] == "X";
  if (isOver) return std::nullopt;
  const std::string folder = "/proc/" + std::to_string(processId);
  try {
    return ProcessState{std::stoull(fields[kStart]), IsOwn(folder), IsKeeper(fields[kParent]),
                        WordsOf(folder)};
  } catch (const RunTimeError&) {
    return std::nullopt;  // it has ended meanwhile
  }
}

void WaitForEnd(long processId, const std::function<void()>& meanwhile) {
  using std::chrono_literals::operator""ms;
  const std::optional<ProcessState> first = LookAtProcess(processId);
  for (auto now = first; now && now->start == first->start; now = LookAtProcess(processId)) {
    meanwhile();
    std::this_thread::sleep_for(50ms);
  }
}

bool EndProcessGroup(long processGroup, bool atOnce) {
  if (processGroup <= 1) return true;
  return ::kill(static_cast<pid_t>(-processGroup), atOnce ? SIGKILL : SIGTERM) == 0 ||
         errno != EPERM;
}

}  // namespace polefit
