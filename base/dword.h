#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace polefit {

/// A 32-bit number as its four bytes, lowest first.
inline std::string DwordBytes(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes += static_cast<char>((number >> shift) & 0xFFU);
  }
  return bytes;
}

/// The number that at most four bytes stand for, lowest first.
inline std::uint32_t DwordOf(std::string_view bytes) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4 && i < bytes.size(); ++i) {
    number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
  }
  return number;
}

}  // namespace polefit
