#include "runs/run_history.h"

#include <algorithm>
#include <utility>

#include "platform/paths.h"

namespace polefit {

namespace {

constexpr std::string_view kRunSuffix = ".run";
constexpr std::string_view kInputSuffix = ".input";

std::string IdOf(const RunRecord& run) {
  return std::to_string(run.started) + '-' + std::to_string(run.process.id);
}

/// The ids of the files with this ending, the newest first.
std::vector<std::string> IdsIn(const std::vector<std::string>& names, std::string_view suffix) {
  std::vector<std::string> ids;
  for (const std::string& name : names) {
    const bool isOurs = name.ends_with(suffix) &&
                        name.find_first_not_of("0123456789-") == name.size() - suffix.size();
    if (isOurs) ids.push_back(name.substr(0, name.size() - suffix.size()));
  }
  std::ranges::sort(ids, std::greater());
  return ids;
}

std::string ReadIfThere(Host& host, const std::string& path) {
  return host.StateOfFile(path) ? host.ReadFile(path) : std::string();
}

std::int64_t EndOf(Host& host, const Places& places, const RunRecord& run) {
  constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;
  for (const std::string& path : {places.RunEnding(), places.RunLog()}) {
    const auto file = host.StateOfFile(path);
    if (file) return std::max(run.started, file->modified / kNanosecondsPerMillisecond);
  }
  return run.started;
}

}  // namespace

std::vector<std::string> RunsToDrop(const std::vector<std::pair<KeptRun, std::uint64_t>>& runs,
                                    const HistoryLimits& limits) {
  std::size_t count = runs.size();
  std::uint64_t bytes = 0;
  for (const auto& [run, size] : runs) bytes += size;
  std::vector<std::string> dropped;
  for (std::size_t i = runs.size(); i-- > 1;) {  // the newest stays
    const auto& [run, size] = runs[i];
    if (count <= limits.runs && bytes <= limits.bytes) break;
    if (run.isPinned) continue;
    dropped.push_back(run.id);
    bytes -= size;
    --count;
  }
  return dropped;
}

RunHistory::RunHistory(Host& host) : host_(host), folder_(Places::OfState(host).Runs()) {}

std::string RunHistory::PathOf(const std::string& id) const {
  return JoinPath(folder_, id + std::string(kRunSuffix));
}

std::string RunHistory::InputPathOf(const std::string& id) const {
  return JoinPath(folder_, id + std::string(kInputSuffix));
}

void RunHistory::Try(const std::function<void()>& action) {
  try {
    action();
  } catch (const RunTimeError& error) {
    if (!std::exchange(hasFailed_, true) && onFailure) onFailure(error);
  }
}

void RunHistory::KeepInput(const RunRecord& run) {
  Try([&] {
    if (run.DataFolder().empty()) return;
    const std::string input = ReadIfThere(host_, JoinPath(run.DataFolder(), run.DataFile()));
    host_.MakeOwnFolders(folder_);
    host_.ReplaceFile(InputPathOf(IdOf(run)), input, Readers::ownerOnly);
  });
}

void RunHistory::Keep(const RunRecord& run, const RunEnd& end, const Places& places) {
  Try([&] {
    if (host_.StateOfFile(PathOf(IdOf(run)))) return;
    KeepWhole(run, end, places);
    Drop();
  });
}

void RunHistory::KeepWhole(const RunRecord& run, const RunEnd& end, const Places& places) {
  const std::string id = IdOf(run);
  const KeptRun kept{.id = id,
                     .started = run.started,
                     .ended = EndOf(host_, places, run),
                     .file = run.DataFile(),
                     .folder = run.DataFolder(),
                     .verdict = end.verdict,
                     .figures = end.figures};
  host_.MakeOwnFolders(folder_);
  host_.ReplaceFile(PathOf(id), BytesOf(kept, ReadContents(run, end, places)), Readers::ownerOnly);
  if (host_.StateOfFile(InputPathOf(id))) host_.DeleteFile(InputPathOf(id));
}

RunContents RunHistory::ReadContents(const RunRecord& run, const RunEnd& end,
                                     const Places& places) {
  RunContents contents;
  const std::string kept = InputPathOf(IdOf(run));
  if (host_.StateOfFile(kept)) {
    contents.input = host_.ReadFile(kept);
  } else if (!run.DataFolder().empty()) {
    contents.input = ReadIfThere(host_, JoinPath(run.DataFolder(), run.DataFile()));
  }
  if (end.hasReport) contents.report = ReadIfThere(host_, places.Report());
  if (end.hasValues) contents.values = ReadIfThere(host_, places.LastRun());
  return contents;
}

void RunHistory::KeepLast(const Places& places) {
  Try([&] {
    const std::optional<RunRecord> last = ReadRunRecord(host_, places);
    const auto record = host_.StateOfFile(places.RunRecord());
    if (!last || !record || !record->isOwn || host_.StateOfFile(PathOf(IdOf(*last)))) return;
    RunWatch watch(host_);
    if (watch.Recall(places)) Keep(*watch.Run(), *watch.End(), places);
  });
}

std::vector<std::pair<KeptRun, std::uint64_t>> RunHistory::Sized() {
  std::vector<std::pair<KeptRun, std::uint64_t>> runs;
  for (const std::string& id : IdsIn(host_.FilesIn(folder_), kRunSuffix)) {
    const auto state = host_.StateOfFile(PathOf(id));
    if (!state || state->size == 0) continue;
    try {
      const std::string head = host_.ReadFilePart(PathOf(id), 0, kLongestRunHead);
      auto run = ReadKeptRun(id, head, state->size);
      if (run) runs.emplace_back(std::move(*run), state->size);
    } catch (const RunTimeError&) {
      continue;  // what cannot be read is no run
    }
  }
  return runs;
}

std::vector<KeptRun> RunHistory::All() {
  std::vector<KeptRun> runs;
  for (auto& [run, size] : Sized()) runs.push_back(std::move(run));
  return runs;
}

RunContents RunHistory::ContentsOf(const KeptRun& run) {
  const auto contents = ReadRunContents(host_.ReadFile(PathOf(run.id)));
  if (!contents) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
  return *contents;
}

void RunHistory::Change(const KeptRun& run, const std::function<void(KeptRun&)>& change) {
  const std::string bytes = host_.ReadFile(PathOf(run.id));
  auto kept = ReadKeptRun(run.id, bytes, bytes.size());
  const auto contents = ReadRunContents(bytes);
  if (!kept || !contents) throw MakeRunTimeError(error_number::kInputPastEndOfFile);
  change(*kept);
  host_.ReplaceFile(PathOf(run.id), BytesOf(*kept, *contents), Readers::ownerOnly);
}

void RunHistory::SetNote(const KeptRun& run, const std::string& note) {
  Change(run, [&note](KeptRun& kept) { kept.note = note; });
}

void RunHistory::SetPinned(const KeptRun& run, bool isPinned) {
  Change(run, [isPinned](KeptRun& kept) { kept.isPinned = isPinned; });
}

/// An empty file stays in its place: the last run of a program folder would be kept again.
void RunHistory::Delete(const KeptRun& run) {
  host_.ReplaceFile(PathOf(run.id), "", Readers::ownerOnly);
}

/// Lets go of what is beyond the limits, and of the older marks and inputs that nobody needs.
void RunHistory::Drop() {
  constexpr std::size_t kMostLeftOvers = 20;
  for (const std::string& id : RunsToDrop(Sized(), {})) host_.DeleteFile(PathOf(id));
  const std::vector<std::string> names = host_.FilesIn(folder_);
  std::vector<std::string> leftOvers;
  for (const std::string& id : IdsIn(names, kRunSuffix)) {
    const auto state = host_.StateOfFile(PathOf(id));
    if (state && state->size == 0) leftOvers.push_back(PathOf(id));
  }
  for (std::size_t i = kMostLeftOvers; i < leftOvers.size(); ++i) host_.DeleteFile(leftOvers[i]);
  const std::vector<std::string> inputs = IdsIn(names, kInputSuffix);
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const bool isKept = host_.StateOfFile(PathOf(inputs[i])).has_value();
    if (isKept || i >= kMostLeftOvers) host_.DeleteFile(InputPathOf(inputs[i]));
  }
}

}  // namespace polefit
