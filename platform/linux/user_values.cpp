#include "platform/linux/user_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include "base/dword.h"
#include "base/text.h"

namespace polefit {

namespace {

constexpr std::string_view kSignature = "REGEDIT4";
constexpr std::string_view kHexPrefix = "hex:";
constexpr std::string_view kHexTextPrefix = "hex(1):";
constexpr std::string_view kDwordPrefix = "dword:";

std::string RootName(std::uint32_t root) {
  if (root == kCurrentUser) return "HKEY_CURRENT_USER";
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "HKEY_%08X", root);
  return name.data();
}

std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

/// Takes a quoted text off the front of `rest`; nothing when there is no whole one.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
  if (!rest.starts_with('"')) return std::nullopt;
  std::string text;
  for (std::size_t i = 1; i < rest.size(); ++i) {
    if (rest[i] == '"') {
      rest.remove_prefix(i + 1);
      return text;
    }
    if (rest[i] == '\\' && i + 1 < rest.size()) ++i;
    text += rest[i];
  }
  return std::nullopt;
}

std::string HexList(const std::string& bytes) {
  std::string list;
  for (const char byte : bytes) {
    std::array<char, 4> pair{};
    std::snprintf(pair.data(), pair.size(), "%02x", static_cast<unsigned char>(byte));
    if (!list.empty()) list += ',';
    list += pair.data();
  }
  return list;
}

std::optional<unsigned> HexNumber(std::string_view digits) {
  unsigned number = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
  const bool whole = error == std::errc() && end == digits.data() + digits.size();
  return whole ? std::optional(number) : std::nullopt;
}

std::optional<std::string> HexBytes(std::string_view list) {
  std::string bytes;
  while (!list.empty()) {
    const std::string_view digits = list.substr(0, list.find(','));
    const std::optional<unsigned> byte = HexNumber(digits);
    if (!byte || *byte > 0xFF) return std::nullopt;
    bytes += static_cast<char>(*byte);
    list.remove_prefix(std::min(list.size(), digits.size() + 1));
  }
  return bytes;
}

bool HasControlCharacters(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; });
}

std::string ValueText(const RegistryValue& value) {
  if (value.type == registry_type::kDword) {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%08x", DwordOf(value.bytes));
    return std::string(kDwordPrefix) + number.data();
  }
  if (value.type == registry_type::kBinary) return std::string(kHexPrefix) + HexList(value.bytes);
  if (HasControlCharacters(value.bytes)) return std::string(kHexTextPrefix) + HexList(value.bytes);
  return Quoted(value.bytes);
}

std::optional<RegistryValue> HexValue(int type, std::string_view list) {
  const std::optional<std::string> bytes = HexBytes(list);
  return bytes ? std::optional(RegistryValue{type, *bytes}) : std::nullopt;
}

std::optional<RegistryValue> ParseValue(std::string_view text) {
  if (const auto string = TakeQuoted(text)) return RegistryValue{registry_type::kString, *string};
  if (text.starts_with(kHexPrefix)) {
    return HexValue(registry_type::kBinary, text.substr(kHexPrefix.size()));
  }
  if (text.starts_with(kHexTextPrefix)) {
    return HexValue(registry_type::kString, text.substr(kHexTextPrefix.size()));
  }
  if (!text.starts_with(kDwordPrefix)) return std::nullopt;
  const auto number = HexNumber(text.substr(kDwordPrefix.size()));
  if (!number) return std::nullopt;
  return RegistryValue{registry_type::kDword, DwordBytes(*number)};
}

}  // namespace

std::string UserValuesPath() {
  const char* const configuration = std::getenv("XDG_CONFIG_HOME");
  if (configuration != nullptr && *configuration == '/') {
    return std::string(configuration) + "/polefit/registry.reg";
  }
  const char* const home = std::getenv("HOME");
  return std::string(home != nullptr ? home : "/") + "/.config/polefit/registry.reg";
}

UserValues::UserValues(std::string path) : path_(std::move(path)) {}

