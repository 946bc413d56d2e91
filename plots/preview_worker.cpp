#include "plots/preview_worker.h"

#include <utility>

#include "solver/problem/problem_reader.h"
#include "solver/report/last_run.h"
#include "solver/search/data_start.h"
#include "solver/search/search.h"

namespace polefit {

Preview MakePreview(const ResponseRecord& record, const std::function<bool()>& isStopped) {
  constexpr int kMostEvaluations = 300;
  Preview preview = {record, std::nullopt};
  std::vector<Finding> findings;
  Problem problem = ReadProblem(record, findings);
  if (HasFault(findings) || isStopped()) return preview;
  FillFromPoints(problem, findings);
  problem.options.maxEvaluations = std::min(problem.options.maxEvaluations, kMostEvaluations);
  Listener nobody;
  const Summary summary = Solve(problem, nobody, isStopped);
  if (!summary.best.isFinite || isStopped()) return preview;
  preview.record = LastRunRecord(record, problem, summary.best);
  std::vector<Finding> none;
  preview.curves = CurvesOf(preview.record, CurveRole::preview, "preview", none);
  return preview;
}

PreviewWorker::PreviewWorker(std::function<void()> found)
    : tellFound_(std::move(found)), thread_([this] { Work(); }) {}

PreviewWorker::~PreviewWorker() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
    isCancelled_ = true;
  }
  wakeUp_.notify_one();
  thread_.join();
}

void PreviewWorker::Request(const ResponseRecord& record) {
  {
    const std::lock_guard lock(mutex_);
    wanted_ = record;
    found_.reset();
    isCancelled_ = true;  // what is being solved; the worker clears it before the next one
  }
  wakeUp_.notify_one();
}

void PreviewWorker::Cancel() {
  const std::lock_guard lock(mutex_);
  wanted_.reset();
  found_.reset();
  isCancelled_ = true;
}

std::optional<Preview> PreviewWorker::TakeFound() {
  const std::lock_guard lock(mutex_);
  return std::exchange(found_, std::nullopt);
}

/// Keeps it to be taken, unless it was cancelled.
bool PreviewWorker::Keep(Preview preview) {
  const std::lock_guard lock(mutex_);
  if (!preview.curves || isCancelled_) return false;
  found_ = std::move(preview);
  return true;
}

void PreviewWorker::Work() {
  for (;;) {
    ResponseRecord record;
    {
      std::unique_lock lock(mutex_);
      wakeUp_.wait(lock, [this] { return ends_ || wanted_; });
      if (ends_) return;
      record = *std::exchange(wanted_, std::nullopt);
      isCancelled_ = false;
    }
    if (Keep(MakePreview(record, [this] { return isCancelled_.load(); }))) tellFound_();
  }
}

}  // namespace polefit
