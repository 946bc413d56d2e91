#include "platform/linux/user_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <utility>

#include "base/dword.h"
#include "base/text.h"
#include "platform/linux/file_reading.h"
#include "platform/linux/folders.h"
#include "platform/linux/safe_file.h"
#include "platform/linux/user_folders.h"
#include "platform/paths.h"

namespace polefit {

namespace {

/// A larger store is nobody's.
constexpr std::size_t kLargestStore = 1U << 20U;

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
  return JoinPath(OwnConfigurationFolder(), "registry.reg");
}

UserValues::UserValues(std::string path) : path_(std::move(path)) {}

/// Enters the key and those above it, by a loop: a store may name them as deep as it likes.
UserValues::Key& UserValues::EnterKey(const std::string& path) {
  for (std::size_t cut = path.find('\\'); cut != std::string::npos;
       cut = path.find('\\', cut + 1)) {
    Key& above = keys_[LowerCase(path.substr(0, cut))];
    if (above.path.empty()) above.path = path.substr(0, cut);
  }
  Key& key = keys_[LowerCase(path)];
  if (key.path.empty()) key.path = path;
  return key;
}

/// False for a line that is not understood.
bool UserValues::LoadLine(std::string_view line, Key*& current) {
  if (line.empty() || line == kSignature) return true;
  if (line.starts_with('[') && line.ends_with(']')) {
    const std::string path(line.substr(1, line.size() - 2));
    // No program makes keys as deep as this, and each level costs all those above it.
    constexpr std::ptrdiff_t kDeepest = 64;
    const bool isTooDeep = std::count(path.begin(), path.end(), '\\') > kDeepest;
    current = isTooDeep ? nullptr : &EnterKey(path);
    return !isTooDeep;
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
  std::string text;
  try {
    text = WholeFile(path_, kLargestStore);
  } catch (const RunTimeError& error) {
    mayWrite_ =
        error.number == error_number::kFileNotFound || error.number == error_number::kPathNotFound;
    return;
  }
  Key* current = nullptr;
  for (std::string_view rest = text; !rest.empty();) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    if (line.ends_with('\r')) line.remove_suffix(1);
    mayWrite_ = LoadLine(line, current) && mayWrite_;
  }
}

std::string UserValues::Text() const {
  std::string text = std::string(kSignature) + '\n';
  for (const auto& [folded, key] : keys_) {
    text += "\n[" + key.path + "]\n";
    for (const auto& [foldedName, entry] : key.values) {
      text += Quoted(entry.name) + '=' + ValueText(entry.value) + '\n';
    }
  }
  return text;
}

bool UserValues::Save() const {
  if (!mayWrite_) return false;
  try {
    MakeFoldersTo(FolderOf(path_), Readers::ownerOnly);
    ReplaceFileSafely(path_, Text(), Readers::usual);
  } catch (const RunTimeError&) {
    return false;
  }
  return true;
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
