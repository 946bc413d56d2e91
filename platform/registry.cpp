#include "platform/registry.h"

#include <optional>

#include "base/dword.h"
#include "base/text.h"

namespace polefit {

namespace {

constexpr std::size_t kStringBuffer = 1024;
constexpr std::size_t kBinaryBuffer = 4096;

RunTimeError RegistryError(const char* description) {
  return {error_number::kRegistryFailure, description};
}

/// An open key that closes itself.
class OpenedKey {
 public:
  OpenedKey(Host& host, std::uint32_t root, const std::string& subKey, std::uint32_t access)
      : host_(host), key_(host.RegOpenKeyExA(root, subKey, access)) {}
  ~OpenedKey() {
    if (key_) host_.RegCloseKey(*key_);
  }
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;

  bool IsOpen() const { return key_.has_value(); }
  RegistryKey Get() const { return *key_; }

 private:
  Host& host_;
  std::optional<RegistryKey> key_;
};

/// The stored bytes as the asked type, or nothing when they do not fit its buffer.
std::optional<RegistryData> Decode(int type, const std::string& bytes) {
  switch (type) {
    case registry_type::kString:
      // The buffer holds the text and the zero behind it.
      if (CharacterCount(bytes) >= kStringBuffer) return std::nullopt;
      return bytes;
    case registry_type::kBinary:
      if (bytes.size() > kBinaryBuffer) return std::nullopt;
      return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
    default:
      if (bytes.size() != 4) return std::nullopt;
      return DwordOf(bytes);
  }
}

/// The value's bytes when its type code is known and the value is of it.
std::optional<std::string> Encode(int type, const RegistryData& value) {
  if (type == registry_type::kString && std::holds_alternative<std::string>(value)) {
    return std::get<std::string>(value);
  }
  if (type == registry_type::kBinary && std::holds_alternative<std::vector<std::uint8_t>>(value)) {
    const auto& bytes = std::get<std::vector<std::uint8_t>>(value);
    return std::string(bytes.begin(), bytes.end());
  }
  if (type == registry_type::kDword && std::holds_alternative<std::uint32_t>(value)) {
    return DwordBytes(std::get<std::uint32_t>(value));
  }
  return std::nullopt;
}

}  // namespace

bool RegKeyExists(Host& host, std::uint32_t root, const std::string& subKey) {
  return OpenedKey(host, root, subKey, registry_access::kRead).IsOpen();
}

bool CreateRegKey(Host& host, std::uint32_t root, const std::string& subKey) {
  const std::optional<CreatedKey> created = host.RegCreateKeyExA(root, subKey);
  if (!created) throw RegistryError("Unable to create the registry key");
  host.RegCloseKey(created->key);
  return created->existed;
}

RegistryData QueryRegValue(Host& host, std::uint32_t root, const std::string& subKey,
                           const std::string& name, int type, const RegistryData& defaultValue) {
  const bool known = type == registry_type::kString || type == registry_type::kBinary ||
                     type == registry_type::kDword;
  if (!known) throw RegistryError("Unsupported value type");
  const OpenedKey key(host, root, subKey, registry_access::kRead);
  if (!key.IsOpen()) return defaultValue;
  const std::optional<RegistryValue> stored = host.RegQueryValueExA(key.Get(), name);
  if (!stored) return defaultValue;
  return Decode(type, stored->bytes).value_or(defaultValue);
}

void SetRegValue(Host& host, std::uint32_t root, const std::string& subKey, const std::string& name,
                 int type, const RegistryData& value) {
  const std::optional<std::string> bytes = Encode(type, value);
  const OpenedKey key(host, root, subKey, registry_access::kWrite);
  if (key.IsOpen() && bytes) host.RegSetValueExA(key.Get(), name, {type, *bytes});
}

}  // namespace polefit
