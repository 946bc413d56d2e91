#include "runs/run_record.h"

#include <algorithm>
#include <sstream>

#include "runs/record_line.h"

namespace polefit {

namespace {

/// A script stands behind its interpreter in the words of its process.
bool EndsWith(const std::vector<std::string>& all, const std::vector<std::string>& end) {
  return all.size() >= end.size() && std::equal(end.rbegin(), end.rend(), all.rbegin());
}

std::string TextOf(Host& host, const std::string& path) {
  try {
    return host.ReadFile(path);
  } catch (const RunTimeError&) {
    return {};
  }
}

}  // namespace

std::optional<RunRecord> ReadRunRecord(Host& host, const Places& places) {
  const std::string text = TextOf(host, places.RunRecord());
  std::istringstream lines(text);
  RunRecord run;
  lines >> run.process.id >> run.process.start >> run.started >> run.stamp >> run.stops;
  const bool isWhole = lines && lines.get() == '\n' && text.ends_with('\n');
  for (std::string line; std::getline(lines, line);) run.words.push_back(UnescapedLine(line));
  return isWhole && run.words.size() > 1 ? std::optional(run) : std::nullopt;
}

void WriteRunRecord(Host& host, const Places& places, const RunRecord& run) {
  std::ostringstream text;
  text << run.process.id << ' ' << run.process.start << ' ' << run.started << ' ' << run.stamp
       << ' ' << run.stops << '\n';
  for (const std::string& word : run.words) text << EscapedLine(word) << '\n';
  host.ReplaceFile(places.RunRecord(), text.str());
}

std::optional<ProcessState> ProcessOf(Host& host, const RunRecord& run, const Places& places) {
  const std::optional<ProcessState> process = host.StateOfProcess(run.process.id);
  if (!process || process->start != run.process.start) return std::nullopt;
  const bool runsSolver =
      run.words.front() == places.Solver() && EndsWith(process->words, run.words);
  return process->isKept || runsSolver ? process : std::nullopt;
}

bool IsResultOf(Host& host, const RunRecord& run, const std::string& path) {
  const std::optional<FileState> file = host.StateOfFile(path);
  return file && file->modified >= run.stamp;
}

std::string RefusalOf(const RunRecord& run) {
  return "The run of '" + run.DataFile() +
         "' is still going on, and a second one would overwrite its report and its results.  Wait "
         "for its end or stop it, then submit again.";
}

bool MayStartRun(Host& host, const Places& places) {
  const std::optional<RunRecord> run = ReadRunRecord(host, places);
  if (!run || !ProcessOf(host, *run, places)) return true;
  host.MessageBox(RefusalOf(*run), message_style::kExclamation, "A run is going on");
  return false;
}

}  // namespace polefit
