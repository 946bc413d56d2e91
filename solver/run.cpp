#include "solver/run.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "platform/file_checks.h"
#include "responsefile/writer.h"
#include "solver/data_file.h"
#include "solver/problem/problem_reader.h"
#include "solver/problem/typing_slips.h"
#include "solver/report/journal.h"
#include "solver/report/last_run.h"
#include "solver/report/report.h"
#include "solver/search/data_start.h"
#include "solver/search/search.h"

namespace polefit {

namespace {

std::string Temporary(const std::string& path) {
  return path + ".new";
}

/// One run, its lock held by the caller. Whatever cannot be written comes out as RunTimeError.
class SolverRun {
 public:
  SolverRun(Host& host, const RunFiles& files, const Console& console, bool allRows)
      : host_(host),
        files_(files),
        console_(console),
        allRows_(allRows),
        begin_(std::chrono::steady_clock::now()) {}

  RunOutcome Run() {
    RemoveFile(host_, files_.report);
    ResponseRecord record;
    if (files_.dataFile.empty()) return Fail(NoDataFile());
    std::vector<LongRow> longRows;
    if (const auto failure = ReadDataFile(host_, files_.InputPath(), record, &longRows)) {
      return Fail(*failure);
    }
    std::vector<Finding> findings;
    Problem problem = ReadProblem(record, findings);
    FindTypingSlips(record, longRows, findings);
    if (HasFault(findings)) return Fail(Refusal(std::move(findings)));
    FillFromPoints(problem, findings);
    Journal journal(problem, console_.out);
    const Summary summary = Solve(problem, journal, [this] { return console_.stopRequests() > 0; });
    if (!summary.best.isFinite) {
      findings.insert(findings.begin(),
                      {{},
                       Severity::fault,
                       "No start gave a finite error; check the initial pole and zero values."});
      return Fail({Exit::noFiniteError, "no start gave a finite error", std::move(findings)});
    }
    const Figures figures = FiguresOf(problem, summary);
    return Succeed({record, problem, summary, figures, journal, findings, allRows_});
  }

  void RemoveTemporaries() {
    RemoveFile(host_, Temporary(files_.report));
    RemoveFile(host_, Temporary(files_.lastRun));
  }

 private:
  double Seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
  }

  ReportHead Head(const std::string& result) {
    return {files_.dataFile, files_.dataFolder, host_.FormatNow("%Y-%m-%d %H:%M:%S"), Seconds(),
            result};
  }

  RunOutcome Succeed(const SolvedProblem& solved) {
    const Summary& summary = solved.summary;
    const std::string result = ResultText(summary);
    WriteReport(FullReport(Head(result), solved));
    const std::string temporary = Temporary(files_.lastRun);
    RemoveFile(host_, temporary);
    ResponseRecord lastRun = LastRunRecord(solved.record, solved.problem, summary.best);
    WriteResponseFile(host_, lastRun, {"", temporary, temporary});
    if (console_.stopRequests() > 1) {
      RemoveTemporaries();
      return {Exit::stopped,
              "ended at once on request; nothing is written",
              solved.findings,
              Seconds(),
              {},
              true};
    }
    // Both are complete. The report comes last: whoever sees it finds the answers in place.
    host_.MoveFile(temporary, files_.lastRun);
    host_.MoveFile(Temporary(files_.report), files_.report);
    return {IsConverged(summary.ending) ? Exit::converged : Exit::stopped,
            result,
            solved.findings,
            Seconds(),
            solved.figures,
            summary.ending == EndReason::requested};
  }

  RunOutcome Fail(Failure failure) {
    WriteReport(FailureReport(Head(failure.result), failure.findings));
    host_.MoveFile(Temporary(files_.report), files_.report);
    console_.err << ForTerminal(FaultTexts(failure.findings).front()) << std::endl;
    return {failure.exit, std::move(failure.result), std::move(failure.findings), Seconds(), {},
            false};
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
  bool allRows_;
  std::chrono::steady_clock::time_point begin_;
};

RunOutcome Unwritable(const RunFiles& files, const Console& console, const RunTimeError& error) {
  console.err << "Cannot write into '" << files.outputFolder << "': " << error.description << "."
              << std::endl;
  return {Exit::unwritable, "the output cannot be written", {}, 0, {}};
}

}  // namespace

std::string ForTerminal(std::string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool isSecondOfC1 = i > 0 && text[i - 1] == '\xC2' && byte < 0xA0;
    if (isSecondOfC1) text[i - 1] = '?';
    if (byte < 0x20 || byte == 0x7F || isSecondOfC1) text[i] = '?';
  }
  return text;
}

RunOutcome SolveFile(Host& host, const RunFiles& files, const Console& console, bool allRows) {
  try {
    const std::unique_ptr<HeldLock> lock = host.TakeLock(files.lock, std::chrono::milliseconds(0));
    if (!lock) {
      console.err << "Another run is using '" << files.outputFolder << "'." << std::endl;
      return {Exit::locked, "another run is using the output folder", {}, 0, {}};
    }
    SolverRun run(host, files, console, allRows);
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
