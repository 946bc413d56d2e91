#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/host.h"

namespace polefit {

/// A value by its type code: text (1), bytes (3) or a 32-bit number (4).
using RegistryData = std::variant<std::string, std::vector<std::uint8_t>, std::uint32_t>;

/// False also for a key that may not be read.
bool RegKeyExists(Host& host, std::uint32_t root, const std::string& subKey);

/// True when the key already existed, false when it was made. Error 1001 when it cannot be made.
bool CreateRegKey(Host& host, std::uint32_t root, const std::string& subKey);

/// The value, or `defaultValue` when key or value cannot be read. A string is at most 1023
/// characters, binary data at most 4096 bytes. Error 1001 for another type code,
/// whether the value is there or not.
RegistryData QueryRegValue(Host& host, std::uint32_t root, const std::string& subKey,
                           const std::string& name, int type, const RegistryData& defaultValue);

/// Writes the value into an existing key. Failures, another type code, and a value that is not
/// of its type code are silent.
void SetRegValue(Host& host, std::uint32_t root, const std::string& subKey, const std::string& name,
                 int type, const RegistryData& value);

}  // namespace polefit
