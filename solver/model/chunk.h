#pragma once

#include <array>
#include <cstddef>

namespace polefit {

/// The data are worked through in chunks of so many rows, which stay in the nearest cache.
inline constexpr std::size_t kChunkRows = 64;
using Chunk = std::array<double, kChunkRows>;

/// A chunk with fewer rows is filled up to a multiple of this, with rows that count for nothing.
inline constexpr std::size_t kLanes = 4;

/// Before a function with loops over chunks: it is compiled for registers of two numbers and of
/// four, and the program takes what the processor has. Both give the same results.
#if defined(__x86_64__) && !defined(__clang__)
#define POLEFIT_WIDE [[gnu::target_clones("avx2", "default")]]
#else
#define POLEFIT_WIDE
#endif

/// The sum of a_i b_i, kept as one sum a lane.
[[gnu::always_inline]] inline double Dot(const Chunk& a, const Chunk& b, std::size_t rows) {
  std::array<double, kLanes> sums{};
  for (std::size_t i = 0; i < rows; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) sums[lane] += a[i + lane] * b[i + lane];
  }
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

/// The sum of a chunk, kept as one sum a lane.
[[gnu::always_inline]] inline double Sum(const Chunk& a, std::size_t rows) {
  std::array<double, kLanes> sums{};
  for (std::size_t i = 0; i < rows; i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) sums[lane] += a[i + lane];
  }
  return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

}  // namespace polefit
