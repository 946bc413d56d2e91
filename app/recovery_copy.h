#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "form/cells.h"

namespace polefit {

/// What was typed in a window and is in no file.
struct RecoveryCopy {
  FormCells cells;
  /// When it was taken, in seconds since 1970.
  std::int64_t taken = 0;

  bool operator==(const RecoveryCopy&) const = default;
};

/// As JSON. Bytes that are no UTF-8 become replacement characters.
std::string RecoveryText(const RecoveryCopy& copy);

/// Nothing for a text that is no whole recovery copy.
std::optional<RecoveryCopy> ReadRecovery(std::string_view text);

}  // namespace polefit
