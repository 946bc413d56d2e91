#include "solver/summary.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "base/text.h"
#include "base/text_format.h"
#include "solver/report/report_text.h"

namespace polefit {

namespace {

constexpr const char* kSummaryColumns[] = {"exit",      "F",     "rms",    "maxdb", "dbat",
                                           "ripple_ns", "agree", "starts", "evals"};
constexpr int kWidths[] = {4, 12, 9, 8, 12, 10, 5, 6, 6};

/// The cells behind the file's name; what is unknown is empty.
std::vector<std::string> CellsOf(const RunOutcome& outcome) {
  std::vector<std::string> cells = {std::to_string(static_cast<int>(outcome.exit))};
  if (outcome.figures) {
    const Figures& figures = *outcome.figures;
    const Extreme& decibels = figures.passband.largestDecibels;
    cells.insert(cells.end(),
                 {Format("%.6e", figures.cost), Format("%.3e", figures.rms),
                  Format("%.4g", decibels.size), Format("%.9g", decibels.frequency),
                  figures.delay ? Format("%.4g", figures.delay->peakToPeak) : std::string(),
                  std::to_string(figures.agreeing), std::to_string(figures.starts),
                  std::to_string(figures.evaluations)});
  }
  cells.resize(std::size(kSummaryColumns));
  return cells;
}

/// A field of comma-separated values, in quotes where it must be.
std::string Field(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

/// Writes the lines of the summary.
class LineWriter {
 public:
  LineWriter(const Request& request, std::ostream& out) : isCsv_(request.csv), out_(out) {
    for (const std::string& name : request.names) {
      nameWidth_ = std::max(nameWidth_, CharacterCount(name));
    }
    Write("file", {std::begin(kSummaryColumns), std::end(kSummaryColumns)});
  }

  void Write(const std::string& name, const std::vector<std::string>& cells) {
    std::string line = isCsv_ ? Field(name) : Padded(name, nameWidth_);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const std::string& cell = isCsv_ || !cells[i].empty() ? cells[i] : kDash;
      line += isCsv_ ? "," + cell : Format("  %*s", kWidths[i], cell.c_str());
    }
    out_ << line << std::endl;
  }

 private:
  inline static const std::string kDash = "-";
  bool isCsv_;
  std::ostream& out_;
  std::size_t nameWidth_ = 4;
};

/// One file's outcome and what it told meanwhile.
struct Told {
  RunOutcome outcome;
  std::string errors;
};

/// The runs in threads of their own, each of which takes the next file.
class Runs {
 public:
  Runs(const Request& request, const RunOne& run, const std::function<int()>& stopRequests)
      : request_(request), run_(run), stopRequests_(stopRequests), told_(request.files.size()) {
    const std::size_t count =
        std::min<std::size_t>(static_cast<std::size_t>(request.jobs), request.files.size());
    for (std::size_t i = 0; i < count; ++i) threads_.emplace_back([this] { Work(); });
  }
  ~Runs() {
    for (std::thread& thread : threads_) thread.join();
  }
  Runs(const Runs&) = delete;
  Runs& operator=(const Runs&) = delete;

  /// Waits for a file's outcome; nothing when it was not begun with.
  std::optional<Told> Wait(std::size_t index) {
    std::unique_lock<std::mutex> lock(mutex_);
    changed_.wait(lock, [&] { return told_[index] || (index >= next_ && isStopped_); });
    return std::move(told_[index]);
  }

 private:
  void Work() {
    while (const std::optional<std::size_t> index = Next()) {
      std::ostringstream errors;
      RunOutcome outcome = run_(request_.files[*index], errors);
      const std::lock_guard<std::mutex> lock(mutex_);
      told_[*index] = {std::move(outcome), errors.str()};
      changed_.notify_all();
    }
  }

  std::optional<std::size_t> Next() {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (stopRequests_() > 0) isStopped_ = true;
    changed_.notify_all();
    if (isStopped_ || next_ >= request_.files.size()) return std::nullopt;
    return next_++;
  }

  const Request& request_;
  const RunOne& run_;
  const std::function<int()>& stopRequests_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t next_ = 0;
  bool isStopped_ = false;
  std::vector<std::optional<Told>> told_;
  std::vector<std::thread> threads_;
};

/// Two files whose outputs would meet, if any.
std::optional<std::string> FirstCollision(const Request& request) {
  std::set<std::string> reports;
  for (const RunFiles& files : request.files) {
    if (!reports.insert(files.report).second) return files.report;
  }
  return std::nullopt;
}

}  // namespace

Exit RunSummary(const Request& request, const RunOne& run, const std::function<int()>& stopRequests,
                std::ostream& out, std::ostream& err) {
  if (const auto report = FirstCollision(request)) {
    err << "Two of the files would write the same report '" << *report << "'." << std::endl;
    return Exit::usage;
  }
  LineWriter lines(request, out);
  Runs runs(request, run, stopRequests);
  Exit highest = Exit::converged;
  for (std::size_t i = 0; i < request.files.size(); ++i) {
    const std::optional<Told> told = runs.Wait(i);
    const Exit exit = told ? told->outcome.exit : Exit::stopped;
    highest = std::max(highest, exit);
    if (!told) break;
    lines.Write(request.names[i], CellsOf(told->outcome));
    if (!told->errors.empty()) err << request.names[i] << ": " << told->errors << std::flush;
  }
  return highest;
}

}  // namespace polefit