UserValues::Key& UserValues::EnterKey(const std::string& path) {
  const std::size_t cut = path.rfind('\\');
  if (cut != std::string::npos) EnterKey(path.substr(0, cut));
  Key& key = keys_[LowerCase(path)];
  if (key.path.empty()) key.path = path;
  return key;
}

/// False for a line that is not understood.
bool UserValues::LoadLine(const std::string& line, Key*& current) {
  if (line.empty() || line == kSignature) return true;
  if (line.starts_with('[') && line.ends_with(']')) {
    current = &EnterKey(line.substr(1, line.size() - 2));
    return true;
  }
  std::string_view rest = line;
  const std::optional<std::string> name = TakeQuoted(rest);
  if (current == nullptr || !name || !rest.starts_with('=')) return false;
  const std::optional<RegistryValue> value = ParseValue(rest.substr(1));
  if (value) current->values[LowerCase(*name)] = {*name, *value};
  return value.has_value();
}

void UserValues::Load() {
  if (std::exchange(loaded_, true)) return;
  EnterKey(RootName(kCurrentUser));
  std::error_code error;
  if (!std::filesystem::exists(path_, error)) return;
  std::ifstream file(path_, std::ios::binary);
  Key* current = nullptr;
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) line.pop_back();
    mayWrite_ = LoadLine(line, current) && mayWrite_;
  }
  mayWrite_ = mayWrite_ && file.eof();
}

bool UserValues::Save() const {
  if (!mayWrite_) return false;
  namespace fs = std::filesystem;
  std::error_code error;
  fs::create_directories(fs::path(path_).parent_path(), error);
  const std::string temporary = path_ + ".new";
  std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
  file << kSignature << '\n';
  for (const auto& [folded, key] : keys_) {
    file << "\n[" << key.path << "]\n";
    for (const auto& [foldedName, entry] : key.values) {
      file << Quoted(entry.name) << '=' << ValueText(entry.value) << '\n';
    }
  }
  file.close();
  if (!file) return false;
  fs::rename(temporary, path_, error);
  return !error;
}

RegistryKey UserValues::Remember(const std::string& foldedPath, std::uint32_t access) {
  open_[++lastKey_] = {foldedPath, access};
  return lastKey_;
}

std::optional<RegistryKey> UserValues::Open(std::uint32_t root, const std::string& subKey,
                                            std::uint32_t access) {
  Load();
  const std::string folded = LowerCase(RootName(root) + (subKey.empty() ? "" : "\\" + subKey));
  if (!keys_.contains(folded)) return std::nullopt;
  return Remember(folded, access);
}

std::optional<CreatedKey> UserValues::Create(std::uint32_t root, const std::string& subKey) {
  constexpr std::uint32_t kAllAccess = registry_access::kRead | registry_access::kWrite;
  Load();
  const std::string path = RootName(root) + "\\" + subKey;
  const bool existed = keys_.contains(LowerCase(path));
  if (!existed) {
    const std::map<std::string, Key> former = keys_;
    EnterKey(path);
    if (!Save()) {
      keys_ = former;
      return std::nullopt;
    }
  }
  return CreatedKey{Remember(LowerCase(path), kAllAccess), existed};
}

std::optional<RegistryValue> UserValues::Query(RegistryKey key, const std::string& name) {
  constexpr std::uint32_t kMayQuery = 0x1;
  const auto open = open_.find(key);
  if (open == open_.end() || (open->second.access & kMayQuery) == 0) return std::nullopt;
  const auto& values = keys_[open->second.foldedPath].values;
  const auto entry = values.find(LowerCase(name));
  return entry == values.end() ? std::nullopt : std::optional(entry->second.value);
}

bool UserValues::Set(RegistryKey key, const std::string& name, const RegistryValue& value) {
  constexpr std::uint32_t kMaySet = 0x2;
  const auto open = open_.find(key);
  if (open == open_.end() || (open->second.access & kMaySet) == 0) return false;
  std::map<std::string, NamedValue>& values = keys_[open->second.foldedPath].values;
  const std::map<std::string, NamedValue> former = values;
  values[LowerCase(name)] = {name, value};
  if (Save()) return true;
  values = former;
  return false;
}

void UserValues::Close(RegistryKey key) {
  open_.erase(key);
}

}  // namespace polefit
