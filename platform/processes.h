#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// A process by its id and the moment of its start, in the system's ticks: the two name one process
/// for good.
struct ProcessName {
  long id = 0;
  std::uint64_t start = 0;

  bool operator==(const ProcessName&) const = default;
};

/// A program to be started apart from this one, which it outlives.
struct ProcessStart {
  /// The program and its arguments. A program without a separator is looked for in PATH.
  std::vector<std::string> words;
  /// The file for its output, or empty when that is dropped. A new one takes the place of the
  /// former one once the program has started.
  std::string output = {};
  /// The file that tells how it ended once it has (EndingIn reads it), or empty.
  std::string ending = {};
};

/// How a process ended.
struct ProcessEnding {
  long id = 0;
  bool isSignal = false;
  /// The exit status, or the signal.
  int number = 0;

  bool operator==(const ProcessEnding&) const = default;
};

/// The ending that a file written for ProcessStart::ending tells; nothing while there is none.
std::optional<ProcessEnding> EndingIn(std::string_view text);

/// What is known of a process that has not ended.
struct ProcessState {
  std::uint64_t start = 0;
  /// Whether the user who runs this program has started it.
  bool isOwn = false;
  /// Whether it was started with a file for its ending, and what waits to write that is there.
  bool isKept = false;
  std::vector<std::string> words = {};
};

/// Starting, watching and ending processes.
class Processes {
 public:
  virtual ~Processes() = default;

  /// Starts a program in a process group of its own that bears its process id, with no open file
  /// but input, output and error. Throws RunTimeError, naming the program, when it cannot be
  /// started.
  virtual ProcessName StartProcess(const ProcessStart& start) = 0;
  /// Nothing when there is no such process or it has ended.
  virtual std::optional<ProcessState> StateOfProcess(long processId) = 0;
  /// Asks a process group to end, or makes it end at once. False when this user may not; a group
  /// that is gone is left alone.
  virtual bool EndGroup(long processGroup, bool atOnce) = 0;
};

}  // namespace polefit
