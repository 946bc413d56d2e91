#pragma once

#include <cstdint>
#include <string>

namespace polefit {

/// The root of the user's part of the registry.
inline constexpr std::uint32_t kCurrentUser = 0x80000001;

namespace registry_access {
inline constexpr std::uint32_t kRead = 0x20019;
inline constexpr std::uint32_t kWrite = 0x20006;
}  // namespace registry_access

namespace registry_type {
inline constexpr int kString = 1;
inline constexpr int kBinary = 3;
inline constexpr int kDword = 4;
}  // namespace registry_type

/// A registry value as stored: its type and its bytes (a string's are UTF-8 without a final zero,
/// a number's are four, lowest first).
struct RegistryValue {
  int type = registry_type::kString;
  std::string bytes;

  bool operator==(const RegistryValue&) const = default;
};

using RegistryKey = int;

struct CreatedKey {
  RegistryKey key = 0;
  bool existed = false;
};

}  // namespace polefit
