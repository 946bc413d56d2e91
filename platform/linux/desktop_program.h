#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace polefit {

/// The words that open `target`, a path or an address, with the desktop's program for `mimeType`
/// ("text/plain", "x-scheme-handler/mailto"). Nothing when the desktop has none that has a window
/// of its own.
std::optional<std::vector<std::string>> DesktopProgramFor(const std::string& mimeType,
                                                          const std::string& target);

/// The words of an "Exec" line of a desktop entry with `target` in place of its file or address
/// field, or behind the last word when it has none. Other fields fall away.
std::vector<std::string> ExecWords(std::string_view exec, const std::string& target);

/// The "Exec" line that starts `words` as they stand. Error 75 when one of them cannot stand in a
/// desktop entry.
std::string ExecLine(const std::vector<std::string>& words);

}  // namespace polefit
