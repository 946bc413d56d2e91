#include "solver/run.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "base/text_format.h"
#include "platform/linux/program_folder.h"
#include "responsefile/writer.h"
#include "solver/problem/problem_reader.h"
#include "solver/report/journal.h"
#include "solver/report/last_run.h"
#include "solver/report/report.h"
#include "solver/search/search.h"

namespace polefit {

namespace {

std::string Temporary(const std::string& path) {
  return path + ".new";
}

/// One run, its lock held by the caller. Whatever cannot be written comes out as RunTimeError.
class SolverRun {
 public:
  SolverRun(Host& host, const RunFiles& files, const Console& console)
      : host_(host), files_(files), console_(console), begin_(std::chrono::steady_clock::now()) {}

  Exit Run() {
    RemoveFile(host_, files_.report);
    ResponseRecord record;
    if (const auto failure = ReadDataFile(host_, files_.InputPath(), record)) return Fail(*failure);
    std::vector<Finding> findings;
    const Problem problem = ReadProblem(record, findings);
    if (HasFault(findings)) return Fail(Refusal(std::move(findings)));
    Journal journal(problem, console_.out);
    const Summary summary = Solve(problem, journal, [this] { return console_.stopRequests() > 0; });
    if (!summary.best.isFinite) {
      findings.insert(
          findings.begin(),
          {.place = {},
           .severity = Severity::fault,
           .text = "No start gave a finite error; check the initial pole and zero values."});
      return Fail({Exit::noFiniteError, "no start gave a finite error", std::move(findings)});
    }
    return Succeed({record, problem, summary, journal, findings});
  }

  void RemoveTemporaries() {
    RemoveFile(host_, Temporary(files_.report));
    RemoveFile(host_, Temporary(files_.lastRun));
  }

 private:
  ReportHead Head(const std::string& result) {
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin_;
    return {files_.dataFile, files_.dataFolder, host_.FormatNow("%Y-%m-%d %H:%M:%S"),
            seconds.count(), result};
  }

  Exit Succeed(const SolvedProblem& solved) {
    const Summary& summary = solved.summary;
    const std::string result = ResultText(summary);
    WriteReport(FullReport(Head(result), solved));
    const std::string temporary = Temporary(files_.lastRun);
    RemoveFile(host_, temporary);
    ResponseRecord lastRun = LastRunRecord(solved.record, solved.problem, summary.best);
    WriteResponseFile(host_, lastRun, {"", temporary, temporary});
    if (console_.stopRequests() > 1) {
      RemoveTemporaries();
      console_.out << "pfit: ended at once on request; nothing is written" << std::endl;
      return Exit::stopped;
    }
    // Both are complete. The report comes last: whoever sees it finds the answers in place.
    RenameFile(temporary, files_.lastRun);
    RenameFile(Temporary(files_.report), files_.report);
    console_.out << Format("pfit: %s; rms error %.3e, %d evaluations", result.c_str(),
                           std::sqrt(summary.best.fit.meanSquare), summary.evaluations)
                 << std::endl;
    return summary.ending == EndReason::zero ? Exit::converged : Exit::stopped;
  }

  Exit Fail(const Failure& failure) {
    WriteReport(FailureReport(Head(failure.result), failure.findings));
    RenameFile(Temporary(files_.report), files_.report);
    console_.err << FaultTexts(failure.findings).front() << std::endl;
    console_.out << "pfit: " << failure.result << std::endl;
    return failure.exit;
  }

  /// Writes the report beside its place.
  void WriteReport(const std::vector<std::string>& lines) {
    const std::string path = Temporary(files_.report);
    RemoveFile(host_, path);
    host_.OpenForWriting(path);
    for (const std::string& line : lines) host_.WriteLine(line);
    host_.CloseFile();
  }

  Host& host_;
  const RunFiles& files_;
  const Console& console_;
  std::chrono::steady_clock::time_point begin_;
};

Exit Unwritable(const RunFiles& files, const Console& console, const RunTimeError& error) {
  console.err << "Cannot write into '" << files.outputFolder << "': " << error.description << "."
              << std::endl;
  console.out << "pfit: the output cannot be written" << std::endl;
  return Exit::unwritable;
}

}  // namespace

Exit RunSolver(Host& host, const RunFiles& files, const Console& console) {
  try {
    const std::optional<RunLock> lock = RunLock::Take(files.lock);
    if (!lock) {
      console.err << "Another run is using '" << files.outputFolder << "'." << std::endl;
      console.out << "pfit: another run is using the output folder" << std::endl;
      return Exit::locked;
    }
    SolverRun run(host, files, console);
    try {
      return run.Run();
    } catch (const RunTimeError&) {
      host.AbandonFile();
      run.RemoveTemporaries();
      throw;
    }
  } catch (const RunTimeError& error) {
    return Unwritable(files, console, error);
  }
}

}  // namespace polefit
