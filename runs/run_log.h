#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// How far a run is: evaluations used, of how many at most, and the error by then in parts of the
/// largest Yout.
struct RunProgress {
  int evaluations = 0;
  int limit = 0;
  std::optional<double> rms = {};

  bool operator==(const RunProgress&) const = default;
};

/// The progress that a line of the solver's output tells ("... 120 of 2000, rms 1.5e-03 ..."), if
/// any.
std::optional<RunProgress> ProgressOf(std::string_view line);

/// Reads the solver's output as it grows, never more at once than can be shown at once: of what
/// came too fast the end is read.
class RunLog {
 public:
  /// What one reading brought.
  struct News {
    /// Whole lines as UTF-8, each of 4096 characters at most.
    std::vector<std::string> lines;
    /// Whether output was left out before the first of them.
    bool isCut = false;
  };

  /// Reads what has come since the last time; nothing while the log cannot be read.
  News Read(Host& host, const std::string& path);
  /// A last line without its end, when the run is over; empty when there is none.
  std::string TakeUnfinishedLine();

  /// The lines so far that are not blank, the last one first.
  const std::string& LineFromEnd(std::size_t index) const { return last_.at(index); }
  std::optional<RunProgress> Progress() const { return progress_; }

 private:
  std::string Take(std::string_view bytes);
  void Keep(std::string_view bytes);

  std::uint64_t read_ = 0;
  /// The beginning of a line whose end has not come yet.
  std::string pending_;
  /// Whether what comes up to the next line end is left out.
  bool skipsToLineEnd_ = false;
  std::array<std::string, 3> last_;
  std::optional<RunProgress> progress_;
};

}  // namespace polefit
