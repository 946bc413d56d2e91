#pragma once

#include <cstdint>
#include <string_view>

namespace polefit {

/// Tells texts apart by 64 bits: the FNV-1a hash of what is added, each text closed off from the
/// next.
class Digest {
 public:
  void Add(std::string_view text) {
    for (const char c : text) Mix(static_cast<unsigned char>(c));
    Mix(kEndOfText);
  }
  std::uint64_t Value() const { return value_; }

 private:
  static constexpr unsigned kEndOfText = 0x100;  // no byte has this value

  void Mix(unsigned unit) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    value_ = (value_ ^ unit) * kPrime;
  }

  std::uint64_t value_ = 0xCBF29CE484222325;
};

inline std::uint64_t DigestOf(std::string_view text) {
  Digest digest;
  digest.Add(text);
  return digest.Value();
}

}  // namespace polefit
