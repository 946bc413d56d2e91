#include "platform/linux/user_settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <string_view>

#include "base/run_time_error.h"
#include "platform/linux/file_reading.h"
#include "platform/linux/folders.h"
#include "platform/linux/safe_file.h"
#include "platform/paths.h"

namespace polefit {

namespace {

constexpr std::size_t kLargest = 1U << 20U;
constexpr char kEscape = '%';

/// Bytes as printable ASCII without the characters that the notation needs.
std::string Escaped(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    if (c > ' ' && c < '\x7F' && c != kEscape && c != '=') {
      text += c;
      continue;
    }
    std::array<char, 4> code{};
    std::snprintf(code.data(), code.size(), "%%%02x", static_cast<unsigned char>(c));
    text += code.data();
  }
  return text;
}

std::string WithoutCodes(std::string_view text) {
  std::string bytes;
  while (!text.empty()) {
    unsigned char byte = static_cast<unsigned char>(text.front());
    const bool isCode = byte == kEscape && text.size() > 2;
    if (isCode) std::from_chars(text.data() + 1, text.data() + 3, byte, 16);
    bytes += static_cast<char>(byte);
    text.remove_prefix(isCode ? 3 : 1);
  }
  return bytes;
}

}  // namespace

std::map<std::string, std::string> UserSettings::Load() const {
  std::map<std::string, std::string> settings;
  std::string text;
  try {
    text = WholeFile(path_, kLargest);
  } catch (const RunTimeError&) {
    return settings;
  }
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos) {
      settings[WithoutCodes(line.substr(0, equals))] = WithoutCodes(line.substr(equals + 1));
    }
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
  }
  return settings;
}

std::string UserSettings::Get(const std::string& name) const {
  const std::map<std::string, std::string> settings = Load();
  const auto found = settings.find(name);
  return found == settings.end() ? std::string() : found->second;
}

void UserSettings::Keep(const std::string& name, const std::string& bytes) const {
  // Read again each time: another window may have kept something meanwhile.
  std::map<std::string, std::string> settings = Load();
  settings[name] = bytes;
  std::string text;
  for (const auto& [each, value] : settings) text += Escaped(each) + '=' + Escaped(value) + '\n';
  try {
    MakeFoldersTo(FolderOf(path_), Readers::ownerOnly);
    ReplaceFileSafely(path_, text, Readers::usual);
  } catch (const RunTimeError&) {
    // As the contract says: dropped.
  }
}

}  // namespace polefit
