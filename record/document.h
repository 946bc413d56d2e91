#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "record/response_record.h"

namespace polefit {

/// The names of data that are in no file.
inline constexpr const char* kNewData = "New data";
inline constexpr const char* kStartUpValues = "Start Up Values";

/// What the last start, New, Open, Save or Save As left, told apart by digests.
struct LeftState {
  /// What a save would then have written, from line 2 on; nothing when it could not be saved.
  std::optional<std::uint64_t> save = {};
  /// Everything typed that would still be there without a save.
  std::uint64_t cells = 0;
};

/// A file as this program read or wrote it last.
struct KnownFile {
  /// The path with its folder resolved, or "".
  std::string path = {};
  /// Of its bytes from line 2 on.
  std::uint64_t digest = 0;
};

/// The data that the form shows, and what the program remembers of them.
struct Document {
  ResponseRecord record = {};
  /// 1 after any edit, 0 once a record is shown and at the end of start-up.
  std::int16_t DataChanged = 0;
  /// " " at start, "*" for a user's run, "Demo" for a demo.
  std::string RunMode = " ";
  /// What was last said of characters that a file could not hold.
  std::string lastToldLoss = {};
  LeftState left = {};
  /// Whether these data have been submitted since they were opened: what is open is then missing.
  bool isSubmitted = false;
  KnownFile known = {};
  /// The path of the last save when it failed part way, else "".
  std::string tornPath = {};
  /// What Save As starts from: the name before a run's values came, or the path that points got.
  std::string nameForSaveAs = {};
};

}  // namespace polefit
