#include "platform/linux/desktop_program.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>

#include "base/text.h"
#include "platform/linux/file_reading.h"
#include "platform/linux/user_folders.h"
#include "platform/paths.h"

namespace polefit {

namespace {

std::string Setting(const char* variable, const std::string& fallback) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0' ? value : fallback;
}

std::vector<std::string> SplitAt(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(separator));
    if (!part.empty()) parts.emplace_back(part);
    text.remove_prefix(std::min(text.size(), part.size() + 1));
  }
  return parts;
}

/// The folders of the desktop's programs, the user's own first.
std::vector<std::string> ApplicationFolders() {
  std::vector<std::string> folders = {JoinPath(UserDataFolder(), "applications")};
  const std::string shared = Setting("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
  for (const std::string& folder : SplitAt(shared, ':')) {
    folders.push_back(JoinPath(folder, "applications"));
  }
  return folders;
}

/// The lists of default programs, the most important first.
std::vector<std::string> DefaultsLists() {
  std::vector<std::string> folders = SplitAt(Setting("XDG_CONFIG_DIRS", "/etc/xdg"), ':');
  folders.insert(folders.begin(), UserConfigurationFolder());
  for (const std::string& folder : ApplicationFolders()) folders.push_back(folder);
  const std::vector<std::string> desktops = SplitAt(Setting("XDG_CURRENT_DESKTOP", ""), ':');
  std::vector<std::string> lists;
  for (const std::string& folder : folders) {
    for (const std::string& desktop : desktops) {
      lists.push_back(JoinPath(folder, LowerCase(desktop) + "-mimeapps.list"));
    }
    lists.push_back(JoinPath(folder, "mimeapps.list"));
  }
  // Not a list of defaults, but of all that can open a type: better than none.
  for (const std::string& folder : ApplicationFolders()) {
    lists.push_back(JoinPath(folder, "mimeinfo.cache"));
  }
  return lists;
}

/// The file's text, or nothing when it cannot be read: a desktop that is broken there has others.
std::string TextOf(const std::string& path) {
  try {
    return WholeFile(path);
  } catch (const RunTimeError&) {
    return {};
  }
}

/// The keys of one group of a file in the notation of desktop entries.
std::map<std::string, std::string> GroupOf(const std::string& path, std::string_view group) {
  std::map<std::string, std::string> keys;
  bool inside = false;
  for (const std::string& line : SplitAt(TextOf(path), '\n')) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('[')) {
      inside = line == group;
    } else if (inside && equals != std::string::npos) {
      keys.emplace(line.substr(0, equals), line.substr(equals + 1));
    }
  }
  return keys;
}

bool CanRun(const std::string& program) {
  if (program.find('/') != std::string::npos) return ::access(program.c_str(), X_OK) == 0;
  for (const std::string& folder : SplitAt(Setting("PATH", "/usr/local/bin:/usr/bin:/bin"), ':')) {
    if (::access(JoinPath(folder, program).c_str(), X_OK) == 0) return true;
  }
  return false;
}

/// The words that the desktop entry `id` starts `target` with, when it can.
std::optional<std::vector<std::string>> WordsOfEntry(const std::string& id,
                                                     const std::string& target) {
  for (const std::string& folder : ApplicationFolders()) {
    auto entry = GroupOf(JoinPath(folder, id), "[Desktop Entry]");
    if (!entry.contains("Exec") || entry["Terminal"] == "true") continue;
    std::vector<std::string> words = ExecWords(entry["Exec"], target);
    if (!words.empty() && CanRun(words.front())) return words;
  }
  return std::nullopt;
}

/// What the backslashes of a desktop entry's text stand for.
std::string UnescapedEntry(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) {
      const char next = text[++i];
      const std::size_t control = std::string_view("stnr").find(next);
      plain += control == std::string_view::npos ? next : " \t\n\r"[control];
    } else {
      plain += text[i];
    }
  }
  return plain;
}

/// Splits at blanks outside double quotes; inside them a backslash keeps the next character.
std::vector<std::string> QuotedWords(std::string_view line) {
  std::vector<std::string> words;
  std::string word;
  bool quoted = false;
  bool begun = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == ' ' && !quoted) {
      if (begun) words.push_back(std::exchange(word, {}));
      begun = false;
      continue;
    }
    begun = true;
    if (c == '"') {
      quoted = !quoted;
    } else {
      word += quoted && c == '\\' && i + 1 < line.size() ? line[++i] : c;
    }
  }
  if (begun) words.push_back(word);
  return words;
}

/// Entries are UTF-8 text, and hold no control character but the line break, which has an escape.
bool CanStandInEntry(const std::string& word) {
  std::string onOneLine = word;
  std::erase(onOneLine, '\n');
  return IsUtf8(word) && !HasControlCharacters(onOneLine);
}

/// Puts what the fields of a word stand for in their place: the target for a file or an address,
/// nothing for the others. True when the target was put.
bool FillFields(std::string& word, const std::string& target) {
  std::string filled;
  bool placed = false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] != '%' || i + 1 == word.size()) {
      filled += word[i];
      continue;
    }
    const char field = word[++i];
    const bool isTarget = std::string_view("fFuU").find(field) != std::string_view::npos;
    if (isTarget) filled += target;
    if (field == '%') filled += field;
    placed = placed || isTarget;
  }
  word = std::move(filled);
  return placed;
}

}  // namespace

std::vector<std::string> ExecWords(std::string_view exec, const std::string& target) {
  std::vector<std::string> words;
  bool placed = false;
  for (std::string& word : QuotedWords(UnescapedEntry(exec))) {
    const bool single = word.size() == 2 && word[0] == '%' && word[1] != '%';
    const bool takes = FillFields(word, target);
    const bool again = takes && single && placed;
    if ((word.empty() && single) || again) continue;
    placed = placed || takes;
    words.push_back(std::move(word));
  }
  if (!placed) words.push_back(target);
  return words;
}

std::string ExecLine(const std::vector<std::string>& words) {
  std::string line;
  for (const std::string& word : words) {
    if (!CanStandInEntry(word)) throw MakeRunTimeError(error_number::kPathFileAccessError);
    if (!line.empty()) line += ' ';
    line += '"';
    for (const char c : word) {
      // Quoting keeps these behind a backslash, and the entry's text doubles every backslash.
      if (c == '"' || c == '`' || c == '$') line += "\\\\";
      if (c == '\\') line += "\\\\\\";
      if (c == '%') line += '%';
      if (c == '\n') {
        line += "\\n";
      } else {
        line += c;
      }
    }
    line += '"';
  }
  return line;
}

std::optional<std::vector<std::string>> DesktopProgramFor(const std::string& mimeType,
                                                          const std::string& target) {
  for (const std::string& list : DefaultsLists()) {
    const bool isCache = list.ends_with(".cache");
    const auto programs = GroupOf(list, isCache ? "[MIME Cache]" : "[Default Applications]");
    const auto entry = programs.find(mimeType);
    if (entry == programs.end()) continue;
    for (const std::string& id : SplitAt(entry->second, ';')) {
      if (auto words = WordsOfEntry(id, target)) return words;
    }
  }
  return std::nullopt;
}

}  // namespace polefit
