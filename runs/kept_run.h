#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "runs/machine_line.h"
#include "runs/verdict.h"

namespace polefit {

/// What a run read and left, byte for byte; "" for what it has not left.
struct RunContents {
  std::string input;
  std::string report;
  std::string values;

  bool operator==(const RunContents&) const = default;
};

/// A run that has ended, as the history tells it.
struct KeptRun {
  /// Names the run for good: when it was started, and its process.
  std::string id = {};
  /// In milliseconds since 1970.
  std::int64_t started = 0;
  std::int64_t ended = 0;
  /// The data file and its folder.
  std::string file = {};
  std::string folder = {};
  Verdict verdict = {};
  MachineLine figures = {};
  std::string note = {};
  /// A pinned run stays, however many follow.
  bool isPinned = false;
  bool hasReport = false;
  bool hasValues = false;

  std::optional<double> Figure(std::string_view name) const { return FigureOf(figures, name); }
};

/// A run as the bytes of its file.
std::string BytesOf(const KeptRun& run, const RunContents& contents);

/// No head of a run's file is longer.
inline constexpr std::size_t kLongestRunHead = 16384;

/// The run of a file of `size` bytes that begins with `head`; nothing when it is none or torn.
std::optional<KeptRun> ReadKeptRun(const std::string& id, std::string_view head,
                                   std::uint64_t size);
/// The same with all bytes of the file.
std::optional<RunContents> ReadRunContents(std::string_view bytes);

}  // namespace polefit
