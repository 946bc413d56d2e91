#include "runs/run_log.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/text.h"

namespace polefit {

namespace {

constexpr std::size_t kMostAtOnce = 256U << 10U;
constexpr std::size_t kMostLinesAtOnce = 5000;
constexpr std::size_t kLongestShown = 4096;
constexpr std::size_t kMostBytesOfCharacter = 4;

std::string_view WordBefore(std::string_view text) {
  return text.substr(text.rfind(' ') + 1);  // npos + 1 is 0: the text is one word
}

std::optional<int> WholeNumber(std::string_view word) {
  int number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  const bool whole = error == std::errc() && end == word.data() + word.size();
  return whole ? std::optional(number) : std::nullopt;
}

std::optional<double> NumberBehind(std::string_view line, std::string_view name) {
  const std::size_t at = line.find(name);
  if (at == std::string_view::npos) return std::nullopt;
  const std::string_view text = line.substr(at + name.size());
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// The solver writes single-byte text, but the names in it may come from the shell as UTF-8.
std::string TextOfLine(std::string_view bytes) {
  if (bytes.ends_with('\r')) bytes.remove_suffix(1);
  // Cut first: a longer line may end within a character here.
  const std::string_view shown = FirstCharacters(bytes, kLongestShown);
  if (IsUtf8(shown)) return std::string(shown);
  return std::string(FirstCharacters(FromWindows1252(bytes), kLongestShown));
}

bool IsBlank(const std::string& line) {
  return line.find_first_not_of(" \t\r") == std::string::npos;
}

}  // namespace

std::optional<RunProgress> ProgressOf(std::string_view line) {
  constexpr std::string_view kOf = " of ";
  for (std::size_t at = line.find(kOf); at != std::string_view::npos; at = line.find(kOf, at + 1)) {
    const std::string_view rest = line.substr(at + kOf.size());
    const auto used = WholeNumber(WordBefore(line.substr(0, at)));
    const auto limit = WholeNumber(rest.substr(0, rest.find_first_of(" ,;:")));
    if (used && limit && *limit > 0) return RunProgress{*used, *limit, NumberBehind(rest, " rms ")};
  }
  return std::nullopt;
}

RunLog::News RunLog::Read(Host& host, const std::string& path) {
  News news;
  std::string bytes;
  try {
    const std::optional<FileState> log = host.StateOfFile(path);
    if (!log || log->size <= read_) return news;
    if (log->size - read_ > kMostAtOnce) {
      news.isCut = true;
      skipsToLineEnd_ = true;
      pending_.clear();
      read_ = log->size - kMostAtOnce;
    }
    bytes = host.ReadFilePart(path, read_, kMostAtOnce);
  } catch (const RunTimeError&) {
    return news;
  }
  read_ += bytes.size();
  std::string_view rest = bytes;
  for (std::size_t end = 0; (end = rest.find('\n')) != std::string_view::npos;) {
    Keep(rest.substr(0, end));
    if (!std::exchange(skipsToLineEnd_, false)) news.lines.push_back(Take(pending_));
    pending_.clear();
    rest.remove_prefix(end + 1);
  }
  Keep(rest);
  if (news.lines.size() > kMostLinesAtOnce) {
    news.isCut = true;
    news.lines.erase(news.lines.begin(), news.lines.end() - kMostLinesAtOnce);
  }
  return news;
}

/// Of a line without end only so much is kept as can be shown.
void RunLog::Keep(std::string_view bytes) {
  constexpr std::size_t kMost = kLongestShown * kMostBytesOfCharacter;
  if (!skipsToLineEnd_) pending_ += bytes.substr(0, kMost - std::min(kMost, pending_.size()));
}

std::string RunLog::Take(std::string_view bytes) {
  std::string line = TextOfLine(bytes);
  if (!IsBlank(line)) {
    std::rotate(last_.begin(), last_.end() - 1, last_.end());
    last_.front() = line;
  }
  if (const auto progress = ProgressOf(line)) progress_ = progress;
  return line;
}

std::string RunLog::TakeUnfinishedLine() {
  return pending_.empty() ? std::string() : Take(std::exchange(pending_, {}));
}

}  // namespace polefit
